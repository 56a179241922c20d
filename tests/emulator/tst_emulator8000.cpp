// The emulated 8000-series units seen from a panel's socket: what they answer to the state
// read after the commands of the series, byte for byte. Units as listed in CMakeLists.txt:
// 10.77.1.1 an RVX5370 with serial 12 00 a0 b0 c0 d0 e0 f1, 10.77.1.2 an RVX5350 that answers
// in the short form, 10.77.1.3 an RVX5310 that answers in the long form.
#include "labstate.h"
#include "testframes.h"

#include <QHostAddress>
#include <QNetworkDatagram>
#include <QUdpSocket>
#include <QtTest>

class TestEmulator8000 : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void firstReadIsLongThenShort();
    void stateAfterCommands_data();
    void stateAfterCommands();
    void hisBoardAnswersTheNetworkRead();
    void unknownCodesAreListedOnce();

private:
    void send(const QString &to, uint16_t dev, const QByteArray &codeAndData)
    {
        const QByteArray frame = reply(dev, uint8_t(codeAndData.at(0)), codeAndData.mid(1));
        QCOMPARE(m_panel.writeDatagram(frame, QHostAddress(to), 7000), qint64(frame.size()));
    }
    // Sends each command ("8003" = code 0x80 with data 03) to the unit's main board, then the
    // state read, and returns the one reply: the unit answers the read only.
    QByteArray readAfter(const QString &unit, const QByteArray &commands)
    {
        m_replies.clear();
        for (const QByteArray &c : hexList(commands + " 49"))
            send(unit, 0xA5FF, c);
        if (!QTest::qWaitFor([this] { return !m_replies.isEmpty(); }, 5000))
            return QByteArray();
        QTest::qWait(50); // room for a reply too many
        return m_replies.size() == 1 ? m_replies.first() : QByteArray("more than one reply");
    }

    QUdpSocket m_panel;
    QList<QByteArray> m_replies;
};

// A short state reply up to its record.
#define SHORT_HEAD "a56c3100a5ff0100000000000000000049230123"

namespace {
const QString kRvx5370 = QStringLiteral("10.77.1.1");
const QString kRvx5350 = QStringLiteral("10.77.1.2");
const QString kRvx5310 = QStringLiteral("10.77.1.3");
} // namespace

void TestEmulator8000::initTestCase()
{
    QVERIFY2(!qEnvironmentVariableIsEmpty("LAB_UNITS"), "run me through lab/lab.sh");
    // A panel's link sends and receives on port 7000.
    QVERIFY(m_panel.bind(QHostAddress::AnyIPv4, 7000));
    connect(&m_panel, &QUdpSocket::readyRead, this, [this] {
        while (m_panel.hasPendingDatagrams())
            m_replies << m_panel.receiveDatagram().data();
    });
}

void TestEmulator8000::firstReadIsLongThenShort()
{
    // Long: the serial in the piece after the first 23, an empty piece, the state in piece 17.
    QCOMPARE(readAfter(kRvx5370, "").toHex(),
             QByteArray("a56c4700a5ff0100000000000000000049231200a0b0c0d0e0f1232323232323232323232323232323"
                        "230102000732033201000000000002000000000000010700000023fb0aae"));
    QCOMPARE(readAfter(kRvx5370, "").toHex(),
             QByteArray(SHORT_HEAD "01020007320332010000000000020000000000000107000000231604ae"));
    // Told to answer long every time, with the serial made from the type and the identifier.
    QCOMPARE(readAfter(kRvx5310, "0b 8004").toHex(),
             QByteArray("a56c4700a5ff0100000000000000000049232026114f00010101232323232323232323232323232323"
                        "230402000732033201000000000002000000000000010700000023e406ae"));
}

