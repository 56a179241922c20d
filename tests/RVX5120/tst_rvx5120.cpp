// The RVX5120 panel offscreen: opened from the search window's RVX5120 key its keys start dark,
// with a link of its own told of no unit; each style setter lights its own key and only that one.
// That it sends nothing is checked end to end in the lab.
#include "RVX5120/rvx5120.h"
#include "SwitcherData/rvx5all_workdata.h"
#include "app/groupbox_right.h"
#include "app/showsearch.h"

#include <QPushButton>
#include <QRadioButton>
#include <QtTest>

namespace {

using StyleSetter = void (RVX5120::*)(bool);
const QString Dark = QStringLiteral("stop: 0 #dadbde");
const QString Red = QStringLiteral("stop: 0 #D22E00");

} // namespace

Q_DECLARE_METATYPE(StyleSetter)

class TestRvx5120 : public QObject
{
    Q_OBJECT
private slots:
    void searchKeyOpensDarkPanel();
    void setterLightsItsKey_data();
    void setterLightsItsKey();
};

void TestRvx5120::searchKeyOpensDarkPanel()
{
    showsearch window;
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    window.groupBox()->radio(4)->click();
    QTRY_VERIFY(!window.isVisible());
    RVX5120 *panel = nullptr;
    for (QWidget *w : QApplication::topLevelWidgets())
        if (auto *p = qobject_cast<RVX5120 *>(w))
            panel = p;
    QVERIFY(panel && panel->isVisible());
    QVERIFY(QTest::qWaitForWindowExposed(panel));
    QCoreApplication::processEvents();

    const QList<QPushButton *> keys = panel->findChildren<QPushButton *>(QRegularExpression("^btn_"));
    QCOMPARE(keys.size(), 13);
    for (QPushButton *key : keys)
        QVERIFY2(key->styleSheet().contains(Dark) && !key->styleSheet().contains(Red),
                 qPrintable(key->objectName()));
    QVERIFY(panel->link()->parent() == panel);
    QVERIFY(panel->link()->on_DevIP().isEmpty());
    delete panel;
}

void TestRvx5120::setterLightsItsKey_data()
{
    QTest::addColumn<StyleSetter>("setter");
    QTest::addColumn<QString>("key");
    using P = RVX5120;
    const QList<QPair<StyleSetter, const char *>> rows{
        {&P::on_Style_btnAfv, "btn_afv"},    {&P::on_Style_btnMute, "btn_mute"},
        {&P::on_Style_btnCH1, "btn_ch1"},    {&P::on_Style_btnCH2, "btn_ch2"},
        {&P::on_Style_btnMix, "btn_mix"},    {&P::on_Style_btnFADE, "btn_fade"},
        {&P::on_Style_btnWipe, "btn_wipe"},  {&P::on_Style_btnPip, "btn_pip"},
        {&P::on_Style_btnPop, "btn_pop"},    {&P::on_Style_btnStill, "btn_still"},
        {&P::on_Style_btnRate, "btn_rate1"}, {&P::on_Style_btnReso, "btn_reso"},
        {&P::on_Style_btnReset, "btn_reset"}};
    for (const auto &[setter, key] : rows)
        QTest::newRow(key) << setter << QString(key);
}

void TestRvx5120::setterLightsItsKey()
{
    QFETCH(StyleSetter, setter);
    QFETCH(QString, key);
    RVX5120 panel;
    (panel.*setter)(true);
    for (QPushButton *other : panel.findChildren<QPushButton *>(QRegularExpression("^btn_")))
        QVERIFY2(other->styleSheet().contains(Red) == (other->objectName() == key),
                 qPrintable(other->objectName()));
    (panel.*setter)(false);
    QVERIFY(panel.findChild<QPushButton *>(key)->styleSheet().contains(Dark));
}

QTEST_MAIN(TestRvx5120)
#include "tst_rvx5120.moc"
