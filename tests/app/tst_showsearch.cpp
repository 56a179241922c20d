// The search window offscreen: what the operator reads in the list under each filter, and
// how the list follows replies. Replies are fed to the window's own link object.
#include "RVX3210/rvx3210ui.h"
#include "RVX5350/rvx5350.h"
#include "SwitcherData/workdata.h"
#include "app/devicemodel.h"
#include "app/groupbox_right.h"
#include "app/showsearch.h"
#include "testframes.h"

#include <QApplication>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QtTest>

class tst_SearchWindow : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void labelsPerFilter_data();
    void labelsPerFilter();
    void rvx5370FilterChangesNothing();
    void replyWhileAnotherFilterShowsReturnsToAll();
    void searchClearsList();
    void modelRouting_data();
    void modelRouting();
    void doubleClickSetsChildType();
    void returnOrDoubleClickOpensOnce_data();
    void returnOrDoubleClickOpensOnce();

private:
    void addUnit(const char *ip, uint8_t childType, const QByteArray &name, uint8_t idByte);

    showsearch *m_window = nullptr;
};

void tst_SearchWindow::init()
{
    m_window = new showsearch;
    m_window->show();
    addUnit("10.0.0.7", 0x21, "Zulu", 1);
    addUnit("10.0.0.3", 0x22, "Alpha", 2);
    addUnit("10.0.0.5", 0x23, "Mike", 3);
    addUnit("10.0.0.9", 0x25, "Echo", 4);
    addUnit("10.0.0.4", 0x26, "Papa", 5);
    addUnit("10.0.0.6", 0x24, "Sierra", 6);
    addUnit("10.0.0.8", 0x55, "Golf", 7);
    QTRY_COMPARE(m_window->deviceList()->count(), 7);
}

void tst_SearchWindow::cleanup()
{
    delete m_window;
}

void tst_SearchWindow::addUnit(const char *ip, uint8_t childType, const QByteArray &name, uint8_t idByte)
{
    const QByteArray frame =
        searchReply(0xA5, childType, name + "-1", QByteArray(1, char(idByte)) + "\x10\x20");
    m_window->link()->MYanalysis(QHostAddress(QString::fromLatin1(ip)), frame, frame.size());
}

void tst_SearchWindow::labelsPerFilter_data()
{
    QTest::addColumn<int>("filter");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("all: name and address, sorted")
        << 0 << QStringList{"Alpha: 10.0.0.3", "Echo: 10.0.0.9",   "Golf: 10.0.0.8", "Mike: 10.0.0.5",
                            "Papa: 10.0.0.4",  "Sierra: 10.0.0.6", "Zulu: 10.0.0.7"};
    // 0x23 shares the RVX3210 panel but no filter lists it.
    QTest::newRow("RVX3210 family") << 1
                                    << QStringList{"RVX3210(2021): 10.0.0.9", "RVX3210: 10.0.0.7",
                                                   "RVX3210P: 10.0.0.4", "RVX3210S: 10.0.0.6"};
    QTest::newRow("RVX3220") << 2 << QStringList{"RVX3220: 10.0.0.3"};
}

void tst_SearchWindow::labelsPerFilter()
{
    QFETCH(int, filter);
    QFETCH(QStringList, expected);
    m_window->groupBox()->radio(filter)->click();
    QCOMPARE(itemTexts(m_window->deviceList()), expected);
}

void tst_SearchWindow::rvx5370FilterChangesNothing()
{
    m_window->groupBox()->radio(2)->click();
    const QStringList before = itemTexts(m_window->deviceList());
    m_window->groupBox()->radio(3)->click();
    QCOMPARE(itemTexts(m_window->deviceList()), before);
}

void tst_SearchWindow::replyWhileAnotherFilterShowsReturnsToAll()
{
    m_window->groupBox()->radio(2)->click();
    QCOMPARE(m_window->deviceList()->count(), 1);
    addUnit("10.0.0.2", 0x21, "Bravo", 8);
    QTRY_COMPARE(m_window->deviceList()->count(), 8);
    QCOMPARE(m_window->deviceList()->item(1)->text(), QString("Bravo: 10.0.0.2"));
    // The "all" key is not re-checked by a reply.
    QVERIFY(m_window->groupBox()->radio(2)->isChecked());
}

