// End to end in the lab: the search window opens an emulated RVX3220, the panel drives it, and the
// unit's state file shows what the panel did. Then the panel is left and opened again.
#include "RVX3220/pgm.h"
#include "RVX3220/pvw.h"
#include "RVX3220/rvx3220ui.h"
#include "SwitcherData/rvx3220_workdata.h"
#include "app/showsearch.h"
#include "labstate.h"
#include "modalanswer.h"

#include <QButtonGroup>
#include <QListWidget>
#include <QPushButton>
#include <QSlider>
#include <QtTest>

class TestRvx3220Lab : public QObject
{
    Q_OBJECT
private slots:
    void openDriveCloseReopen();
};

void TestRvx3220Lab::openDriveCloseReopen()
{
    const QStringList units = qEnvironmentVariable("LAB_UNITS").split(QLatin1Char(' '), Qt::SkipEmptyParts);
    QCOMPARE(units.size(), 1);
    const QString ip = units.first();
    showsearch window;
    window.show();
    // Problems seen inside the modal panel, where a failed check cannot end the test.
    QStringList failures;
    auto expect = [&](const char *what, const QMap<QString, QString> &state, RVX3220UI *panel, int pgm,
                      int pvw) {
        const QString problem = LabState::waitFor(ip, state);
        if (!problem.isEmpty())
            failures << QStringLiteral("%1: %2").arg(what, problem);
        if (panel && (panel->pgm()->BtnPGMstate() != pgm || panel->pvw()->BtnPVWstate() != pvw))
            failures << QStringLiteral("%1: the panel shows other buses than the unit").arg(what);
    };
    // Double-clicks the unit's entry; `drive` runs inside the modal panel and leaves it.
    auto openPanel = [&](const std::function<void(RVX3220UI *)> &drive) {
        QListWidget *list = window.deviceList();
        QTRY_COMPARE_WITH_TIMEOUT(list->count(), 1, 10000);
        QListWidgetItem *item = list->item(0);
        QCOMPARE(item->text(), QStringLiteral("Desk: ") + ip);
        bool opened = false;
        ModalWatch watch([&](QWidget *w) {
            if (auto *panel = qobject_cast<RVX3220UI *>(w)) {
                opened = true;
                if (!panel->link()->isBound())
                    failures << QStringLiteral("port 7000 not bound");
                drive(panel);
            }
            w->close();
        });
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        list->scrollToItem(item);
        const QPoint at = list->visualItemRect(item).center();
        QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier, at);
        QTest::mouseDClick(list->viewport(), Qt::LeftButton, Qt::NoModifier, at);
        QVERIFY(opened);
        // The panel is gone and the search window is back with a fresh search.
        QVERIFY(window.isVisible());
        QTRY_VERIFY(window.findChildren<RVX3220UI *>().isEmpty());
        QVERIFY2(failures.isEmpty(), qPrintable(failures.join('\n')));
    };

    openPanel([&](RVX3220UI *panel) {
        panel->pgm()->buttonGroup()->button(3)->click();
        panel->pvw()->buttonGroup()->button(5)->click();
        expect("buses", {{"pgm", "3"}, {"pvw", "5"}}, nullptr, 0, 0);
        panel->cutButton()->click();
        expect("cut", {{"pgm", "5"}, {"pvw", "3"}, {"cuts", "1"}}, panel, 5, 3);
        // A full lever push is a transition on the unit too.
        for (int v = 1; v <= 126; ++v)
            panel->tbar()->setValue(v);
        expect("lever", {{"pgm", "3"}, {"pvw", "5"}, {"lever", "1,0"}, {"transitions", "2"}}, panel, 3, 5);
        panel->returnButton()->click();
    });
    // The second panel gets port 7000 back and still reaches the unit.
    openPanel([&](RVX3220UI *panel) {
        panel->pgm()->buttonGroup()->button(6)->click();
        expect("reopened", {{"pgm", "6"}}, nullptr, 0, 0);
        panel->returnButton()->click();
    });
}

QTEST_MAIN(TestRvx3220Lab)
#include "tst_rvx3220ui_lab.moc"
