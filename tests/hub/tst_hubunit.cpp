// One unit as kova-hub holds it, here an RVX3220, which reports nothing: OSC keys become
// kovactl's commands, and the lamps, the tally's buses and the published state are what the
// hub last sent. The unit is a socket on 127.0.0.2:7000; frames are written out in full.
#include "SwitcherData/workdata.h"
#include "hub/hubunit.h"
#include "wirecapture.h"

#include <QJsonDocument>
#include <QSignalSpy>
#include <QtTest>
#include <cstring>

namespace {

QByteArray hex(const char *h)
{
    return QByteArray::fromHex(h);
}

DevInfo_DATA record3220()
{
    DevInfo_DATA rec{};
    rec.ip = 0x7f000002;
    rec.devClass = 0xa5;
    rec.devNum = 0xff;
    std::memcpy(rec.name, "Truck", 5);
    rec.childType = 0x22;
    return rec;
}

} // namespace

class tst_HubUnit : public QObject
{
    Q_OBJECT
private slots:
    void keysOfTheFamilyOnly();
    void keysSendKovactlsFramesAndLightFromWhatWasSent();
};

void tst_HubUnit::keysOfTheFamilyOnly()
{
    HubUnit unit(record3220(), 1);
    QCOMPARE(unit.id(), QStringLiteral("127-0-0-2"));
    QCOMPARE(unit.modelName(), QStringLiteral("RVX3220"));
    QCOMPARE(unit.name(), QStringLiteral("Truck"));
    QCOMPARE(unit.inputCount(), 6);
    const QStringList keys = unit.keyNames();
    for (const char *k : {"cut", "pip", "pop", "mix", "fade", "wipe", "pgm1", "pgm6", "pvw6"})
        QVERIFY2(keys.contains(QLatin1String(k)), k);
    // The RVX3220's panel has no FTB or STILL, its AUTO is the panel's own T-bar run, and it
    // has six inputs without the bars.
    for (const char *k : {"auto", "ftb", "still", "pgm7", "rec", "stream"})
        QVERIFY2(!keys.contains(QLatin1String(k)), k);
    QVERIFY(!unit.requestState());
    QVERIFY(!unit.follow());
}

void tst_HubUnit::keysSendKovactlsFramesAndLightFromWhatWasSent()
{
    WireCapture wire;
    QVERIFY(wire.isBound());
    qRegisterMetaType<OscFields>("OscFields");
    HubUnit unit(record3220(), 1);
    QSignalSpy changed(&unit, &HubUnit::stateChanged);
    QUdpSocket markers;
    const QByteArray marker("marker");

    const struct
    {
        const char *what;
        std::function<bool()> act;
        bool accepted;
        const char *frame; // hex, empty: nothing sent
        const char *lamp;
        std::optional<bool> lit;
    } steps[] = {
        {"pip unknown: on", [&] { return unit.pressKey("pip"); }, true,
         "a56c1500a5ff0100000000000000000086015203ae", "pip", true},
        {"pip lit: off", [&] { return unit.pressKey("pip"); }, true,
         "a56c1500a5ff0100000000000000000086005103ae", "pip", false},
        {"pop", [&] { return unit.pressKey("pop"); }, true, "a56c1500a5ff01000000000000000000a7017303ae",
         "pop", true},
        {"pgm6", [&] { return unit.pressKey("pgm6"); }, true, "a56c1500a5ff0100000000000000000080065103ae",
         "pgm6", true},
        {"pvw1", [&] { return unit.pressKey("pvw1"); }, true, "a56c1500a5ff0100000000000000000081014d03ae",
         "pgm6", true},
        {"mix", [&] { return unit.pressKey("mix"); }, true, "a56c1400a5ff010000000000000000008e5803ae", "mix",
         true},
        {"fader at the bottom", [&] { return unit.setFader(1.0); }, true,
         "a56c1600a5ff0100000000000000000082007dcb03ae", "pgm6", true},
        {"fader at the top", [&] { return unit.setFader(0.0); }, true,
         "a56c1600a5ff010000000000000000008200004e03ae", "pgm6", true},
        {"fader out of travel", [&] { return unit.setFader(1.5); }, false, "", "pgm6", true},
        {"ftb: no such key", [&] { return unit.pressKey("ftb"); }, false, "", "ftb", std::nullopt},
        {"pgm7: no such input", [&] { return unit.pressKey("pgm7"); }, false, "", "pgm6", true},
        {"bars refused", [&] { return unit.run("pgm bar").contains("(1-6)"); }, true, "", "pgm6", true},
        {"a command line", [&] { return unit.run("pgm 2").isEmpty(); }, true,
         "a56c1500a5ff0100000000000000000080024d03ae", "pgm2", true},
    };
    for (const auto &s : steps) {
        QVERIFY2(s.act() == s.accepted, s.what);
        markers.writeDatagram(marker, QHostAddress(QStringLiteral("127.0.0.2")), 7000);
        const QList<QByteArray> sent = wire.until(marker);
        QVERIFY2(sent == (*s.frame ? QList<QByteArray>{hex(s.frame)} : QList<QByteArray>{}),
                 qPrintable(QString::fromLatin1(s.what) + ": " + QString::fromLatin1(sent.value(0).toHex())));
        QVERIFY2(unit.keyLit(QLatin1String(s.lamp)) == s.lit, s.what);
    }
    // What was sent is the unit's state on every remote.
    QCOMPARE(QJsonDocument(unit.stateObject()).toJson(QJsonDocument::Compact),
             QByteArray(R"({"pgm":2,"pip":false,"pop":true,"pvw":1,"transition":"mix"})"));
    QCOMPARE(unit.programme(), 2);
    QCOMPARE(unit.preview(), 1);
    QVERIFY(changed.size() >= 6);
    QCOMPARE(changed.last().at(0).value<OscFields>(), OscFields({{QStringLiteral("pgm"), 2}}));
}

QTEST_GUILESS_MAIN(tst_HubUnit)
#include "tst_hubunit.moc"
