// A state record decoded into named fields, for each family's layout: the bytes are written out
// as the units send them, the fields as the panels and kovactl read them.
#include "SwitcherData/unitstate.h"
#include "testframes.h"

#include <QtTest>

Q_DECLARE_METATYPE(StateLayout)

namespace {

// An RVX3210 at PGM 1, PVW 2, AFV, CH1 IN1 at 50, CH2 IN2 at 50, MIX, PIP border width 2, at
// 1440/540 (05a0, 021c), 1080P60, the logged bytes 22, 23 and 25 at 0x16, 0x17, 0x19, F3 on.
const char *const Full3210 = "01020003320432010000000000020005a0021c00000716 17ff19";
// An 8000-series unit: MIX, FADE, wipe D, PIP on with border on, blue, width 5, size M at
// 512/256, still, rate 2, 1080P50, bytes 22-23 at 0x16 0x17, muted.
const char *const Full8000 = "0304010364083202060001010205010200010001020b161701";

// "name=value" for every field the state holds, in field order.
QString fields(const UnitState &s)
{
    QStringList out;
    for (int f = 0; f < UnitState::FieldCount; ++f) {
        const auto field = UnitState::Field(f);
        if (s.has(field))
            out << QString::fromLatin1(UnitState::fieldName(field)) + '=' +
                       (field == UnitState::Serial ? QString::fromLatin1(s.serial().toHex())
                                                   : QString::number(s.value(field)));
    }
    return out.join(' ');
}

QStringList names(UnitState::FieldSet set)
{
    QStringList out;
    for (int f = 0; f < UnitState::FieldCount; ++f)
        if (set.test(size_t(f)))
            out << QString::fromLatin1(UnitState::fieldName(UnitState::Field(f)));
    return out;
}

} // namespace

class TestUnitState : public QObject
{
    Q_OBJECT
private slots:
    void decode_data();
    void decode();
    void familyReadings_data();
    void familyReadings();
    void changedFrom_data();
    void changedFrom();
};

void TestUnitState::decode_data()
{
    QTest::addColumn<StateLayout>("layout");
    QTest::addColumn<QByteArray>("record");
    QTest::addColumn<QByteArray>("serial");
    QTest::addColumn<QString>("expected");
    const QString all3210 = "pgm=1 pvw=2 audio=0 ch1-source=3 ch1-level=50 ch2-source=4 ch2-level=50 "
                            "transition=1 wipe=0 ftb=0 pip=0 pip-border=0 pip-border-color=0 "
                            "pip-border-width=2 pip-size=0 pip-h=1440 pip-v=540 still=0 rate=0 format=7 "
                            "rtd-source=22 uvc-value=23 mute=255 rotate-code=25";
    const QString all8000 = "pgm=3 pvw=4 audio=1 ch1-source=3 ch1-level=100 ch2-source=8 ch2-level=50 "
                            "transition=2 wipe=6 ftb=0 pip=1 pip-border=1 pip-border-color=2 "
                            "pip-border-width=5 pip-size=1 pip-h=512 pip-v=256 still=1 rate=2 format=11 "
                            "mute=1";
    const auto row = [](const char *name, StateLayout layout, const QByteArray &record,
                        const QString &expected, const QByteArray &serial = {}) {
        QTest::newRow(name) << layout << record << serial << expected;
    };
    row("rvx3210", StateLayout::Rvx3210, hex(Full3210), all3210);
    // The long form's serial piece and the RVX3410's bytes mean nothing to an RVX3210.
    row("rvx3210 ignores what follows", StateLayout::Rvx3210, hex(Full3210) + hex("ffffff"), all3210, "SN");
    // Recording in bits 3-4 of byte 26, streaming bit 2 of 27, rotation bits 6-7 of 28.
    row("rvx3410 bits set among others", StateLayout::Rvx3410, hex(Full3210) + hex("e70b7f"),
        all3210 + " rec=0 stream=0 rotate=1");
    row("rvx3410 bits clear among others", StateLayout::Rvx3410, hex(Full3210) + hex("18fbc0"),
        all3210 + " rec=3 stream=0 rotate=3");
    row("rvx3410 without byte 28", StateLayout::Rvx3410, hex(Full3210) + hex("1004"),
        all3210 + " rec=2 stream=1");
    // Bytes 22 and 23 are not the 8000 series' fields; nothing follows the mute byte.
    row("8000 series", StateLayout::Series8000, hex(Full8000) + hex("19"), all8000 + " serial=534e2d31",
        "SN-1");
    row("rvx5350", StateLayout::Rvx5350, hex(Full8000), all8000);
    row("serial alone", StateLayout::Rvx5350, {}, "serial=00", hex("00"));
    // A record that stops short carries the fields it holds whole: here the size, not the
    // position whose low byte is missing.
    row("short: 16 bytes", StateLayout::Rvx3210, hex(Full3210).left(16),
        "pgm=1 pvw=2 audio=0 ch1-source=3 ch1-level=50 ch2-source=4 ch2-level=50 transition=1 wipe=0 ftb=0 "
        "pip=0 pip-border=0 pip-border-color=0 pip-border-width=2 pip-size=0");
    row("short: 18 bytes", StateLayout::Series8000, hex(Full8000).left(18), all8000.section(' ', 0, 15));
    row("empty", StateLayout::Rvx3410, {}, "");
    row("no layout", StateLayout::None, hex(Full3210), "", "SN");
}

