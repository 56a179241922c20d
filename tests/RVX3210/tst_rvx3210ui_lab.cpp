// Runs on the operator side of a lab whose first unit is an emulated RVX3210 (see
// CMakeLists.txt): the search window finds it, a double-click opens its panel, and the panel
// and the unit agree about what the operator did, across a return to the search window.
#include "RVX3210/below_widget.h"
#include "RVX3210/rvx3210ui.h"
#include "RVX3210/upper_widget.h"
#include "SwitcherData/rvx3210_workdata.h"
#include "app/showsearch.h"
#include "labstate.h"
#include "testframes.h"

#include <QAbstractButton>
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
    void initTestCase();
    void openCutReturnReopen();

private:
    // Double-clicks the unit's entry once it is listed and hands back the panel it opened.
    void openUnit(showsearch &search, RVX3210UI *&panel);
    int stateReads() const { return LabState::logCount("rx unit=" + m_main + " board=main cmd=0x49 "); }
    QString unitState(const QString &key) const { return LabState::read(m_main).value(key); }

    QString m_main;
};

void TestRvx3210PanelLab::initTestCase()
{
    QLoggingCategory::setFilterRules(QStringLiteral("*.debug=false"));
    m_main = QString::fromLocal8Bit(qgetenv("LAB_UNITS")).split(' ').value(0);
    QVERIFY2(!m_main.isEmpty(), "run through lab/lab.sh");
}

void TestRvx3210PanelLab::openUnit(showsearch &search, RVX3210UI *&panel)
{
    panel = nullptr;
    QListWidget *list = search.deviceList();
    QListWidgetItem *item = nullptr;
    auto listed = [&] {
        const QList<QListWidgetItem *> found = list->findItems(m_main, Qt::MatchEndsWith);
        item = found.value(0);
        return item != nullptr;
    };
    QTRY_VERIFY_WITH_TIMEOUT(listed(), 10000);
    QVERIFY(QTest::qWaitForWindowExposed(&search));
    list->scrollToItem(item);
    list->setCurrentItem(item);
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(item).center());
    QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(item).center());
    for (QWidget *w : QApplication::topLevelWidgets()) {
        if (auto *p = qobject_cast<RVX3210UI *>(w); p && p->isVisible())
            panel = p;
    }
}

void TestRvx3210PanelLab::openCutReturnReopen()
{
    showsearch search(nullptr);
    search.show();

    for (int round = 0; round < 2; ++round) {
        const int readsBefore = stateReads();
        RVX3210UI *panel = nullptr;
        openUnit(search, panel);
        QVERIFY2(panel, "the double-click opened no RVX3210 panel");
        QVERIFY(!search.isVisible());
        QVERIFY(panel->link()->isBound());
        QCOMPARE(panel->link()->on_DevIP(), m_main);

        // The unit got the panel's state read, and the panel lights what the unit reports.
        QTRY_COMPARE_WITH_TIMEOUT(stateReads(), readsBefore + 1, 5000);
        const int pgm = unitState("pgm").toInt();
        const int pvw = unitState("pvw").toInt();
        QVERIFY(pgm >= 1 && pgm <= 4 && pvw >= 1 && pvw <= 4 && pgm != pvw);
        Below_Widget *below = panel->lowerRow();
        const QByteArray pgmLamp = ":/images/red/png/" + QByteArray::number(pgm) + ".png";
        QTRY_VERIFY_WITH_TIMEOUT(lit(below->pgmGroup()->button(pgm), pgmLamp.constData()), 5000);
        QCOMPARE(int(below->BtnPVWstate()), pvw);

        // CUT changes the unit, and a second read says so.
        below->btnCut()->click();
        QTRY_COMPARE_WITH_TIMEOUT(unitState("pgm").toInt(), pvw, 5000);
        QCOMPARE(unitState("pvw").toInt(), pgm);
        below->set_PGMCH_Style(9); // forget what the CUT lit locally
        QSignalSpy state(panel->link(), &RVX3210_workdata::on_signals_3210Data);
        panel->upperRow()->btnRead()->click();
        QVERIFY(state.wait(5000));
        QCOMPARE(int(uint8_t(state.at(0).at(0).toByteArray().at(0))), pvw);
        QCOMPARE(stateReads(), readsBefore + 2);
        const QByteArray newPgmLamp = ":/images/red/png/" + QByteArray::number(pvw) + ".png";
        QVERIFY(lit(below->pgmGroup()->button(pvw), newPgmLamp.constData()));

        // Back to the search window: the panel goes, with its socket.
        QPointer<RVX3210UI> gone(panel);
        panel->upperRow()->btnReturn()->click();
        QVERIFY(search.isVisible());
        QTRY_VERIFY(gone.isNull());
    }
}

QTEST_MAIN(TestRvx3210PanelLab)
#include "tst_rvx3210ui_lab.moc"
