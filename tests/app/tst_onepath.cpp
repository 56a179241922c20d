// One path from every kind of press to the wire: a click on a panel's key, the OSC remote's
// /kova/key for it and `kovactl send` for the same action go through the unit's UnitControl and
// put the same frames, written out here, on the wire. Each press gets a panel of its own, so a
// toggle or a cycle starts from the same place every time.
#include "RVX3210/rvx3210ui.h"
#include "RVX3220/rvx3220ui.h"
#include "RVX3410/rvx3410ui.h"
#include "RVX5310/rvx5310dialog.h"
#include "RVX5350/rvx5350.h"
#include "RVX5370/rvx5370.h"
#include "SwitcherData/rvx3210_workdata.h"
#include "SwitcherData/rvx3220_workdata.h"
#include "SwitcherData/rvx5all_workdata.h"
#include "SwitcherData/unitcommands.h"
#include "app/panelremote.h"
#include "app/remotekeys.h"
#include "common/panelkeys.h"
#include "live/oscremote.h"
#include "testframes.h"
#include "wirecapture.h"

#include <QAbstractButton>
#include <QtTest>
#include <memory>

#define TO_MAIN "a5ff01000000000000000000"

namespace {

const quint16 OscPort = 9000;

// A panel of `kind`, bound to a unit on 127.0.0.2 (its HIS board on 127.0.0.3), its keys named
// as the remote names them.
struct Opened
{
    std::unique_ptr<QWidget> panel;
    UnitLink *link = nullptr;
};

template <class Panel> Opened bound(Panel *panel)
{
    panel->bindUnit(UnitAddress(QHostAddress(QStringLiteral("127.0.0.2")), 0xA5, 0xFF),
                    UnitAddress(QHostAddress(QStringLiteral("127.0.0.3")), 0xE0, 0xFF));
    return {std::unique_ptr<QWidget>(panel), panel->link()};
}

Opened open(PanelKind kind)
{
    Opened o;
    switch (kind) {
    case PanelKind::Rvx3210:
        o = bound(new RVX3210UI);
        break;
    case PanelKind::Rvx3410:
        o = bound(new RVX3410UI);
        break;
    case PanelKind::Rvx3220:
        o = bound(new RVX3220UI);
        break;
    case PanelKind::Rvx5310:
        o = bound(new RVX5310Dialog);
        break;
    case PanelKind::Rvx5370:
        o = bound(new RVX5370);
        break;
    case PanelKind::Rvx5350:
        o = bound(new RVX5350);
        break;
    case PanelKind::Rvx5120:
        break;
    }
    nameRemoteKeys(kind, o.panel.get());
    return o;
}

// OSC framing by the test's own arithmetic: a string ends in NUL and pads to four bytes.
QByteArray str(const QByteArray &s)
{
    QByteArray b = s + '\0';
    while (b.size() % 4)
        b += '\0';
    return b;
}

void row(PanelKind kind, const char *key, const QStringList &command, const char *frames)
{
    QTest::newRow(qPrintable(
        QStringLiteral("%1 %2").arg(QLatin1String(UnitModels::forPanel(kind).name), QLatin1String(key))))
        << kind << QString::fromLatin1(key) << command << hexList(frames);
}

} // namespace

class TestOnePath : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void keyRemoteAndKovactlAlike_data();
    void keyRemoteAndKovactlAlike();

private:
    // What the press put on the wire of the unit's main board, until it was done.
    QByteArrayList sent(const std::function<void()> &press, int expected);

    OscRemote m_remote;
    WireCapture m_unit{QStringLiteral("127.0.0.2")};
};

void TestOnePath::initTestCase()
{
    QVERIFY(m_unit.isBound());
    QString error;
    QVERIFY2(m_remote.listen(QHostAddress::LocalHost, OscPort, &error), qPrintable(error));
}

QByteArrayList TestOnePath::sent(const std::function<void()> &press, int expected)
{
    // What binding sent (the state request) is not the press's.
    QUdpSocket probe;
    const QByteArray marker("marker");
    probe.writeDatagram(marker, QHostAddress(QStringLiteral("127.0.0.2")), 7000);
    m_unit.until(marker);
    press();
    QByteArrayList got = expected > 0 ? m_unit.take(expected) : QByteArrayList();
    probe.writeDatagram(marker, QHostAddress(QStringLiteral("127.0.0.2")), 7000);
    return got + m_unit.until(marker);
}

