// In the default lab (lab/default-units.txt): a double-click on each unit's entry opens the
// panel of its model in the search window's place, the panel talks to that unit, and the search
// window comes back for the next one (the 8000 series' close key ends the application, so
// those panels are deleted instead).
#include "RVX3210/rvx3210ui.h"
#include "RVX3210/upper_widget.h"
#include "RVX3410/rvx3410ui.h"
#include "RVX3410/rvx_3410_upper_widget.h"
#include "SwitcherData/workdata.h"
#include "app/showsearch.h"
#include "labstate.h"
#include "modalanswer.h"

#include <QApplication>
#include <QListWidget>
#include <QPointer>
#include <QPushButton>
#include <QSet>
#include <QtTest>
#include <memory>

class TestEveryUnitLab : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void everyUnitOpensItsPanel_data();
    void everyUnitOpensItsPanel();

private:
    struct Unit
    {
        QString ip;
        QString his; // "-" for none
        uint8_t type;
        QString name;
    };
    // The entry of the unit once both its boards have answered the latest search.
    QListWidgetItem *entryOf(const Unit &unit);

    QList<Unit> m_units;
    std::unique_ptr<showsearch> m_window;
};

namespace {
// The panel each child type opens; any other type opens the RVX3210 panel.
QString panelFor(uint8_t type)
{
    static const QMap<uint8_t, QString> panels{
        {0x22, "RVX3220UI"},     {0x27, "RVX3410UI"},     {0x28, "RVX3410UI"}, {0x4F, "RVX5310Dialog"},
        {0x53, "RVX5310Dialog"}, {0x54, "RVX5310Dialog"}, {0x51, "RVX5370"},   {0x52, "RVX5370"},
        {0x56, "RVX5370"},       {0x55, "RVX5350"}};
    return panels.value(type, QStringLiteral("RVX3210UI"));
}
} // namespace

void TestEveryUnitLab::initTestCase()
{
    QLoggingCategory::setFilterRules(QStringLiteral("kova.*.debug=false"));
    const QStringList ips = qEnvironmentVariable("LAB_UNITS").split(QLatin1Char(' '), Qt::SkipEmptyParts);
    const QStringList his = qEnvironmentVariable("LAB_HIS").split(QLatin1Char(' '), Qt::SkipEmptyParts);
    QVERIFY2(!ips.isEmpty() && ips.size() == his.size(), "run me through lab/lab.sh");
    QSet<QString> panels;
    QSet<uint8_t> types;
    for (int i = 0; i < ips.size(); ++i) {
        const QMap<QString, QString> state = LabState::read(ips.at(i));
        bool ok = false;
        const uint type = state.value(QStringLiteral("type")).toUInt(&ok, 16);
        QVERIFY2(ok, qPrintable(ips.at(i)));
        m_units.append({ips.at(i), his.at(i), uint8_t(type), state.value(QStringLiteral("name"))});
        panels << panelFor(uint8_t(type));
        types << uint8_t(type);
    }
    // Every panel, and the RVX3210 variants each listed under its own label.
    QCOMPARE(panels.size(), 6);
    QVERIFY((types & QSet<uint8_t>{0x21, 0x24, 0x25, 0x26}).size() == 4);
    m_window = std::make_unique<showsearch>();
    m_window->show();
}

QListWidgetItem *TestEveryUnitLab::entryOf(const Unit &unit)
{
    QListWidgetItem *item = nullptr;
    const SWITCHER_DATA *search = m_window->link();
    const bool listed = QTest::qWaitFor(
        [&] {
            bool hisBound = unit.his == QLatin1String("-");
            for (int i = 0; i < search->DevInfo_DATA_IDX() && !hisBound; ++i) {
                const DevInfo_DATA &d = search->devices()[i];
                hisBound =
                    SWITCHER_DATA::dottedIp(d.ip) == unit.ip && SWITCHER_DATA::dottedIp(d.ip2) == unit.his;
            }
            const QList<QListWidgetItem *> found =
                m_window->deviceList()->findItems(QStringLiteral(": ") + unit.ip, Qt::MatchEndsWith);
            item = hisBound && found.size() == 1 ? found.first() : nullptr;
            return item != nullptr;
        },
        10000);
    return listed ? item : nullptr;
}

void TestEveryUnitLab::everyUnitOpensItsPanel_data()
{
    QTest::addColumn<int>("index");
    for (int i = 0; i < m_units.size(); ++i)
        QTest::newRow(qPrintable(m_units.at(i).name + QLatin1Char(' ') + m_units.at(i).ip)) << i;
}

void TestEveryUnitLab::everyUnitOpensItsPanel()
{
    QFETCH(int, index);
    const Unit unit = m_units.at(index);
    const QString expected = panelFor(unit.type);
    QVERIFY(m_window->isVisible());
    QListWidgetItem *item = entryOf(unit);
    QVERIFY2(item, "the unit is not listed with its HIS board");
    // The entry is cut at its first blank to find the address: the name must have none.
    QCOMPARE(item->text(), unit.name + QStringLiteral(": ") + unit.ip);
    QCOMPARE(item->text().split(QLatin1Char(' ')).size(), 2);
    const int readsBefore =
        LabState::logCount(QStringLiteral("^rx unit=%1 board=main cmd=0x49 ").arg(unit.ip));

    QListWidget *list = m_window->deviceList();
    QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
    list->scrollToItem(item);
    const QPoint at = list->visualItemRect(item).center();
    QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier, at);

    if (expected == QLatin1String("RVX3220UI")) {
        // A modal panel: looked at and closed from inside its own loop.
        QString opened;
        bool searchHidden = false;
        ModalWatch watch([&](QWidget *panel) {
            opened = QString::fromLatin1(panel->metaObject()->className());
            searchHidden = !m_window->isVisible();
            panel->close();
        });
        QTest::mouseDClick(list->viewport(), Qt::LeftButton, Qt::NoModifier, at);
        QCOMPARE(opened, expected);
        QVERIFY(searchHidden);
        QVERIFY(m_window->isVisible());
        return;
    }

    const QList<QWidget *> before = QApplication::topLevelWidgets();
    QTest::mouseDClick(list->viewport(), Qt::LeftButton, Qt::NoModifier, at);
    QPointer<QWidget> panel;
    for (QWidget *w : QApplication::topLevelWidgets()) {
        if (w != m_window.get() && w->isVisible() && !before.contains(w)) {
            QVERIFY2(!panel, "more than one window opened");
            panel = w;
        }
    }
    QVERIFY2(panel, qPrintable(QStringLiteral("no panel opened; expected %1").arg(expected)));
    QCOMPARE(QString::fromLatin1(panel->metaObject()->className()), expected);
    QVERIFY(!m_window->isVisible());
    // Bound to this unit: its first state read reaches the unit's main board.
    QTRY_VERIFY_WITH_TIMEOUT(
        LabState::logCount(QStringLiteral("^rx unit=%1 board=main cmd=0x49 ").arg(unit.ip)) > readsBefore,
        5000);

    if (auto *p3210 = qobject_cast<RVX3210UI *>(panel)) {
        p3210->upperRow()->btnReturn()->click();
    } else if (auto *p3410 = qobject_cast<RVX3410UI *>(panel)) {
        p3410->upperRow()->btnReturn()->click();
    } else {
        delete panel;
        m_window->showSearchPage();
    }
    QVERIFY(m_window->isVisible());
    // Gone with its link, so the next panel gets port 7000.
    QTRY_VERIFY(panel.isNull());
}

QTEST_MAIN(TestEveryUnitLab)
#include "tst_everyunit_lab.moc"
