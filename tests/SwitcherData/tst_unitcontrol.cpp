// The operator's actions through the one interface every family's link offers, and the model
// table behind them: each action reaches the wire as the family's panel sends it, and what a
// family lacks, or a value outside its panel's range, sends nothing.
#include "SwitcherData/unitlink.h"
#include "SwitcherData/unitlinks.h"
#include "SwitcherData/unitmodel.h"
#include "testframes.h"
#include "wirecapture.h"

#include <QtTest>
#include <functional>
#include <memory>

#define TO_MAIN "a5ff01000000000000000000"
#define TO_HIS "e0ff01000000000000000000"

using Press = std::function<bool(UnitControl &)>;
Q_DECLARE_METATYPE(Press)
Q_DECLARE_METATYPE(Family)

class TestUnitControl : public QObject
{
    Q_OBJECT
private slots:
    void actionOnTheWire_data();
    void actionOnTheWire();
    void modelTable_data();
    void modelTable();
};

void TestUnitControl::actionOnTheWire_data()
{
    QTest::addColumn<Family>("family");
    QTest::addColumn<Press>("press");
    QTest::addColumn<QByteArray>("frames"); // empty: refused, nothing sent
    using U = UnitControl;
    auto row = [](const char *name, Family f, const char *frames, Press press) {
        QTest::newRow(name) << f << press << QByteArray(frames);
    };
    const Family F3210 = Family::Rvx3210, F3410 = Family::Rvx3410, F3220 = Family::Rvx3220,
                 F8000 = Family::Series8000, F5350 = Family::Rvx5350;

    row("3210 programme", F3210, "a56c1500" TO_MAIN "80024d03ae", [](U &u) { return u.programme(2); });
    row("3210 bars to preview", F3210, "a56c1500" TO_MAIN "81095503ae", [](U &u) { return u.preview(9); });
    row("3210 input 5", F3210, "", [](U &u) { return u.programme(5); });
    row("3210 rate key 3", F3210, "a56c1500" TO_MAIN "b1027e03ae", [](U &u) { return u.rate(3); });
    row("3210 rate key 4", F3210, "", [](U &u) { return u.rate(4); });
    row("3210 format by index", F3210, "a56c1500" TO_MAIN "a3067403ae", [](U &u) { return u.format(6); });
    row("3210 level", F3210, "a56c1500" TO_MAIN "ce32cb03ae", [](U &u) { return u.level(1, 50); });
    row("3210 t-bar end", F3210, "a56c1600" TO_MAIN "820180cf03ae", [](U &u) { return u.fader(1, 128); });
    row("3210 has no pop", F3210, "", [](U &u) { return u.pop(true); });
    row("3210 has no recording", F3210, "", [](U &u) { return u.rec(true); });
    row("3410 menu", F3410, "a56c1600" TO_MAIN "d96b011104ae",
        [](U &u) { return u.menu(U::MenuKey::Enter, true); });
    row("3410 stream", F3410, "a56c1500" TO_MAIN "87015303ae", [](U &u) { return u.stream(true); });
    row("his dns to the his board", F3410, "a56c1c00" TO_HIS "230808040402503b8c6104ae",
        [](U &u) { return u.hisDns("8.8.4.4"); });
    row("his dns not an address", F3410, "", [](U &u) { return u.hisDns("8.8.4"); });

    row("3220 six inputs", F3220, "a56c1500" TO_MAIN "81065203ae", [](U &u) { return u.preview(6); });
    row("3220 no bars", F3220, "", [](U &u) { return u.programme(9); });
    row("3220 lever stops at 126", F3220, "a56c1600" TO_MAIN "82007ecc03ae",
        [](U &u) { return u.fader(0, 126); });
    row("3220 lever 127", F3220, "", [](U &u) { return u.fader(0, 127); });
    row("3220 format by code", F3220, "a56c1500" TO_MAIN "a30d7b03ae", [](U &u) { return u.format(5); });
    row("3220 level with source", F3220, "a56c1600" TO_MAIN "b8033cc303ae",
        [](U &u) { return u.level(2, 60, 2); });
    row("3220 level needs a source", F3220, "", [](U &u) { return u.level(2, 60); });
    row("3220 source in6", F3220, "a56c1500" TO_MAIN "b9088c03ae", [](U &u) { return u.source(1, 7); });
    row("3220 pop window", F3220, "a56c1500" TO_MAIN "a8027503ae", [](U &u) { return u.popWindow(2); });
    row("3220 has no auto", F3220, "", [](U &u) { return u.autoTransition(); });
    row("3220 has no state", F3220, "", [](U &u) { return u.readState(); });

    row("8000 read state", F8000, "a56c1400" TO_MAIN "491303ae", [](U &u) { return u.readState(); });
    row("8000 rate code", F8000, "a56c1500" TO_MAIN "a5027203ae", [](U &u) { return u.rate(3); });
    row("8000 wipe up", F8000, "a56c1400" TO_MAIN "8f5903ae a56c1500" TO_MAIN "922a8703ae",
        [](U &u) { return u.transition(U::Effect::WipeUp); });
    row("8000 bars to both buses", F8000, "a56c1500" TO_MAIN "d701a303ae a56c1500" TO_MAIN "d801a403ae",
        [](U &u) { return u.bar(true); });
    row("8000 mute", F8000, "a56c1400" TO_MAIN "d49e03ae", [](U &u) { return u.mute(); });
    row("8000 pip at the right edge", F8000, "a56c1600" TO_MAIN "a0a0051104ae",
        [](U &u) { return u.pipPosition(true, 1440); });
    row("8000 pip past it", F8000, "", [](U &u) { return u.pipPosition(true, 1441); });
    row("8000 has no level", F8000, "", [](U &u) { return u.level(1, 50); });
    row("5350 two inputs", F5350, "a56c1500" TO_MAIN "80024d03ae", [](U &u) { return u.programme(2); });
    row("5350 input 3", F5350, "", [](U &u) { return u.programme(3); });
    row("5350 its own sources", F5350, "a56c1500" TO_MAIN "ba088d03ae", [](U &u) { return u.source(2, 2); });
    row("5350 four sources", F5350, "", [](U &u) { return u.source(2, 4); });
    row("5350 reset", F5350, "a56c1400" TO_MAIN "0bd502ae", [](U &u) { return u.reset(); });
    row("5350 has no pause", F5350, "", [](U &u) { return u.pause(); });
}

