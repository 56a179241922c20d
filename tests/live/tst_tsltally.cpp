// The UMD tally as a listener on the loopback sees it. Every datagram is decoded here, field by
// field from the published layout, never with the code under test.
#include "live/tsltally.h"
#include "wirecapture.h"

#include <QElapsedTimer>
#include <QSignalSpy>
#include <QUdpSocket>
#include <QtTest>
#include <functional>
#include <memory>

namespace {

const QStringList In = {"IN1", "IN2", "IN3", "IN4"};

// A listener on 127.0.0.1:<port>.
class Listener : public WireCapture
{
public:
    explicit Listener(quint16 port) : WireCapture(QStringLiteral("127.0.0.1"), port), m_port(port) {}
    TslTarget target() const { return {QHostAddress(QHostAddress::LocalHost), m_port}; }

    // What arrived before a marker sent now.
    QList<QByteArray> sinceLast()
    {
        const QByteArray marker("-- marker --");
        QUdpSocket().writeDatagram(marker, QHostAddress::LocalHost, m_port);
        return until(marker);
    }

private:
    quint16 m_port;
};

// One datagram as "index text rhN txN lhN" (the three tallies), or what is wrong with it. Every
// message must be one display message of screen 0 at full brightness.
QString decode(const QByteArray &d)
{
    if (d.size() < 12)
        return "short datagram";
    const auto u16 = [&d](int at) { return int(uint8_t(d.at(at))) | int(uint8_t(d.at(at + 1))) << 8; };
    if (u16(0) != d.size() - 2)
        return "byte count";
    if (d.at(2) != 0 || d.at(3) != 0 || u16(4) != 0)
        return "version, flags or screen";
    const int control = u16(8);
    if (control >> 8)
        return "not display data";
    if ((control >> 6 & 3) != 3)
        return "brightness";
    if (u16(10) != d.size() - 12)
        return "text length";
    return QString("%1 %2 rh%3 tx%4 lh%5")
        .arg(u16(6))
        .arg(QString::fromLatin1(d.mid(12)))
        .arg(control & 3)
        .arg(control >> 2 & 3)
        .arg(control >> 4 & 3);
}

QStringList decodeAll(const QList<QByteArray> &datagrams)
{
    QStringList out;
    for (const QByteArray &d : datagrams)
        out << decode(d);
    return out;
}

struct Tallies
{
    int programme;
    int preview;
    bool live;
};

} // namespace

Q_DECLARE_METATYPE(Tallies)

class TestTslTally : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_a = std::make_unique<Listener>(8900);
        m_b = std::make_unique<Listener>(8901);
        QVERIFY(m_a->isBound() && m_b->isBound());
    }
    void cleanup()
    {
        m_a.reset();
        m_b.reset();
    }

    void packet_data();
    void packet();
    void firstPacketsOnTheWire();
    void placeNamesScreenAndOffsetsIndexes();
    void changes_data();
    void changes();
    void refreshTellsEveryTargetEverything();
    void targets_data();
    void targets();

private:
    std::unique_ptr<Listener> m_a, m_b;
};

void TestTslTally::packet_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<int>("control");
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("screen");
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("programme") << 1 << 0xC5 << QByteArray("CAM 1") << 0
                               << QByteArray::fromHex("0f00 00 00 0000 0100 c500 0500 43414d2031");
    QTest::newRow("index above 255, no text")
        << 0x0102 << 0xE0 << QByteArray() << 0 << QByteArray::fromHex("0a00 00 00 0000 0201 e000 0000");
    QTest::newRow("third unit's screen")
        << 203 << 0xC0 << QByteArray("3") << 2 << QByteArray::fromHex("0b00 00 00 0200 cb00 c000 0100 33");
}

void TestTslTally::packet()
{
    QFETCH(int, index);
    QFETCH(int, control);
    QFETCH(QByteArray, text);
    QFETCH(int, screen);
    QTEST(TslTally::packet(index, control, text, screen), "bytes");
}

void TestTslTally::firstPacketsOnTheWire()
{
    // A target added to a running tally hears every input at once, one display per datagram.
    TslTally tally;
    tally.setInputs({"CAM 1", QString::fromUtf8("Cam-2\xC3\xA9")});
    tally.setLive(true);
    tally.setTally(1, 2);
    tally.setTargets({m_a->target()});
    QCOMPARE(m_a->sinceLast(),
             (QList<QByteArray>{QByteArray::fromHex("0f00 0000 0000 0100 c500 0500 43414d2031"),
                                QByteArray::fromHex("1000 0000 0000 0200 e000 0600 43616d2d323f")}));
}

void TestTslTally::placeNamesScreenAndOffsetsIndexes()
{
    // The second unit of a production: screen 1, its inputs from index 101.
    TslTally tally;
    tally.setPlace(1, 100);
    tally.setInputs({"1", "2"});
    tally.setLive(true);
    tally.setTally(2, 0);
    tally.setTargets({m_a->target()});
    QCOMPARE(m_a->sinceLast(), (QList<QByteArray>{QByteArray::fromHex("0b00 0000 0100 6500 c000 0100 31"),
                                                  QByteArray::fromHex("0b00 0000 0100 6600 c500 0100 32")}));
}