void TestOnePath::keyRemoteAndKovactlAlike_data()
{
    QTest::addColumn<PanelKind>("kind");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QStringList>("command");
    QTest::addColumn<QByteArrayList>("frames");
    using P = PanelKind;
    row(P::Rvx3210, "pgm1", {"pgm", "1"}, "a56c1500" TO_MAIN "80014c03ae");
    row(P::Rvx3210, "pgm5", {"pgm", "bar"}, "a56c1500" TO_MAIN "80095403ae");
    row(P::Rvx3210, "pvw2", {"pvw", "2"}, "a56c1500" TO_MAIN "81024e03ae");
    row(P::Rvx3210, "cut", {"cut"}, "a56c1400" TO_MAIN "834d03ae");
    row(P::Rvx3210, "rate2", {"rate", "2"}, "a56c1500" TO_MAIN "b1017d03ae");
    row(P::Rvx3210, "ftb", {"ftb"}, "a56c1400" TO_MAIN "854f03ae");
    row(P::Rvx3210, "f2", {"f2"}, "a56c1400" TO_MAIN "d09a03ae");
    row(P::Rvx3210, "f3", {"f3"}, "a56c1400" TO_MAIN "d49e03ae");
    row(P::Rvx3210, "f7", {"f7"}, "a56c1400" TO_MAIN "d6a003ae");
    row(P::Rvx3210, "ds", {"read-state"}, "a56c1400" TO_MAIN "491303ae");
    row(P::Rvx3210, "afv", {"audio", "afv"}, "a56c1400" TO_MAIN "cc9603ae");
    row(P::Rvx3210, "audio-mix", {"audio", "mix"}, "a56c1400" TO_MAIN "cb9503ae");
    row(P::Rvx3210, "fade", {"transition", "fade"}, "a56c1400" TO_MAIN "8e5803ae");
    row(P::Rvx3210, "wipe-left", {"transition", "wipe-left"},
        "a56c1400" TO_MAIN "8f5903ae"
        " "
        "a56c1500" TO_MAIN "92238003ae");
    row(P::Rvx3210, "pip", {"pip", "on"}, "a56c1500" TO_MAIN "86015203ae");
    row(P::Rvx3210, "still", {"still"}, "a56c1400" TO_MAIN "cd9703ae");
    row(P::Rvx3410, "auto", {"auto"}, "a56c1400" TO_MAIN "844e03ae");
    row(P::Rvx3410, "rec", {"rec", "on"}, "a56c1500" TO_MAIN "b2017e03ae");
    row(P::Rvx3410, "stream", {"stream", "on"}, "a56c1500" TO_MAIN "87015303ae");
    row(P::Rvx3410, "rotate", {"rotate"}, "a56c1400" TO_MAIN "d59f03ae");
    row(P::Rvx3410, "menu", {"menu", "enter", "press"}, "a56c1600" TO_MAIN "d96b011104ae");
    row(P::Rvx3410, "wipe-down", {"transition", "wipe-down"},
        "a56c1400" TO_MAIN "8f5903ae"
        " "
        "a56c1500" TO_MAIN "92298603ae");
    row(P::Rvx3220, "pgm6", {"pgm", "6"}, "a56c1500" TO_MAIN "80065103ae");
    row(P::Rvx3220, "pvw3", {"pvw", "3"}, "a56c1500" TO_MAIN "81034f03ae");
    row(P::Rvx3220, "cut", {"cut"}, "a56c1400" TO_MAIN "834d03ae");
    row(P::Rvx3220, "pip", {"pip", "on"}, "a56c1500" TO_MAIN "86015203ae");
    row(P::Rvx3220, "pop", {"pop", "on"}, "a56c1500" TO_MAIN "a7017303ae");
    row(P::Rvx5310, "pgm-bar", {"pgm", "bar"}, "a56c1500" TO_MAIN "80095403ae");
    row(P::Rvx5310, "pvw4", {"pvw", "4"}, "a56c1500" TO_MAIN "81045003ae");
    row(P::Rvx5310, "auto", {"auto"}, "a56c1400" TO_MAIN "844e03ae");
    row(P::Rvx5310, "stream", {"stream", "on"}, "a56c1500" TO_MAIN "87015303ae");
    row(P::Rvx5310, "pop", {"pop", "on"}, "a56c1500" TO_MAIN "a7017303ae");
    row(P::Rvx5310, "rec", {"rec", "on"}, "a56c1500" TO_MAIN "b2017e03ae");
    row(P::Rvx5310, "pause", {"pause"}, "a56c1400" TO_MAIN "c58f03ae");
    row(P::Rvx5310, "mute", {"f3"}, "a56c1400" TO_MAIN "d49e03ae");
    row(P::Rvx5310, "reset", {"reset"}, "a56c1400" TO_MAIN "0bd502ae");
    row(P::Rvx5310, "rate-3", {"rate", "3"}, "a56c1500" TO_MAIN "a5027203ae");
    row(P::Rvx5310, "ch1", {"ch1-source", "in1"}, "a56c1500" TO_MAIN "b9038703ae");
    row(P::Rvx5310, "wipe", {"transition", "wipe-up"},
        "a56c1400" TO_MAIN "8f5903ae"
        " "
        "a56c1500" TO_MAIN "922a8703ae");
    row(P::Rvx5370, "pgm3", {"pgm", "3"}, "a56c1500" TO_MAIN "80034e03ae");
    row(P::Rvx5370, "bar", {"bar", "on"},
        "a56c1500" TO_MAIN "d701a303ae"
        " "
        "a56c1500" TO_MAIN "d801a403ae");
    row(P::Rvx5370, "ftb", {"ftb"}, "a56c1400" TO_MAIN "854f03ae");
    row(P::Rvx5370, "afv", {"audio", "afv"}, "a56c1400" TO_MAIN "cc9603ae");
    row(P::Rvx5370, "ch2", {"ch2-source", "in1"}, "a56c1500" TO_MAIN "ba038803ae");
    row(P::Rvx5370, "ds", {"read-state"}, "a56c1400" TO_MAIN "491303ae");
    row(P::Rvx5370, "mix", {"transition", "mix"}, "a56c1400" TO_MAIN "8d5703ae");
    row(P::Rvx5350, "pgm2", {"pgm", "2"}, "a56c1500" TO_MAIN "80024d03ae");
    row(P::Rvx5350, "reso", {"format", "1080p50"}, "a56c1500" TO_MAIN "a30b7903ae");
    row(P::Rvx5350, "rate", {"rate", "2"}, "a56c1500" TO_MAIN "a5017103ae");
    row(P::Rvx5350, "ch1", {"ch1-source", "in2"}, "a56c1500" TO_MAIN "b9048803ae");
    row(P::Rvx5350, "still", {"still"}, "a56c1400" TO_MAIN "cd9703ae");
    row(P::Rvx5350, "pip", {"pip", "on"}, "a56c1500" TO_MAIN "86015203ae");
    row(P::Rvx5350, "stream", {"stream", "on"}, "a56c1500" TO_MAIN "87015303ae");
    // The RVX3220's AUTO key only lights: nothing goes out by any path.
    row(P::Rvx3220, "auto", {"auto"}, "");
}

