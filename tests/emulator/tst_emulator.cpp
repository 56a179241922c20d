#include <QFile>
#include <QHostAddress>
#include <QNetworkDatagram>
#include <QUdpSocket>
#include <QtTest>

// Runs on the operator side of a lab started with the units listed in CMakeLists.txt.
class TestEmulator : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void searchReplies_data();
    void searchReplies();
    void hisFirstComesFirst();
    void splitIsNineteenBytesThenTheRest();
    void silentUnitSendsNothing();
    void unicastReachesTheAddressedBoard();

private:
    struct Received
    {
        QString from;
        quint16 port;
        QByteArray bytes;
    };
    QList<Received> from(const QString &address) const;
    static QString readFile(const QString &path);

    QUdpSocket m_search;
    QList<Received> m_received;
};

namespace {
// Search frame for 2026-11-15 (Sunday) 19:40:05.
const QByteArray kSearch = QByteArray::fromHex("a56c1b0081ff01000000000000000000ff261115071940055d04ae");
constexpr int kRepliesToSearch = 13;

// The receiver's own rule: cut at 0xFF, take the third piece, cut at "-", drop the first byte.
QByteArray nameByReceiverRule(const QByteArray &frame)
{
    const QList<QByteArray> pieces = frame.split(char(0xFF));
    if (pieces.size() < 3)
        return QByteArray();
    return pieces.at(2).split('-').value(0).mid(1);
}
} // namespace

QList<TestEmulator::Received> TestEmulator::from(const QString &address) const
{
    QList<Received> out;
    for (const Received &r : m_received) {
        if (r.from == address)
            out.append(r);
    }
    return out;
}

QString TestEmulator::readFile(const QString &path)
{
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? QString::fromUtf8(f.readAll()) : QString();
}

void TestEmulator::initTestCase()
{
    QVERIFY2(!qEnvironmentVariableIsEmpty("LAB_UNITS"), "run me through lab/lab.sh");
    connect(&m_search, &QUdpSocket::readyRead, this, [this]() {
        while (m_search.hasPendingDatagrams()) {
            const QNetworkDatagram d = m_search.receiveDatagram();
            // The unbound socket is dual-stack: senders come as IPv4-mapped IPv6.
            const QHostAddress sender(d.senderAddress().toIPv4Address());
            m_received.append({sender.toString(), quint16(d.senderPort()), d.data()});
        }
    });
    QCOMPARE(m_search.writeDatagram(kSearch, QHostAddress::Broadcast, 7000), qint64(kSearch.size()));
    QTRY_COMPARE_WITH_TIMEOUT(m_received.size(), kRepliesToSearch, 10000);
}

void TestEmulator::searchReplies_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<int>("copies");
    QTest::addColumn<QByteArray>("name");

    auto row = [](const char *name, const char *source, const char *frame, int copies, const char *unit) {
        QTest::newRow(name) << source << QByteArray::fromHex(frame) << copies << QByteArray(unit);
    };
    // Plain replies are read by the real search in the end-to-end tests; here the odd ones.
    row("8000-series main, 0xFF in id", "10.77.1.3",
        "a56c2200a5ff01000000000000005500ff0148616c6c2d56312e3030c0ffee9d09ae", 1, "Hall");
    row("8000-series HIS e5", "10.77.101.3",
        "a56c2200e5ff01000000000000005500ff0148616c6c2d56312e3030c0ffeedd09ae", 1, "Hall");
    row("duplicate: main twice", "10.77.1.4",
        "a56c2100a5ff01000000000000002700ff014475702d56312e30300000016a06ae", 2, "Dup");
    row("duplicate: HIS once", "10.77.101.4",
        "a56c2100e0ff01000000000000002700ff014475702d56312e3030000001a506ae", 1, "Dup");
    row("bad checksum", "10.77.1.7", "a56c2300a5ff01000000000000005100ff014e6f6973792d56312e30300000048307ae",
        1, "Noisy");
}

void TestEmulator::searchReplies()
{
    QFETCH(QString, source);
    QFETCH(QByteArray, frame);
    QFETCH(int, copies);
    QFETCH(QByteArray, name);

    const QList<Received> got = from(source);
    QCOMPARE(got.size(), copies);
    for (const Received &r : got) {
        QCOMPARE(r.bytes.toHex(), frame.toHex());
        QCOMPARE(r.port, quint16(7000));
    }
    QCOMPARE(nameByReceiverRule(got.first().bytes), name);
}

