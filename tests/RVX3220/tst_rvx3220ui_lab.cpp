// End to end in the lab: the search window opens an emulated RVX3220, the panel drives it, and
// the unit's state file shows what the panel did. Then the panel is left and opened again.
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
    void initTestCase();
    void openDriveCloseReopen();

private:
    // Double-clicks the unit's entry; `drive` runs inside the modal panel and must leave it.
    void openPanel(showsearch &window, std::function<void(RVX3220UI *)> drive);

    QString m_ip;
};

void TestRvx3220Lab::initTestCase()
{
    const QStringList units = qEnvironmentVariable("LAB_UNITS").split(QLatin1Char(' '), Qt::SkipEmptyParts);
    QCOMPARE(units.size(), 1);
    m_ip = units.first();
    QVERIFY(!LabState::read(m_ip).isEmpty());
}

void TestRvx3220Lab::openPanel(showsearch &window, std::function<void(RVX3220UI *)> drive)
{
    QListWidget *list = window.deviceList();
    const QString entry = QStringLiteral("Desk: ") + m_ip;
    QTRY_COMPARE_WITH_TIMEOUT(list->count(), 1, 10000);
    QListWidgetItem *item = list->item(0);
    QCOMPARE(item->text(), entry);

    bool opened = false;
    ModalWatch watch([&](QWidget *w) {
        auto *panel = qobject_cast<RVX3220UI *>(w);
        if (panel) {
            opened = true;
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
}

void TestRvx3220Lab::openDriveCloseReopen()
{
    showsearch window;
    window.show();
    QStringList failures;
    auto check = [&failures](const QString &what, const QString &problem) {
        if (!problem.isEmpty())
            failures << what + QStringLiteral(": ") + problem;
    };

    openPanel(window, [&](RVX3220UI *panel) {
        check(QStringLiteral("port"),
              panel->link()->isBound() ? QString() : QStringLiteral("7000 not bound"));
        panel->pgm()->buttonGroup()->button(3)->click();
        panel->pvw()->buttonGroup()->button(5)->click();
        check(QStringLiteral("buses"), LabState::waitFor(m_ip, {{"pgm", "3"}, {"pvw", "5"}}));

        panel->cutButton()->click();
        check(QStringLiteral("cut"), LabState::waitFor(m_ip, {{"pgm", "5"}, {"pvw", "3"}, {"cuts", "1"}}));
        if (panel->pgm()->BtnPGMstate() != 5 || panel->pvw()->BtnPVWstate() != 3)
            failures << QStringLiteral("panel shows other buses than the unit after CUT");

        // A full lever push is a transition on the unit too.
        for (int v = 1; v <= 126; ++v)
            panel->tbar()->setValue(v);
        check(QStringLiteral("lever"),
              LabState::waitFor(m_ip, {{"pgm", "3"}, {"pvw", "5"}, {"lever", "1,0"}, {"transitions", "2"}}));
        if (panel->pgm()->BtnPGMstate() != 3 || panel->pvw()->BtnPVWstate() != 5)
            failures << QStringLiteral("panel shows other buses than the unit after the lever");

        panel->returnButton()->click();
    });
    QVERIFY2(failures.isEmpty(), qPrintable(failures.join('\n')));

    // The second panel gets port 7000 back and still reaches the unit.
    openPanel(window, [&](RVX3220UI *panel) {
        check(QStringLiteral("port again"),
              panel->link()->isBound() ? QString() : QStringLiteral("7000 not bound"));
        panel->pgm()->buttonGroup()->button(6)->click();
        check(QStringLiteral("reopened"), LabState::waitFor(m_ip, {{"pgm", "6"}}));
        panel->returnButton()->click();
    });
    QVERIFY2(failures.isEmpty(), qPrintable(failures.join('\n')));
}

QTEST_MAIN(TestRvx3220Lab)
#include "tst_rvx3220ui_lab.moc"
