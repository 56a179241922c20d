// End to end in the lab: the search window opens an emulated RVX5370; the panel shows the
// unit's state and serial, and a drag of the PIP preview moves the unit's PIP, which a state
// read (DS) brings back after the panel has been told otherwise.
#include "RVX5370/rvx5370.h"
#include "RVX8000/pipgro.h"
#include "RVX8000/setdialog.h"
#include "SwitcherData/rvx5all_workdata.h"
#include "app/showsearch.h"
#include "labstate.h"

#include <QLabel>
#include <QListWidget>
#include <QMouseEvent>
#include <QPushButton>
#include <QSignalSpy>
#include <QtTest>

class TestRvx5370Lab : public QObject
{
    Q_OBJECT
private slots:
    void openShowDragReadBack();
};

void TestRvx5370Lab::openShowDragReadBack()
{
    const QStringList units = qEnvironmentVariable("LAB_UNITS").split(QLatin1Char(' '), Qt::SkipEmptyParts);
    QCOMPARE(units.size(), 1);
    const QString unit = units.first();

    showsearch window;
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QListWidget *list = window.deviceList();
    QTRY_COMPARE_WITH_TIMEOUT(list->count(), 1, 10000);
    QListWidgetItem *item = list->item(0);
    const QPoint at = list->visualItemRect(item).center();
    QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier, at);
    QTest::mouseDClick(list->viewport(), Qt::LeftButton, Qt::NoModifier, at);

    QPointer<RVX5370> panel;
    for (QWidget *w : QApplication::topLevelWidgets())
        if (auto *p = qobject_cast<RVX5370 *>(w))
            panel = p;
    QVERIFY(panel);
    QVERIFY(panel->isVisible());
    QVERIFY(!window.isVisible());

    // The first state read answers with the long reply: its serial reaches SET, its state the panel.
    QSignalSpy states(panel->link(), &RVX5ALL_workdata::on_signals_3210Data);
    QLabel *serial = panel->setWidget()->findChild<QLabel *>(QStringLiteral("label_SM"));
    const QString formSerial = serial->text();
    QTRY_VERIFY_WITH_TIMEOUT(states.count() >= 1, 5000);
    QVERIFY(serial->text().startsWith(QLatin1String("SN:")));
    QVERIFY2(serial->text() != formSerial, qPrintable(serial->text()));
    QCOMPARE(panel->setWidget()->findChild<QLabel *>(QStringLiteral("label_IP"))->text(),
             QStringLiteral("IP:") + unit);

    // A bus change shows on the unit and comes back with the next read.
    panel->findChild<QPushButton *>(QStringLiteral("btn_pgm3"))->click();
    panel->findChild<QPushButton *>(QStringLiteral("btn_pvw4"))->click();

    // Drag the preview box by the mouse, the way an operator does: 60 right, 40 down.
    PIPGro *box = panel->pipBox();
    const QPoint start = box->pos();
    const QPoint grab = box->mapToGlobal(QPoint(10, 10));
    QMouseEvent press(QEvent::MouseButtonPress, QPoint(10, 10), grab, Qt::LeftButton, Qt::LeftButton,
                      Qt::NoModifier);
    QApplication::sendEvent(box, &press);
    QMouseEvent move(QEvent::MouseMove, QPoint(70, 50), grab + QPoint(60, 40), Qt::NoButton, Qt::LeftButton,
                     Qt::NoModifier);
    QApplication::sendEvent(box, &move);
    QMouseEvent release(QEvent::MouseButtonRelease, QPoint(70, 50), grab + QPoint(60, 40), Qt::LeftButton,
                        Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(box, &release);
    const QPoint dragged = box->pos();
    QVERIFY(dragged != start);
    QTRY_VERIFY_WITH_TIMEOUT(LabState::logCount(QStringLiteral("^rx unit=%1 .*cmd=0xa1").arg(unit)) >= 1,
                             5000);

    // Tell the panel something else (as a stale report would), then read the unit: DS puts the
    // buses and the box back where the unit has them.
    emit panel->link()->on_signals_3210Data(QByteArray::fromHex("0102"));
    box->set_H_Vposition_Style(0, 0);
    QCOMPARE(box->pos(), QPoint(0, 0));
    states.clear();
    panel->findChild<QPushButton *>(QStringLiteral("btn_ds"))->click();
    QTRY_VERIFY_WITH_TIMEOUT(states.count() >= 1, 5000);
    // Preview to unit and back truncates twice: a pixel off is the same place.
    QVERIFY2((box->pos() - dragged).manhattanLength() <= 2,
             qPrintable(QStringLiteral("box at %1,%2, dragged to %3,%4")
                            .arg(box->x())
                            .arg(box->y())
                            .arg(dragged.x())
                            .arg(dragged.y())));
    QVERIFY(panel->findChild<QPushButton *>(QStringLiteral("btn_pgm3"))->styleSheet().contains("#D22E00"));
    QVERIFY(panel->findChild<QPushButton *>(QStringLiteral("btn_pvw4"))->styleSheet().contains("#19FA00"));
    delete panel;
}

QTEST_MAIN(TestRvx5370Lab)
#include "tst_rvx5370_lab.moc"