void TestUnitControl::actionOnTheWire()
{
    QFETCH(Family, family);
    QFETCH(Press, press);
    QFETCH(QByteArray, frames);
    WireCapture main(QStringLiteral("127.0.0.2"));
    WireCapture his(QStringLiteral("127.0.0.3"));
    const std::unique_ptr<UnitLink> link(createUnitLink(family));
    QVERIFY(main.isBound() && his.isBound() && link->isBound());
    QCOMPARE(link->traits().family, family);
    link->bindBoards(UnitAddress(QHostAddress(QStringLiteral("127.0.0.2")), 0xA5, 0xFF),
                     UnitAddress(QHostAddress(QStringLiteral("127.0.0.3")), 0xE0, 0xFF));

    QCOMPARE(press(*link), !frames.isEmpty());
    // A marker to both boards bounds what the press sent.
    QUdpSocket probe;
    const QByteArray marker("marker");
    probe.writeDatagram(marker, QHostAddress(QStringLiteral("127.0.0.2")), 7000);
    probe.writeDatagram(marker, QHostAddress(QStringLiteral("127.0.0.3")), 7000);
    const QByteArrayList expected = hexList(frames);
    const bool toHis = !expected.isEmpty() && uint8_t(expected[0].at(4)) == 0xE0;
    const QByteArrayList atMain = main.until(marker);
    const QByteArrayList atHis = his.until(marker);
    QCOMPARE(toHis ? atHis : atMain, expected);
    QVERIFY((toHis ? atMain : atHis).isEmpty());
}

void TestUnitControl::modelTable_data()
{
    QTest::addColumn<int>("childType");
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("panel");
    QTest::addColumn<Family>("family");
    QTest::addColumn<QString>("label");
    QTest::addColumn<int>("filter"); // the filter besides "all" that lists it, 0 for none
    auto row = [](int type, const char *name, PanelKind panel, Family family, const char *label,
                  ModelFilter filter) {
        QTest::newRow(qPrintable(QStringLiteral("0x%1").arg(type, 2, 16, QLatin1Char('0'))))
            << type << QString(name) << int(panel) << family << QString(label) << int(filter);
    };
    using P = PanelKind;
    using F = Family;
    using M = ModelFilter;
    row(0x21, "RVX3210", P::Rvx3210, F::Rvx3210, "RVX3210: ", M::Rvx3210);
    row(0x23, "RVX3210", P::Rvx3210, F::Rvx3210, "", M::All);
    row(0x24, "RVX3210S", P::Rvx3210, F::Rvx3210, "RVX3210S: ", M::Rvx3210);
    row(0x25, "RVX3210(2021)", P::Rvx3210, F::Rvx3210, "RVX3210(2021): ", M::Rvx3210);
    row(0x26, "RVX3210P", P::Rvx3210, F::Rvx3210, "RVX3210P: ", M::Rvx3210);
    row(0x47, "RVX3210", P::Rvx3210, F::Rvx3210, "", M::All);
    row(0x22, "RVX3220", P::Rvx3220, F::Rvx3220, "RVX3220: ", M::Rvx3220);
    row(0x28, "RVX3410", P::Rvx3410, F::Rvx3410, "", M::All);
    row(0x4f, "RVX5310", P::Rvx5310, F::Series8000, "", M::All);
    row(0x56, "RVX5370", P::Rvx5370, F::Series8000, "", M::All);
    row(0x55, "RVX5350", P::Rvx5350, F::Rvx5350, "", M::All);
    row(0x99, "unknown (0x99)", P::Rvx3210, F::Rvx3210, "", M::All);
}

void TestUnitControl::modelTable()
{
    QFETCH(int, childType);
    QFETCH(int, filter);
    const uint8_t type = uint8_t(childType);
    const UnitModel &model = UnitModels::forChildType(type);
    QTEST(UnitModels::modelName(type), "name");
    QTEST(int(model.panel), "panel");
    QTEST(model.family, "family");
    QTEST(UnitModels::filterLabel(type), "label");
    for (ModelFilter f : {ModelFilter::Rvx3210, ModelFilter::Rvx3220, ModelFilter::Rvx5370})
        QCOMPARE(UnitModels::admits(f, type), int(f) == filter);
    QVERIFY(UnitModels::admits(ModelFilter::All, type));
}

QTEST_GUILESS_MAIN(TestUnitControl)
#include "tst_unitcontrol.moc"
