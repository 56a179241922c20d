// End to end in the lab: the search window opens an emulated RVX3410, the panel shows the unit's
// state, its REC key reaches the unit, and a panel opened again starts from the unit's state.
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
    void openDriveReturnReopen();
};

void TestRvx3410Lab::openDriveReturnReopen()
{
    const QStringList units = qEnvironmentVariable("LAB_UNITS").split(QLatin1Char(' '), Qt::SkipEmptyParts);
    QVERIFY2(units.size() == 1, "run through lab/lab.sh with one unit");
    const QString ip = units.first(), his = qEnvironmentVariable("LAB_HIS");
    showsearch window;
    window.show();

    // Both boards have answered once the unit's record carries the HIS address; the list is not
    // rebuilt under the double-click then.
    auto open = [&]() -> RVX3410UI * {
        SWITCHER_DATA *search = window.link();
        if (!QTest::qWaitFor(
                [&] {
                    return search->DevInfo_DATA_IDX() == 1 &&
                           SWITCHER_DATA::dottedIp(search->devices()[0].ip2) == his &&
                           window.deviceList()->count() == 1;
                },
                10000))
            return nullptr;
        QListWidgetItem *item = window.deviceList()->item(0);
        if (item->text() != QStringLiteral("Cam: ") + ip)
            return nullptr;
        window.deviceList()->setCurrentItem(item);
        emit window.deviceList()->itemDoubleClicked(item);
        for (QWidget *w : QApplication::topLevelWidgets())
            if (auto *panel = qobject_cast<RVX3410UI *>(w); panel && panel->isVisible())
                return panel;
        return nullptr;
    };
    auto leave = [&](RVX3410UI *panel) {
        QPointer<RVX3410UI> gone(panel);
        panel->upperRow()->btnReturn()->click();
        QVERIFY(window.isVisible());
        QTRY_VERIFY(gone.isNull()); // freed, so the next panel gets port 7000
    };

    RVX3410UI *panel = open();
    QVERIFY(panel);
    QVERIFY(!window.isVisible());
    RVX_3410_Upper_Widget *up = panel->upperRow();
    // The unit's power-up buses are shown.
    QTRY_COMPARE(panel->lowerRow()->BtnPGMstate(), uint8_t(1));
    QCOMPARE(panel->lowerRow()->BtnPVWstate(), uint8_t(2));
    QVERIFY(!up->f4On());

    // The unit's reply: a whole frame marked 0x27 for the RVX3410 signal, and the 29-byte record.
    QSignalSpy frames(panel->link(), &RVX3210_workdata::on_signals_3410Data);
    QSignalSpy records(panel->link(), &RVX3210_workdata::on_signals_3210Data);
    up->btnRead()->click();
    QVERIFY(records.wait(5000));
    QCOMPARE(frames.count(), 1);
    QCOMPARE(uint8_t(frames.at(0).at(0).toByteArray().at(14)), uint8_t(0x27));
    QCOMPARE(records.at(0).at(0).toByteArray().size(), 29);

    up->btnF4()->click();
    QCOMPARE(LabState::waitFor(ip, {{"rec", "recording"}}), QString());
    leave(panel);

    panel = open();
    QVERIFY(panel);
    QVERIFY(panel->link()->isBound());
    QTRY_VERIFY(panel->upperRow()->f4On());
    panel->upperRow()->btnF4()->click();
    QCOMPARE(LabState::waitFor(ip, {{"rec", "idle"}}), QString());
    leave(panel);
}

QTEST_MAIN(TestRvx3410Lab)
#include "tst_rvx3410ui_lab.moc"