void tst_SearchWindow::searchClearsList()
{
    m_window->groupBox()->radio(1)->click();
    m_window->groupBox()->searchButton()->click();
    QCOMPARE(m_window->deviceList()->count(), 0);
    QCOMPARE(m_window->link()->DevInfo_DATA_IDX(), 0);
    QVERIFY(m_window->groupBox()->radioAll()->isChecked());
    addUnit("10.0.0.2", 0x21, "Bravo", 8);
    QTRY_COMPARE(itemTexts(m_window->deviceList()), QStringList{"Bravo: 10.0.0.2"});
}

void tst_SearchWindow::modelRouting_data()
{
    QTest::addColumn<int>("childType");
    QTest::addColumn<int>("panel");
    using P = DeviceModel::Panel;
    const QList<QPair<int, P>> table = {
        {0x21, P::RVX3210}, {0x22, P::RVX3220}, {0x23, P::RVX3210}, {0x24, P::RVX3210}, {0x25, P::RVX3210},
        {0x26, P::RVX3210}, {0x27, P::RVX3410}, {0x28, P::RVX3410}, {0x47, P::RVX3210}, {0x4F, P::RVX5310},
        {0x53, P::RVX5310}, {0x54, P::RVX5310}, {0x51, P::RVX5370}, {0x52, P::RVX5370}, {0x56, P::RVX5370},
        {0x55, P::RVX5350}, {0x00, P::RVX3210}, {0xFE, P::RVX3210}};
    for (const auto &row : table)
        QTest::newRow(QByteArray::number(row.first, 16).constData()) << row.first << int(row.second);
}

void tst_SearchWindow::modelRouting()
{
    QFETCH(int, childType);
    QFETCH(int, panel);
    QCOMPARE(int(DeviceModel::panelFor(uint8_t(childType))), panel);
}

void tst_SearchWindow::doubleClickSetsChildType()
{
    extern uint8_t GLOBAL_DEV_CHILD_TYPE;
    GLOBAL_DEV_CHILD_TYPE = 0;
    // Golf is an RVX5350: its child type is recorded and its panel takes the window's place.
    QListWidget *list = m_window->deviceList();
    list->setCurrentItem(list->findItems("Golf: 10.0.0.8", Qt::MatchExactly).value(0));
    m_window->m_on_liswidget_clicked();
    QCOMPARE(GLOBAL_DEV_CHILD_TYPE, uint8_t(0x55));
    QWidget *panel = nullptr;
    for (QWidget *w : QApplication::topLevelWidgets())
        if (qobject_cast<RVX5350 *>(w))
            panel = w;
    QVERIFY(panel);
    QVERIFY(panel->isVisible());
    QVERIFY(!m_window->isVisible());
    delete panel;
    m_window->show();

    // An address that no record has opens nothing.
    GLOBAL_DEV_CHILD_TYPE = 0;
    list->addItem("Ghost: 10.9.9.9");
    list->setCurrentItem(list->findItems("Ghost: 10.9.9.9", Qt::MatchExactly).value(0));
    m_window->m_on_liswidget_clicked();
    QCOMPARE(GLOBAL_DEV_CHILD_TYPE, uint8_t(0));
}

void tst_SearchWindow::returnOrDoubleClickOpensOnce_data()
{
    QTest::addColumn<QString>("how");
    QTest::newRow("Return") << "return";
    QTest::newRow("keypad Enter") << "enter";
    QTest::newRow("double-click") << "double";
}

void tst_SearchWindow::returnOrDoubleClickOpensOnce()
{
    QFETCH(QString, how);
    auto panels = [] {
        QList<RVX3210UI *> found;
        for (QWidget *w : QApplication::topLevelWidgets())
            if (auto *p = qobject_cast<RVX3210UI *>(w))
                found << p;
        return found;
    };
    QCOMPARE(panels().size(), 0);
    QListWidget *list = m_window->deviceList();
    QListWidgetItem *zulu = list->findItems("Zulu: 10.0.0.7", Qt::MatchExactly).value(0);
    QVERIFY(zulu);
    list->setCurrentItem(zulu);
    list->setFocus();
    if (how == QLatin1String("double")) {
        const QPoint at = list->visualItemRect(zulu).center();
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, at);
        QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, at);
    } else {
        QTest::keyClick(list, how == QLatin1String("return") ? Qt::Key_Return : Qt::Key_Enter,
                        how == QLatin1String("return") ? Qt::NoModifier : Qt::KeypadModifier);
    }
    const QList<RVX3210UI *> opened = panels();
    QCOMPARE(opened.size(), 1);
    QVERIFY(opened.first()->isVisible());
    QVERIFY(!m_window->isVisible());
    qDeleteAll(opened);
}

QTEST_MAIN(tst_SearchWindow)
#include "tst_showsearch.moc"