void TestEmulator::hisFirstComesFirst()
{
    int mainAt = -1;
    int hisAt = -1;
    for (int i = 0; i < m_received.size(); ++i) {
        if (m_received.at(i).from == QLatin1String("10.77.1.5"))
            mainAt = i;
        if (m_received.at(i).from == QLatin1String("10.77.101.5"))
            hisAt = i;
    }
    QVERIFY(mainAt >= 0 && hisAt >= 0);
    QVERIFY2(hisAt < mainAt, "the HIS reply must arrive before the main reply");
    QCOMPARE(m_received.at(mainAt).bytes.toHex(),
             QByteArray("a56c2200a5ff01000000000000002400ff014c6174652d56312e3030000002c606ae"));
    QCOMPARE(m_received.at(hisAt).bytes.toHex(),
             QByteArray("a56c2200e0ff01000000000000002400ff014c6174652d56312e30300000020107ae"));
}

void TestEmulator::splitIsNineteenBytesThenTheRest()
{
    const QList<Received> got = from(QStringLiteral("10.77.1.6"));
    QCOMPARE(got.size(), 2);
    QCOMPARE(got.at(0).bytes.toHex(), QByteArray("a56c2400a5ff01000000000000002600ff0148"));
    QCOMPARE(got.at(1).bytes.toHex(), QByteArray("616c7665732d56312e3030000003a807ae"));
}

void TestEmulator::silentUnitSendsNothing()
{
    QVERIFY(from(QStringLiteral("10.77.1.8")).isEmpty());
    QVERIFY(from(QStringLiteral("10.77.101.8")).isEmpty());

    // Ask it directly, then ask a talking unit: once that answer is in, the silent one has had
    // its turn (the emulator logs a frame before it answers).
    QCOMPARE(m_search.writeDatagram(kSearch, QHostAddress(QStringLiteral("10.77.1.8")), 7000),
             qint64(kSearch.size()));
    const QString log = QString::fromLocal8Bit(qgetenv("LAB_EMULATOR_LOG"));
    QTRY_VERIFY(readFile(log).contains(
        QLatin1String("rx unit=10.77.1.8 board=main cmd=0xff data=26111507194005 sum=ok")));
    const int before = m_received.size();
    QCOMPARE(m_search.writeDatagram(kSearch, QHostAddress(QStringLiteral("10.77.1.2")), 7000),
             qint64(kSearch.size()));
    QTRY_COMPARE(m_received.size(), before + 1);
    QCOMPARE(m_received.last().from, QStringLiteral("10.77.1.2"));
    QVERIFY(from(QStringLiteral("10.77.1.8")).isEmpty());
    QVERIFY(!readFile(log).contains(QLatin1String("tx unit=10.77.1.8")));
}

void TestEmulator::unicastReachesTheAddressedBoard()
{
    // A panel talks from local port 7000 to the unit's main and HIS addresses.
    QUdpSocket panel;
    QVERIFY(panel.bind(QHostAddress::AnyIPv4, 7000));
    const QByteArray toMain = QByteArray::fromHex("a56c1400a5ff0100000000000000000010da02ae");
    const QByteArray toHis =
        QByteArray::fromHex("a56c1500e0ff0100000000000000000007021003ae"); // sum off by one
    QCOMPARE(panel.writeDatagram(toMain, QHostAddress(QStringLiteral("10.77.1.1")), 7000),
             qint64(toMain.size()));
    QCOMPARE(panel.writeDatagram(toHis, QHostAddress(QStringLiteral("10.77.101.1")), 7000),
             qint64(toHis.size()));

    const QString state =
        QString::fromLocal8Bit(qgetenv("LAB_STATE_DIR")) + QStringLiteral("/10.77.1.1.state");
    QTRY_VERIFY(readFile(state).contains(QLatin1String("\nframes=2\n")));
    QVERIFY(readFile(state).contains(QLatin1String("\nlast=his 0x07 02 bad\n")));
    QVERIFY(readFile(state).startsWith(QLatin1String("type=0x21\n")));

    const QString log = readFile(QString::fromLocal8Bit(qgetenv("LAB_EMULATOR_LOG")));
    QVERIFY(log.contains(
        QLatin1String("rx unit=10.77.1.1 board=main cmd=0x10 data= sum=ok dev=a5ff from=10.77.0.1:7000\n")));
    QVERIFY(log.contains(QLatin1String(
        "rx unit=10.77.1.1 board=his cmd=0x07 data=02 sum=bad dev=e0ff from=10.77.0.1:7000\n")));
    // Unicast must not also land on the shared wildcard socket.
    QVERIFY(!log.contains(QLatin1String("rx unit=* board=any cmd=0x10")));
}

QTEST_GUILESS_MAIN(TestEmulator)
#include "tst_emulator.moc"