void TestEmulator8000::stateAfterCommands_data()
{
    QTest::addColumn<QString>("unit");
    QTest::addColumn<QByteArray>("commands");
    QTest::addColumn<QByteArray>("state");

    // Every row starts from RESET (0b), which puts the unit back to its power-up state.
    auto row = [](const char *name, const QString &unit, const char *commands, const char *state) {
        QTest::newRow(name) << unit << QByteArray(commands) << QByteArray(state);
    };
    row("power-up after reset", kRvx5370, "8003 0b",
        SHORT_HEAD "01020007320332010000000000020000000000000107000000231604ae");
    row("PGM 3, PVW 4, CUT swaps", kRvx5370, "0b 8003 8104 83",
        SHORT_HEAD "04030007320332010000000000020000000000000107000000231a04ae");
    row("lever swaps at its end only", kRvx5370, "0b 820140 820180 820040",
        SHORT_HEAD "02010007320332010000000000020000000000000107000000231604ae");
    row("wipe down, format 1080I60, PIP medium keeps H in 1280", kRvx5370,
        "0b 8f 922e a309 a201 a07805 a11000",
        SHORT_HEAD "01020007320332040600000000020105000010000109000000233704ae");
    row("bars to both buses, PGM bar off gives the input back", kRvx5370, "0b d701 d801 d700",
        SHORT_HEAD "01090007320332010000000000020000000000000107000000231d04ae");
    // A level of 35 is the separator: sent as it is, the receiver's cut then applies.
    row("levels as received, 0x23 included", kRvx5370, "0b b423400064",
        SHORT_HEAD "01020007230340010000000000020000000000000107000000231504ae");
    row("FTB, STILL, mute, PIP, rate, MIX, sources", kRvx5370, "0b 85 cd d4 8601 a502 cb b908 ba00",
        SHORT_HEAD "01020108320032010001010000020000000000010207000001231a04ae");
    row("values outside the tables change nothing", kRvx5370, "0b 8005 b909 a302 a503 a203 9230",
        SHORT_HEAD "01020007320332010000000000020000000000000107000000231604ae");
    // The RVX5350's own wipe coding: L 0, R 1, D 2, U 3.
    row("RVX5350 wipe left", kRvx5350, "0b 8f 9228",
        SHORT_HEAD "01020003320432040000000000020000000000000107000000231604ae");
    row("RVX5350 wipe up", kRvx5350, "0b 8f 922a",
        SHORT_HEAD "01020003320432040300000000020000000000000107000000231904ae");
    row("RVX5350 two inputs, its four sources", kRvx5350, "0b 8002 8003 b908 ba07",
        SHORT_HEAD "02020008320432010000000000020000000000000107000000231904ae");
    row("RVX5350 has no bar", kRvx5350, "0b d701 d801",
        SHORT_HEAD "01020003320432010000000000020000000000000107000000231304ae");
}

void TestEmulator8000::stateAfterCommands()
{
    QFETCH(QString, unit);
    QFETCH(QByteArray, commands);
    QFETCH(QByteArray, state);
    QCOMPARE(readAfter(unit, commands).toHex(), state);
}

void TestEmulator8000::hisBoardAnswersTheNetworkRead()
{
    m_replies.clear();
    // The network read as the link sends it to an E0 board: the address frame, twelve zero bytes.
    send(QStringLiteral("10.77.101.1"), 0xE0FF, hex("24") + QByteArray(12, '\0'));
    QTRY_COMPARE(m_replies.size(), 1);
    // Address, mask, gateway, six zero bytes, DNS, then 24 to end the piece the receiver cuts.
    QCOMPARE(
        m_replies.first().toHex(),
        QByteArray(
            "a56c2d00e0ff010000000000000000002400000a4d6501ffff00000a4d00010000000000000a4d000124d106ae"));
}

void TestEmulator8000::unknownCodesAreListedOnce()
{
    for (const char *code : {"77", "77", "77", "7801"})
        send(kRvx5350, 0xA5FF, hex(code));
    QCOMPARE(LabState::waitFor(kRvx5350, {{"unknown", "0x77 0x78"}}), QString());
    for (int i = 0; i < 3; ++i)
        send("10.77.101.2", 0xE5FF, hex("3001"));
    QTRY_COMPARE(LabState::logCount("^rx unit=10.77.1.2 board=his cmd=0x30"), 3);
    QCOMPARE(LabState::waitFor(kRvx5350, {{"unknown", "0x77 0x78 his:0x30"}}), QString());
}

QTEST_GUILESS_MAIN(TestEmulator8000)
#include "tst_emulator8000.moc"
