// The RVX5120 panel offscreen: its keys start dark and each style setter lights its own key;
// the panel, opened alone or from the search window's RVX5120 key, puts nothing on the wire.
#include "RVX5120/rvx5120.h"
#include "SwitcherData/rvx5all_workdata.h"
#include "app/groupbox_right.h"
#include "app/showsearch.h"

#include <QFile>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QtTest>

namespace {

// Datagrams this network namespace has sent so far (the kernel's UDP count). Every test runs in
// its own namespace, so only this process adds to it.
qint64 udpDatagramsOut()
{
    QFile snmp(QStringLiteral("/proc/net/snmp"));
    if (!snmp.open(QIODevice::ReadOnly))
        return -1;
    const QList<QByteArray> lines = snmp.readAll().split('\n');
    for (int i = 0; i + 1 < lines.size(); ++i) {
        if (!lines[i].startsWith("Udp:") || !lines[i + 1].startsWith("Udp:"))
            continue;
        const QList<QByteArray> names = lines[i].simplified().split(' ');
        const QList<QByteArray> values = lines[i + 1].simplified().split(' ');
        const int at = names.indexOf("OutDatagrams");
        return at > 0 && at < values.size() ? values[at].toLongLong() : -1;
    }
    return -1;
}

using StyleSetter = void (RVX5120::*)(bool);

const QString Dark = QStringLiteral("stop: 0 #dadbde");
const QString Red = QStringLiteral("stop: 0 #D22E00");

} // namespace

Q_DECLARE_METATYPE(StyleSetter)

class TestRvx5120 : public QObject
{
    Q_OBJECT
private slots:
    void opensDarkAndSilent();
    void setterLightsItsKey_data();
    void setterLightsItsKey();
    void searchKeyOpensPanel();
};

void TestRvx5120::opensDarkAndSilent()
{
    const qint64 before = udpDatagramsOut();
    QVERIFY(before >= 0);
    RVX5120 panel;
    QSignalSpy frames(panel.link(), &RVX5ALL_workdata::showCurrentData);
    panel.show();
    QVERIFY(QTest::qWaitForWindowExposed(&panel));
    QCoreApplication::processEvents();

    const QList<QPushButton *> keys = panel.findChildren<QPushButton *>(QRegularExpression("^btn_"));
    QCOMPARE(keys.size(), 13);
    for (QPushButton *key : keys) {
        QVERIFY2(key->styleSheet().contains(Dark), qPrintable(key->objectName()));
        QVERIFY2(!key->styleSheet().contains(Red), qPrintable(key->objectName()));
    }
    // A link of its own, told of no unit.
    QVERIFY(panel.link()->parent() == &panel);
    QVERIFY(panel.link()->on_DevIP().isEmpty());
    // No frame built, and none left the namespace from any socket.
    QCOMPARE(frames.count(), 0);
    QCOMPARE(udpDatagramsOut(), before);
}

void TestRvx5120::setterLightsItsKey_data()
{
    QTest::addColumn<StyleSetter>("setter");
    QTest::addColumn<QString>("key");
    using P = RVX5120;
    QTest::newRow("afv") << &P::on_Style_btnAfv << "btn_afv";
    QTest::newRow("mute") << &P::on_Style_btnMute << "btn_mute";
    QTest::newRow("ch1") << &P::on_Style_btnCH1 << "btn_ch1";
    QTest::newRow("ch2") << &P::on_Style_btnCH2 << "btn_ch2";
    QTest::newRow("mix") << &P::on_Style_btnMix << "btn_mix";
    QTest::newRow("fade") << &P::on_Style_btnFADE << "btn_fade";
    QTest::newRow("wipe") << &P::on_Style_btnWipe << "btn_wipe";
    QTest::newRow("pip") << &P::on_Style_btnPip << "btn_pip";
    QTest::newRow("pop") << &P::on_Style_btnPop << "btn_pop";
    QTest::newRow("still") << &P::on_Style_btnStill << "btn_still";
    QTest::newRow("rate") << &P::on_Style_btnRate << "btn_rate1";
    QTest::newRow("reso") << &P::on_Style_btnReso << "btn_reso";
    QTest::newRow("reset") << &P::on_Style_btnReset << "btn_reset";
}

void TestRvx5120::setterLightsItsKey()
{
    QFETCH(StyleSetter, setter);
    QFETCH(QString, key);
    RVX5120 panel;
    (panel.*setter)(true);
    for (QPushButton *other : panel.findChildren<QPushButton *>(QRegularExpression("^btn_"))) {
        const bool lit = other->styleSheet().contains(Red);
        QVERIFY2(lit == (other->objectName() == key), qPrintable(other->objectName()));
    }
    (panel.*setter)(false);
    QVERIFY(panel.findChild<QPushButton *>(key)->styleSheet().contains(Dark));
}

void TestRvx5120::searchKeyOpensPanel()
{
    showsearch window;
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    const qint64 before = udpDatagramsOut();
    window.groupBox()->radio(4)->click();

    QTRY_VERIFY(!window.isVisible());
    RVX5120 *panel = nullptr;
    for (QWidget *w : QApplication::topLevelWidgets())
        if (auto *p = qobject_cast<RVX5120 *>(w))
            panel = p;
    QVERIFY(panel);
    QVERIFY(panel->isVisible());
    QVERIFY(panel->windowFlags() & Qt::FramelessWindowHint);
    QVERIFY(!panel->windowIcon().isNull());
    QCoreApplication::processEvents();
    QCOMPARE(udpDatagramsOut(), before);
    delete panel;
}

QTEST_MAIN(TestRvx5120)
#include "tst_rvx5120.moc"
