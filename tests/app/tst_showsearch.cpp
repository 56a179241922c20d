// The search window offscreen: what the operator reads in the list under each filter, and
// how the list follows replies. Replies are fed to the window's own link object.
#include "SwitcherData/workdata.h"
#include "app/groupbox_right.h"
#include "app/showsearch.h"
#include "modalanswer.h"
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
    void replyAndSearchUnderAFilter();
    void openOnce_data();
    void openOnce();
    void liveSettingsOnCtrlComma();

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
    // The RVX5370 key leaves the list as the key before it had it.
    QTest::newRow("RVX5370") << 3 << QStringList{"RVX3220: 10.0.0.3"};
}

void tst_SearchWindow::labelsPerFilter()
{
    QFETCH(int, filter);
    QFETCH(QStringList, expected);
    m_window->groupBox()->radio(2)->click();
    m_window->groupBox()->radio(filter)->click();
    QCOMPARE(itemTexts(m_window->deviceList()), expected);
}

void tst_SearchWindow::replyAndSearchUnderAFilter()
{
    // A reply while a filter shows lists every unit again; the filter key stays checked.
    m_window->groupBox()->radio(2)->click();
    addUnit("10.0.0.2", 0x21, "Bravo", 8);
    QTRY_COMPARE(m_window->deviceList()->count(), 8);
    QCOMPARE(m_window->deviceList()->item(1)->text(), QString("Bravo: 10.0.0.2"));
    QVERIFY(m_window->groupBox()->radio(2)->isChecked());
    // A new search empties the list and the records, and checks "all".
    m_window->groupBox()->radio(1)->click();
    m_window->groupBox()->searchButton()->click();
    QCOMPARE(m_window->deviceList()->count(), 0);
    QCOMPARE(m_window->link()->DevInfo_DATA_IDX(), 0);
    QVERIFY(m_window->groupBox()->radioAll()->isChecked());
    addUnit("10.0.0.2", 0x21, "Bravo", 8);
    QTRY_COMPARE(itemTexts(m_window->deviceList()), QStringList{"Bravo: 10.0.0.2"});
}

void tst_SearchWindow::openOnce_data()
{
    QTest::addColumn<QString>("how");
    QTest::addColumn<QString>("entry");
    QTest::addColumn<int>("childType"); // recorded for the panel; 0 when nothing opens
    QTest::newRow("Return") << "return"
                            << "Zulu: 10.0.0.7" << 0x21;
    QTest::newRow("keypad Enter") << "enter"
                                  << "Zulu: 10.0.0.7" << 0x21;
    QTest::newRow("double-click") << "double"
                                  << "Zulu: 10.0.0.7" << 0x21;
    QTest::newRow("RVX5350") << "return"
                             << "Golf: 10.0.0.8" << 0x55;
    // An address that no record has opens nothing.
    QTest::newRow("no record") << "return"
                               << "Ghost: 10.9.9.9" << 0;
}

void tst_SearchWindow::openOnce()
{
    QFETCH(QString, how);
    QFETCH(QString, entry);
    QFETCH(int, childType);
    extern uint8_t GLOBAL_DEV_CHILD_TYPE;
    GLOBAL_DEV_CHILD_TYPE = 0;
    const QList<QWidget *> before = QApplication::topLevelWidgets();
    qRegisterMetaType<PanelKind>();
    qRegisterMetaType<uint8_t>("uint8_t");
    QSignalSpy announced(m_window, &showsearch::panelOpened);
    QListWidget *list = m_window->deviceList();
    if (list->findItems(entry, Qt::MatchExactly).isEmpty())
        list->addItem(entry);
    QListWidgetItem *item = list->findItems(entry, Qt::MatchExactly).value(0);
    list->setCurrentItem(item);
    list->setFocus();
    if (how == QLatin1String("double")) {
        const QPoint at = list->visualItemRect(item).center();
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, at);
        QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, at);
    } else {
        QTest::keyClick(list, how == QLatin1String("return") ? Qt::Key_Return : Qt::Key_Enter,
                        how == QLatin1String("return") ? Qt::NoModifier : Qt::KeypadModifier);
    }
    QList<QWidget *> opened;
    for (QWidget *w : QApplication::topLevelWidgets())
        if (!before.contains(w) && w->isVisible())
            opened << w;
    QCOMPARE(int(GLOBAL_DEV_CHILD_TYPE), childType);
    QCOMPARE(opened.size(), childType ? 1 : 0);
    QCOMPARE(m_window->isVisible(), !childType);
    if (childType)
        QCOMPARE(QString::fromLatin1(opened.first()->metaObject()->className()),
                 QString::fromLatin1(childType == 0x55 ? "RVX5350" : "RVX3210UI"));
    // The live features hear of the panel, its kind and the unit's type, before it shows.
    QCOMPARE(announced.size(), childType ? 1 : 0);
    if (childType) {
        QCOMPARE(announced.first().at(0).value<QWidget *>(), opened.first());
        QCOMPARE(announced.first().at(2).value<PanelKind>(),
                 childType == 0x55 ? PanelKind::Rvx5350 : PanelKind::Rvx3210);
        QCOMPARE(int(announced.first().at(3).value<uint8_t>()), childType);
    }
    qDeleteAll(opened);
}

void tst_SearchWindow::liveSettingsOnCtrlComma()
{
    QString opened;
    ModalWatch watch([&](QWidget *dialog) {
        opened = QString::fromLatin1(dialog->metaObject()->className());
        dialog->close();
    });
    m_window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_window));
    QTest::keyClick(m_window, Qt::Key_Comma, Qt::ControlModifier);
    QCOMPARE(opened, QStringLiteral("LiveSettingsDialog"));
}

QTEST_MAIN(tst_SearchWindow)
#include "tst_showsearch.moc"