void TestOnePath::keyRemoteAndKovactlAlike()
{
    QFETCH(PanelKind, kind);
    QFETCH(QString, key);
    QFETCH(QStringList, command);
    QFETCH(QByteArrayList, frames);
    const Family family = UnitModels::forPanel(kind).family;
    const int n = frames.size();

    // A click on the key.
    {
        Opened clicked = open(kind);
        QCOMPARE(clicked.link->traits().family, family);
        QAbstractButton *button = PanelKeys::of(clicked.panel.get())->key(key);
        QVERIFY(button);
        QCOMPARE(sent([button] { button->click(); }, n), frames);
    }

    // The remote's /kova/key with the key's name. An unknown address after it is answered
    // once the key's press has gone out.
    {
        Opened remoted = open(kind);
        PanelRemote target(remoted.panel.get(), remoted.link, QLatin1String(UnitModels::forPanel(kind).name));
        m_remote.setTarget(&target);
        QUdpSocket osc;
        const QByteArray message = str("/kova/key") + str(",s") + str(key.toLatin1());
        const QByteArrayList got = sent(
            [&] {
                osc.writeDatagram(message, QHostAddress::LocalHost, OscPort);
                osc.writeDatagram(str("/kova/done") + str(","), QHostAddress::LocalHost, OscPort);
                QTRY_VERIFY(osc.hasPendingDatagrams());
            },
            n);
        m_remote.setTarget(nullptr);
        QCOMPARE(got, frames);
    }

    // kovactl's command for the unit's family, on a panel's own link.
    {
        Opened commanded = open(kind);
        const CommandCall call = CommandCall::check(command.first(), command.mid(1), family);
        QCOMPARE(call.verdict() == CommandCall::Verdict::Ok, n > 0);
        QCOMPARE(sent([&] { call.run(*commanded.link); }, n), frames);
    }
}

QTEST_MAIN(TestOnePath)
#include "tst_onepath.moc"
