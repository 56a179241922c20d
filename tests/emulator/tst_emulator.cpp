// The emulator's search replies and their faults, seen from the operator side of a lab started
// with the units listed in CMakeLists.txt. Unicast to a unit's boards is exercised by every other
// lab test, which reads the frames back from the emulator's log.
#include <QNetworkDatagram>
#include <QUdpSocket>
#include <QtTest>

class TestEmulator : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void searchReplies_data();
    void searchReplies();
    void hisFirstComesFirst();

private:
    QByteArrayList from(const QString &address) const
    {
        QByteArrayList out;
        for (const auto &r : m_received)
            if (r.first == address)
                out << r.second;
        return out;
    }

    QUdpSocket m_search;
    QList<QPair<QString, QByteArray>> m_received; // sender, datagram
};

namespace {
// Search frame for 2026-11-15 (Sunday) 19:40:05.
const QByteArray kSearch = QByteArray::fromHex("a56c1b0081ff01000000000000000000ff261115071940055d04ae");
} // namespace

void TestEmulator::initTestCase()
{
    QVERIFY2(!qEnvironmentVariableIsEmpty("LAB_UNITS"), "run me through lab/lab.sh");
    connect(&m_search, &QUdpSocket::readyRead, this, [this]() {
        while (m_search.hasPendingDatagrams()) {
            const QNetworkDatagram d = m_search.receiveDatagram();
            // The unbound socket is dual-stack: senders come as IPv4-mapped IPv6. A reply from
            // any port but 7000 is kept under "address:port", where no row looks for it.
            QString sender = QHostAddress(d.senderAddress().toIPv4Address()).toString();
            if (d.senderPort() != 7000)
                sender += ':' + QString::number(d.senderPort());
            m_received.append({sender, d.data()});
        }
    });
    QCOMPARE(m_search.writeDatagram(kSearch, QHostAddress::Broadcast, 7000), qint64(kSearch.size()));
    QTRY_COMPARE_WITH_TIMEOUT(m_received.size(), 13, 10000);
}

void TestEmulator::searchReplies_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<QByteArray>("datagrams"); // hex, a blank between datagrams
    // Plain replies are read by the real search in the end-to-end tests; here the odd ones.
    QTest::newRow("8000-series main, 0xFF in id")
        << "10.77.1.3" << QByteArray("a56c2200a5ff01000000000000005500ff0148616c6c2d56312e3030c0ffee9d09ae");
    QTest::newRow("8000-series HIS e5")
        << "10.77.101.3"
        << QByteArray("a56c2200e5ff01000000000000005500ff0148616c6c2d56312e3030c0ffeedd09ae");
    QTest::newRow("duplicate: main twice")
        << "10.77.1.4"
        << QByteArray("a56c2100a5ff01000000000000002700ff014475702d56312e30300000016a06ae "
                      "a56c2100a5ff01000000000000002700ff014475702d56312e30300000016a06ae");
    QTest::newRow("duplicate: HIS once")
        << "10.77.101.4" << QByteArray("a56c2100e0ff01000000000000002700ff014475702d56312e3030000001a506ae");
    QTest::newRow("his first: main")
        << "10.77.1.5" << QByteArray("a56c2200a5ff01000000000000002400ff014c6174652d56312e3030000002c606ae");
    QTest::newRow("his first: HIS")
        << "10.77.101.5"
        << QByteArray("a56c2200e0ff01000000000000002400ff014c6174652d56312e30300000020107ae");
    QTest::newRow("split: 19 bytes, then the rest")
        << "10.77.1.6"
        << QByteArray("a56c2400a5ff01000000000000002600ff0148 616c7665732d56312e3030000003a807ae");
    QTest::newRow("bad checksum")
        << "10.77.1.7"
        << QByteArray("a56c2300a5ff01000000000000005100ff014e6f6973792d56312e30300000048307ae");
    QTest::newRow("silent main") << "10.77.1.8" << QByteArray();
    QTest::newRow("silent HIS") << "10.77.101.8" << QByteArray();
}

void TestEmulator::searchReplies()
{
    QFETCH(QString, source);
    QFETCH(QByteArray, datagrams);
    QByteArrayList got;
    for (const QByteArray &d : from(source))
        got << d.toHex();
    QCOMPARE(got.join(' '), datagrams);
}

void TestEmulator::hisFirstComesFirst()
{
    int mainAt = -1, hisAt = -1;
    for (int i = 0; i < m_received.size(); ++i) {
        if (m_received.at(i).first == "10.77.1.5")
            mainAt = i;
        if (m_received.at(i).first == "10.77.101.5")
            hisAt = i;
    }
    QVERIFY(hisAt >= 0);
    QVERIFY2(hisAt < mainAt, "the HIS reply must arrive before the main reply");
}

QTEST_GUILESS_MAIN(TestEmulator)
#include "tst_emulator.moc"
