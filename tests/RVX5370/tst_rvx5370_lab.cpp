// End to end in the lab: the search window opens an emulated RVX5370; the panel shows the
// unit's state and serial, and a drag of the PIP preview moves the unit's PIP, which a state
// read (DS) brings back after the panel has been told otherwise.
#include "../RVX8000/lab8000.h"
#include "RVX5370/rvx5370.h"
#include "RVX8000/pipgro.h"
#include "RVX8000/setdialog.h"
#include "labstate.h"

class TestRvx5370Lab : public QObject
{
    Q_OBJECT
private slots:
    void openShowDragReadBack();
};

void TestRvx5370Lab::openShowDragReadBack()
{
    showsearch window;
    QString unit;
    QPointer<RVX5370> panel;
    Lab8000::openOnlyUnit(window, unit, panel);
    if (QTest::currentTestFailed())
        return;
    QVERIFY(!window.isVisible());

    // The first state read answers with the long reply: its serial reaches SET, its state the panel.
    QLabel *serial = panel->setWidget()->findChild<QLabel *>(QStringLiteral("label_SM"));
    const QString formSerial = serial->text();
    // Waited for on the panel: the reply may have been read while the panel was being opened.
    QTRY_VERIFY_WITH_TIMEOUT(serial->text() != formSerial, 5000);
    QVERIFY2(serial->text().startsWith(QLatin1String("SN:")), qPrintable(serial->text()));
    QCOMPARE(panel->setWidget()->findChild<QLabel *>(QStringLiteral("label_IP"))->text(),
             QStringLiteral("IP:") + unit);

    // A bus change shows on the unit and comes back with the next read.
    panel->findChild<QPushButton *>(QStringLiteral("btn_pgm3"))->click();
    panel->findChild<QPushButton *>(QStringLiteral("btn_pvw4"))->click();

    // Drag the preview box by the mouse, the way an operator does: 60 right, 40 down.
    PIPGro *box = panel->pipBox();
    const QPoint start = box->pos();
    Lab8000::drag(box, QPoint(60, 40));
    const QPoint dragged = box->pos();
    QVERIFY(dragged != start);
    QTRY_VERIFY_WITH_TIMEOUT(LabState::logCount(QStringLiteral("^rx unit=%1 .*cmd=0xa1").arg(unit)) >= 1,
                             5000);

    // Tell the panel something else (as a stale report would), then read the unit: DS puts the
    // buses and the box back where the unit has them.
    panel->m_on_toRead_5370Dtat(QByteArray::fromHex("0102"));
    box->set_H_Vposition_Style(0, 0);
    QCOMPARE(box->pos(), QPoint(0, 0));
    Lab8000::readBack(panel.data());
    Lab8000::checkSamePlace(box->pos(), dragged);
    QVERIFY(Rig8000::isRed(panel->findChild<QPushButton *>(QStringLiteral("btn_pgm3"))));
    QVERIFY(Rig8000::isGreen(panel->findChild<QPushButton *>(QStringLiteral("btn_pvw4"))));
    delete panel;
}

QTEST_MAIN(TestRvx5370Lab)
#include "tst_rvx5370_lab.moc"
