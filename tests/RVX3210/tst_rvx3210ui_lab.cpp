// The operator side of a lab whose one unit is an emulated RVX3210: the search window finds it,
// a double-click opens its panel, and panel and unit agree about a CUT, twice across a return.
#include "RVX3210/below_widget.h"
#include "RVX3210/rvx3210ui.h"
#include "RVX3210/upper_widget.h"
#include "SwitcherData/rvx3210_workdata.h"
#include "app/showsearch.h"
#include "labstate.h"
#include "testframes.h"

#include <QApplication>
#include <QButtonGroup>
#include <QListWidget>
#include <QPointer>
#include <QPushButton>
#include <QSignalSpy>
#include <QtTest>

class TestRvx3210PanelLab : public QObject
{
    Q_OBJECT
private slots:
    void openCutReturnReopen();
};

void TestRvx3210PanelLab::openCutReturnReopen()
{
    QLoggingCategory::setFilterRules(QStringLiteral("*.debug=false"));
    const QString ip = qEnvironmentVariable("LAB_UNITS").split(' ').value(0);
    QVERIFY2(!ip.isEmpty(), "run through lab/lab.sh");
    auto stateReads = [&] { return LabState::logCount("rx unit=" + ip + " board=main cmd=0x49 "); };
    auto unit = [&](const char *key) { return LabState::read(ip).value(key).toInt(); };
    auto pgmLit = [](Below_Widget *below, int n) {
        return lit(below->pgmGroup()->button(n),
                   (":/images/red/png/" + QByteArray::number(n) + ".png").constData());
    };
    showsearch search(nullptr);
    search.show();

    for (int round = 0; round < 2; ++round) {
        const int readsBefore = stateReads();
        QListWidget *list = search.deviceList();
        QTRY_VERIFY_WITH_TIMEOUT(!list->findItems(ip, Qt::MatchEndsWith).isEmpty(), 10000);
        QListWidgetItem *item = list->findItems(ip, Qt::MatchEndsWith).first();
        QVERIFY(QTest::qWaitForWindowExposed(&search));
        list->scrollToItem(item);
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(item).center());
        QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(item).center());
        RVX3210UI *panel = nullptr;
        for (QWidget *w : QApplication::topLevelWidgets())
            if (auto *p = qobject_cast<RVX3210UI *>(w); p && p->isVisible())
                panel = p;
        QVERIFY2(panel, "the double-click opened no RVX3210 panel");
        QVERIFY(!search.isVisible());
        QCOMPARE(panel->link()->on_DevIP(), ip);

        // The unit got the panel's state read, and the panel lights what the unit reports.
        QTRY_COMPARE_WITH_TIMEOUT(stateReads(), readsBefore + 1, 5000);
        const int pgm = unit("pgm"), pvw = unit("pvw");
        QVERIFY(pgm >= 1 && pgm <= 4 && pvw >= 1 && pvw <= 4 && pgm != pvw);
        Below_Widget *below = panel->lowerRow();
        QTRY_VERIFY_WITH_TIMEOUT(pgmLit(below, pgm), 5000);
        QCOMPARE(int(below->BtnPVWstate()), pvw);

        // CUT changes the unit, and a second read says so.
        below->btnCut()->click();
        QTRY_COMPARE_WITH_TIMEOUT(unit("pgm"), pvw, 5000);
        QCOMPARE(unit("pvw"), pgm);
        below->set_PGMCH_Style(9); // forget what the CUT lit locally
        QSignalSpy state(panel->link(), &RVX3210_workdata::on_signals_3210Data);
        panel->upperRow()->btnRead()->click();
        QVERIFY(state.wait(5000));
        QCOMPARE(stateReads(), readsBefore + 2);
        QVERIFY(pgmLit(below, pvw));

        // Back to the search window: the panel goes, with its socket.
        QPointer<RVX3210UI> gone(panel);
        panel->upperRow()->btnReturn()->click();
        QVERIFY(search.isVisible());
        QTRY_VERIFY(gone.isNull());
    }
}

QTEST_MAIN(TestRvx3210PanelLab)
#include "tst_rvx3210ui_lab.moc"
