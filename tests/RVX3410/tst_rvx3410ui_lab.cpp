// End to end in the lab: the search window opens an emulated RVX3410, the panel shows the
// unit's state, its REC key reaches the unit, the unit's next state brings it back, and the
// panel is left and opened again.
#include "RVX3210/below_widget.h"
#include "RVX3410/rvx3410ui.h"
#include "RVX3410/rvx_3410_upper_widget.h"
#include "SwitcherData/rvx3210_workdata.h"
#include "SwitcherData/workdata.h"
#include "app/showsearch.h"
#include "labstate.h"

#include <QApplication>
#include <QListWidget>
#include <QPointer>
#include <QPushButton>
#include <QSignalSpy>
#include <QtTest>

class TestRvx3410Lab : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void openDriveReturnReopen();

private:
    RVX3410UI *open(showsearch &window);
    void leave(showsearch &window, RVX3410UI *panel);

    QString m_ip;
    QString m_his;
};

void TestRvx3410Lab::initTestCase()
{
    const QStringList units = qEnvironmentVariable("LAB_UNITS").split(QLatin1Char(' '), Qt::SkipEmptyParts);
    QVERIFY2(units.size() == 1, "run through lab/lab.sh with one unit");
    m_ip = units.first();
    m_his = qEnvironmentVariable("LAB_HIS");
}

RVX3410UI *TestRvx3410Lab::open(showsearch &window)
{
    // Both boards have answered once the unit's record carries the HIS address; the list
    // is not rebuilt under the double-click then.
    SWITCHER_DATA *search = window.link();
    const bool found = QTest::qWaitFor(
        [&] {
            return search->DevInfo_DATA_IDX() == 1 &&
                   SWITCHER_DATA::dottedIp(search->devices()[0].ip2) == m_his &&
                   window.deviceList()->count() == 1;
        },
        10000);
    if (!found)
        return nullptr;
    QListWidget *list = window.deviceList();
    QListWidgetItem *item = list->item(0);
    if (item->text() != QStringLiteral("Cam: ") + m_ip) {
        qWarning() << "listed" << item->text();
        return nullptr;
    }
    list->setCurrentItem(item);
    // What a double-click on the entry makes the list say.
    emit list->itemDoubleClicked(item);
    for (QWidget *w : QApplication::topLevelWidgets()) {
        auto *panel = qobject_cast<RVX3410UI *>(w);
        if (panel && panel->isVisible())
            return panel;
    }
    return nullptr;
}

void TestRvx3410Lab::leave(showsearch &window, RVX3410UI *panel)
{
    QPointer<RVX3410UI> gone(panel);
    panel->upperRow()->btnReturn()->click();
    QVERIFY(!panel->isVisible());
    QVERIFY(window.isVisible());
    // Freed, so the next panel gets port 7000.
    QTRY_VERIFY(gone.isNull());
}

void TestRvx3410Lab::openDriveReturnReopen()
{
    showsearch window;
    window.show();

    RVX3410UI *panel = open(window);
    QVERIFY(panel);
    QVERIFY(!window.isVisible());
    QVERIFY(panel->link()->isBound());
    RVX_3410_Upper_Widget *up = panel->upperRow();
    // The unit's power-up buses are shown.
    QTRY_COMPARE(panel->lowerRow()->BtnPGMstate(), uint8_t(1));
    QCOMPARE(panel->lowerRow()->BtnPVWstate(), uint8_t(2));
    QVERIFY(!up->f4On());

    // The unit's reply: a whole frame marked 0x27 for the RVX3410 signal, and the 29-byte
    // record the panel reads.
    QSignalSpy frames(panel->link(), &RVX3210_workdata::on_signals_3410Data);
    QSignalSpy records(panel->link(), &RVX3210_workdata::on_signals_3210Data);
    up->btnRead()->click();
    QVERIFY(records.wait(5000));
    QCOMPARE(frames.count(), 1);
    QCOMPARE(uint8_t(frames.at(0).at(0).toByteArray().at(14)), uint8_t(0x27));
    QCOMPARE(records.at(0).at(0).toByteArray().size(), 29);

    // REC reaches the unit's state; the panel opened again below shows it from the unit.
    up->btnF4()->click();
    QCOMPARE(LabState::waitFor(m_ip, {{"rec", "recording"}}), QString());

    leave(window, panel);

    // The second panel binds port 7000 again and starts from the unit's state.
    panel = open(window);
    QVERIFY(panel);
    QVERIFY(panel->link()->isBound());
    up = panel->upperRow();
    QTRY_VERIFY(up->f4On());
    up->btnF4()->click();
    QCOMPARE(LabState::waitFor(m_ip, {{"rec", "idle"}}), QString());
    leave(window, panel);
}

QTEST_MAIN(TestRvx3410Lab)
#include "tst_rvx3410ui_lab.moc"