void TestTslTally::changes_data()
{
    QTest::addColumn<Tallies>("before");
    QTest::addColumn<QStringList>("labels");
    QTest::addColumn<Tallies>("after");
    QTest::addColumn<QStringList>("sent");
    const auto row = [](const char *name, Tallies before, const QStringList &labels, Tallies after,
                        const QStringList &sent) {
        QTest::newRow(name) << before << labels << after << sent;
    };

    row("first programme and preview", {0, 0, true}, In, {1, 2, true},
        {"1 IN1 rh1 tx1 lh0", "2 IN2 rh0 tx0 lh2"});
    row("programme moves, preview stays", {1, 2, true}, In, {3, 2, true},
        {"1 IN1 rh0 tx0 lh0", "3 IN3 rh1 tx1 lh0"});
    row("cut swaps them", {1, 2, true}, In, {2, 1, true}, {"1 IN1 rh0 tx0 lh2", "2 IN2 rh1 tx1 lh0"});
    row("one input on both", {1, 2, true}, In, {2, 2, true}, {"1 IN1 rh0 tx0 lh0", "2 IN2 rh1 tx1 lh2"});
    row("nothing changed", {1, 2, true}, In, {1, 2, true}, {});
    row("bars are no input", {1, 2, true}, In, {9, 0, true}, {"1 IN1 rh0 tx0 lh0", "2 IN2 rh0 tx0 lh0"});
    row("unit stops answering", {1, 2, true}, In, {1, 2, false}, {"1 IN1 rh0 tx0 lh0", "2 IN2 rh0 tx0 lh0"});
    row("changes while not live", {1, 2, false}, In, {3, 4, false}, {});
    row("unit answers again", {1, 2, false}, In, {1, 2, true}, {"1 IN1 rh1 tx1 lh0", "2 IN2 rh0 tx0 lh2"});
    row("relabelled input", {1, 2, true}, {"IN1", "IN2", "CAM 3", "IN4"}, {1, 2, true},
        {"3 CAM 3 rh0 tx0 lh0"});
    // The inputs change first, then the tally: input 3 goes dark once, input 4 was dark already.
    row("panel with fewer inputs", {3, 1, true}, {"IN1", "IN2"}, {1, 2, true},
        {"3 IN3 rh0 tx0 lh0", "1 IN1 rh1 tx1 lh0", "2 IN2 rh0 tx0 lh2"});
}

void TestTslTally::changes()
{
    QFETCH(Tallies, before);
    QFETCH(QStringList, labels);
    QFETCH(Tallies, after);
    TslTally tally;
    tally.setTargets({m_a->target()});
    tally.setInputs(In);
    tally.setTally(before.programme, before.preview);
    tally.setLive(before.live);
    m_a->sinceLast();

    tally.setInputs(labels);
    tally.setTally(after.programme, after.preview);
    tally.setLive(after.live);
    QTEST(decodeAll(m_a->sinceLast()), "sent");
}

void TestTslTally::refreshTellsEveryTargetEverything()
{
    TslTally tally;
    tally.setInputs(In);
    tally.setLive(true);
    tally.setTally(2, 3);
    tally.setTargets({m_a->target(), m_b->target()});
    const QStringList all = {"1 IN1 rh0 tx0 lh0", "2 IN2 rh1 tx1 lh0", "3 IN3 rh0 tx0 lh2",
                             "4 IN4 rh0 tx0 lh0"};
    QCOMPARE(decodeAll(m_a->sinceLast()), all);
    QCOMPARE(decodeAll(m_b->sinceLast()), all);

    QElapsedTimer clock;
    clock.start();
    QCOMPARE(decodeAll(m_a->take(4, 4000)), all);
    QVERIFY2(clock.elapsed() >= 1500, qPrintable(QString::number(clock.elapsed())));
    QCOMPARE(decodeAll(m_b->take(4, 1000)), all);

    // A target taken off the list hears nothing more; one still on it is not told again.
    tally.setTargets({m_b->target()});
    tally.setTally(1, 3);
    QCOMPARE(decodeAll(m_a->sinceLast()), QStringList());
    QCOMPARE(decodeAll(m_b->sinceLast()), (QStringList{"1 IN1 rh1 tx1 lh0", "2 IN2 rh0 tx0 lh0"}));
}

void TestTslTally::targets_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("parsed");
    QTest::newRow("one") << "127.0.0.1:8900"
                         << "127.0.0.1:8900";
    QTest::newRow("list with blanks and a repeat") << " 10.0.0.255:65535, 192.168.1.20:1  10.0.0.255:65535 "
                                                   << "10.0.0.255:65535 192.168.1.20:1";
    QTest::newRow("empty") << ""
                           << "";
    for (const char *bad :
         {"127.0.0.1", "127.0.0.1:", ":8900", "127.0.0.1:0", "127.0.0.1:65536", "256.0.0.1:8900",
          "127.1:8900", "studio.local:8900", "127.0.0.1:89a", "[::1]:8900", "127.0.0.1:8900,x"})
        QTest::newRow(bad) << bad << "refused";
}

void TestTslTally::targets()
{
    QFETCH(QString, text);
    const std::optional<QList<TslTarget>> list = TslTarget::listFromText(text);
    QStringList got;
    for (const TslTarget &t : list.value_or(QList<TslTarget>{}))
        got << t.text();
    QTEST(list ? got.join(' ') : QString("refused"), "parsed");
}

QTEST_GUILESS_MAIN(TestTslTally)
#include "tst_tsltally.moc"