void TestUnitState::decode()
{
    QFETCH(StateLayout, layout);
    QFETCH(QByteArray, record);
    QFETCH(QByteArray, serial);
    const UnitState s = UnitState::decode(layout, record, serial);
    QTEST(fields(s), "expected");
    QCOMPARE(s.layout(), layout);
    // A family never reports a field its layout does not hold.
    QVERIFY((s.fields() & ~UnitState::reportedBy(layout)).none());
}

void TestUnitState::familyReadings_data()
{
    QTest::addColumn<StateLayout>("layout");
    QTest::addColumn<QByteArray>("record");   // bytes 3-8 and 21: sources, wipe and format
    QTest::addColumn<QList<int>>("expected"); // wipe type, CH1 and CH2 list positions, format
    const auto row = [](const char *name, StateLayout layout, const char *bytes, QList<int> expected) {
        QTest::newRow(name) << layout << hex("010200") + hex(bytes) << expected;
    };
    // Wipes 0 L, 2 U, 4 R, 6 D on the 8000 series and the RVX3210 family; 0 L, 1 R, 2 D, 3 U
    // on the RVX5350. Types: 3 up, 4 down, 5 left, 6 right.
    row("8000 down", StateLayout::Series8000, "070008320406 000000000000000000000000 0b", {4, 0, 5, 1});
    row("8000 1 is no wipe", StateLayout::Series8000, "030000000401 000000000000000000000000 02",
        {0, 1, 6, -1});
    row("3210 right", StateLayout::Rvx3210, "000003000404 000000000000000000000000 05", {6, 6, 1, 6});
    row("5350 up", StateLayout::Rvx5350, "030008000403 000000000000000000000000 0d", {3, 0, 2, 5});
    row("5350 6 is no wipe, AUX not listed", StateLayout::Rvx5350, "070000000406", {0, -1, 3, -1});
    row("record stops before them", StateLayout::Series8000, "", {0, -1, -1, -1});
}

void TestUnitState::familyReadings()
{
    QFETCH(StateLayout, layout);
    QFETCH(QByteArray, record);
    const UnitState s = UnitState::decode(layout, record);
    QTEST((QList<int>{s.wipeType(), s.ch1SourceIndex(), s.ch2SourceIndex(), s.formatIndex()}), "expected");
}

void TestUnitState::changedFrom_data()
{
    QTest::addColumn<StateLayout>("before");
    QTest::addColumn<QByteArray>("from");
    QTest::addColumn<StateLayout>("after");
    QTest::addColumn<QByteArray>("to");
    QTest::addColumn<QStringList>("changed");
    const QByteArray r3410 = hex(Full3210) + hex("100440");
    const auto row = [](const char *name, StateLayout layout, const QByteArray &from, const QByteArray &to,
                        QStringList changed) {
        QTest::newRow(name) << layout << from << layout << to << changed;
    };
    auto with = [](QByteArray r, int at, int v) {
        r[at] = char(v);
        return r;
    };
    row("same", StateLayout::Rvx3410, r3410, r3410, {});
    row("pgm and pvw", StateLayout::Rvx3410, r3410, with(with(r3410, 0, 4), 1, 3), {"pgm", "pvw"});
    row("low byte of pip-v", StateLayout::Rvx3410, r3410, with(r3410, 18, 0x1d), {"pip-v"});
    // Bits no field holds change nothing; bits 3-4 of byte 26 are the recording state.
    row("bits outside the fields", StateLayout::Rvx3410, r3410, with(with(r3410, 26, 0x17), 28, 0x7f), {});
    row("recording", StateLayout::Rvx3410, r3410, with(r3410, 26, 0x08), {"rec"});
    row("record stops short", StateLayout::Rvx3410, r3410, r3410.left(25),
        {"rotate-code", "rec", "stream", "rotate"});
    row("byte 22 of the 8000 series", StateLayout::Series8000, hex(Full8000), with(hex(Full8000), 22, 0), {});
    // The same number means something else in another family's record.
    QTest::newRow("same bytes, another layout")
        << StateLayout::Series8000 << hex(Full8000).left(3) << StateLayout::Rvx5350 << hex(Full8000).left(3)
        << QStringList{"pgm", "pvw", "audio", "serial"};
}

void TestUnitState::changedFrom()
{
    QFETCH(StateLayout, before);
    QFETCH(QByteArray, from);
    QFETCH(StateLayout, after);
    QFETCH(QByteArray, to);
    QFETCH(QStringList, changed);
    const UnitState was = UnitState::decode(before, from, "SN-1");
    const UnitState now = UnitState::decode(after, to, "SN-1");
    QCOMPARE(names(now.changedFrom(was)), changed);
    QCOMPARE(now == was, changed.isEmpty());
    // The serial piece counts as a field where the family sends one.
    const UnitState otherSerial = UnitState::decode(after, to, "SN-2");
    QCOMPARE(names(otherSerial.changedFrom(now)),
             UnitState::reportedBy(after).test(UnitState::Serial) ? QStringList{"serial"} : QStringList());
}

QTEST_GUILESS_MAIN(TestUnitState)
#include "tst_unitstate.moc"
