// Discovery through real sockets: the search leaves as a broadcast, replies come back from
// stand-in units on loopback addresses, and the device table fills as the window expects.
// Runs only inside a private network namespace (netns-run.sh).
#include "SwitcherData/workdata.h"
#include "testframes.h"

#include <QRandomGenerator>
#include <QSignalSpy>
#include <QUdpSocket>
#include <QtTest>

namespace {

QByteArray id(int a, int b, int c)
{
    return QByteArray().append(char(a)).append(char(b)).append(char(c));
}

QString nameOf(const DevInfo_DATA &rec)
{
    return QString::fromLatin1(rec.name, int(strnlen(rec.name, sizeof(rec.name))));
}

} // namespace

class tst_Discovery : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void mainAndHisRepliesBind();
    void hisReplyBeforeMainIsLost();
    void hisReplyMatchingTwoRecordsUpdatesBoth();
    void splitDatagramIsJoined();
    void rejectedDatagrams_data();
    void rejectedDatagrams();
    void names_data();
    void names();
    void newSearchEmptiesTable();
    void fullTableDropsFurtherReplies();
    void garbageNeverReadsOutOfBounds();

private:
    // Sends `data` from a stand-in unit at `from` to the search socket.
    void sendFrom(const QString &from, const QByteArray &data);
    void search();

    SWITCHER_DATA *m_link = nullptr;
    QUdpSocket *m_catcher = nullptr;
    quint16 m_searchPort = 0;
    QHash<QString, QUdpSocket *> m_units;
};

void tst_Discovery::init()
{
    m_link = new SWITCHER_DATA;
    m_catcher = new QUdpSocket;
    QVERIFY(m_catcher->bind(QHostAddress::AnyIPv4, SWITCHER_DATA::Port, QUdpSocket::ShareAddress));
    search();
}

void tst_Discovery::cleanup()
{
    qDeleteAll(m_units);
    m_units.clear();
    delete m_catcher;
    delete m_link;
}

void tst_Discovery::search()
{
    m_link->setSearcheQuipment();
    QTRY_VERIFY(m_catcher->hasPendingDatagrams());
    QByteArray frame(int(m_catcher->pendingDatagramSize()), '\0');
    QHostAddress from;
    m_catcher->readDatagram(frame.data(), frame.size(), &from, &m_searchPort);
    QVERIFY(m_searchPort != 0);
}

void tst_Discovery::sendFrom(const QString &from, const QByteArray &data)
{
    QUdpSocket *&s = m_units[from];
    if (!s) {
        s = new QUdpSocket;
        QVERIFY(s->bind(QHostAddress(from), 0));
    }
    QCOMPARE(s->writeDatagram(data, QHostAddress::LocalHost, m_searchPort), qint64(data.size()));
}

void tst_Discovery::mainAndHisRepliesBind()
{
    QSignalSpy added(m_link, &SWITCHER_DATA::sigend_datapack);
    sendFrom("127.0.0.11", searchReply(0xA5, 0x21, "Studio A-V2", id(1, 2, 3)));
    QTRY_COMPARE(added.count(), 1);
    sendFrom("127.0.0.111", searchReply(0xE5, 0x21, "his-x", id(1, 2, 3)));
    QTRY_VERIFY(m_link->devices()[0].ip2 != 0);

    const DevInfo_DATA &rec = m_link->devices()[0];
    QCOMPARE(m_link->DevInfo_DATA_IDX(), 1);
    QCOMPARE(SWITCHER_DATA::dottedIp(rec.ip), QString("127.0.0.11"));
    QCOMPARE(nameOf(rec), QString("Studio A"));
    QCOMPARE(rec.devClass, uint8_t(0xA5));
    QCOMPARE(rec.devNum, uint8_t(0xFF));
    QCOMPARE(rec.childType, uint8_t(0x21));
    QCOMPARE(QByteArray(reinterpret_cast<const char *>(rec.unitId), 3), id(1, 2, 3));
    QCOMPARE(SWITCHER_DATA::dottedIp(rec.ip2), QString("127.0.0.111"));
    QCOMPARE(rec.devClass2, uint8_t(0xE5));
    QCOMPARE(rec.devNum2, uint8_t(0xFF));
    // A HIS reply adds no record and announces nothing.
    QCOMPARE(added.count(), 1);
}

void tst_Discovery::hisReplyBeforeMainIsLost()
{
    QSignalSpy added(m_link, &SWITCHER_DATA::sigend_datapack);
    sendFrom("127.0.0.112", searchReply(0xE0, 0x21, "his-x", id(4, 5, 6)));
    sendFrom("127.0.0.12", searchReply(0xA5, 0x24, "Late-1", id(4, 5, 6)));
    QTRY_COMPARE(added.count(), 1);
    QCOMPARE(m_link->devices()[0].ip2, 0u);
    QCOMPARE(m_link->devices()[0].devClass2, uint8_t(0));
}

void tst_Discovery::hisReplyMatchingTwoRecordsUpdatesBoth()
{
    QSignalSpy added(m_link, &SWITCHER_DATA::sigend_datapack);
    sendFrom("127.0.0.13", searchReply(0xA5, 0x21, "Twin-1", id(7, 7, 7)));
    sendFrom("127.0.0.14", searchReply(0xA5, 0x21, "Twin-2", id(7, 7, 7)));
    sendFrom("127.0.0.15", searchReply(0xA5, 0x21, "Other-3", id(7, 7, 8)));
    QTRY_COMPARE(added.count(), 3);
    sendFrom("127.0.0.113", searchReply(0xE0, 0x21, "his-x", id(7, 7, 7)));
    QTRY_VERIFY(m_link->devices()[1].ip2 != 0);
    QCOMPARE(SWITCHER_DATA::dottedIp(m_link->devices()[0].ip2), QString("127.0.0.113"));
    QCOMPARE(m_link->devices()[2].ip2, 0u);
}

void tst_Discovery::splitDatagramIsJoined()
{
    QSignalSpy added(m_link, &SWITCHER_DATA::sigend_datapack);
    const QByteArray whole = searchReply(0xA5, 0x26, "Split-9", id(9, 9, 9));
    sendFrom("127.0.0.16", whole.left(19)); // too short to judge: kept
    QTest::qWait(50);
    QCOMPARE(added.count(), 0);
    sendFrom("127.0.0.16", whole.mid(19));
    QTRY_COMPARE(added.count(), 1);
    QCOMPARE(nameOf(m_link->devices()[0]), QString("Split"));
}

void tst_Discovery::rejectedDatagrams_data()
{
    QTest::addColumn<QByteArray>("datagram");
    const QByteArray good = searchReply(0xA5, 0x21, "Bad-1", id(1, 1, 1));
    QByteArray badSum = good;
    badSum[badSum.size() - 3] = char(uint8_t(badSum.at(badSum.size() - 3)) + 1);
    QByteArray notSearch = good;
    notSearch[16] = char(0x49);
    QByteArray badEnd = good;
    badEnd[badEnd.size() - 1] = char(0xAD);

    QTest::newRow("bad sum") << badSum;
    QTest::newRow("not a search reply") << notSearch;
    QTest::newRow("no end byte") << badEnd;
    // Two frames in one datagram are joined and the joined sum cannot match.
    QTest::newRow("two frames in one datagram") << good + searchReply(0xA5, 0x21, "Bad-2", id(2, 2, 2));
    QTest::newRow("oversized") << good + QByteArray(1100, '\0');
    QTest::newRow("only a name, no text") << searchReply(0xA5, 0x21, "-x", id(3, 3, 3));
    QTest::newRow("wrong device number") << QByteArray(good).replace(5, 1, "\x01");
}

void tst_Discovery::rejectedDatagrams()
{
    QFETCH(QByteArray, datagram);
    QSignalSpy added(m_link, &SWITCHER_DATA::sigend_datapack);
    sendFrom("127.0.0.17", datagram);
    // The buffer must have been cleared: a good reply right after binds on its own.
    sendFrom("127.0.0.18", searchReply(0xA5, 0x21, "Good-1", id(5, 5, 5)));
    QTRY_COMPARE(m_link->DevInfo_DATA_IDX(), 1);
    QCOMPARE(added.count(), 1);
    QCOMPARE(nameOf(m_link->devices()[0]), QString("Good"));
}

void tst_Discovery::names_data()
{
    QTest::addColumn<QByteArray>("field");
    QTest::addColumn<QString>("name");
    QTest::newRow("ended by dash") << QByteArray("ABC-12") << "ABC";
    QTest::newRow("blank inside") << QByteArray("Main Hall-7") << "Main Hall";
    QTest::newRow("longer than the record") << QByteArray(40, 'N').append("-1") << QString(32, 'N');
}

void tst_Discovery::names()
{
    QFETCH(QByteArray, field);
    QFETCH(QString, name);
    sendFrom("127.0.0.19", searchReply(0xA5, 0x21, field, id(6, 6, 6)));
    QTRY_COMPARE(m_link->DevInfo_DATA_IDX(), 1);
    QCOMPARE(QString::fromLatin1(m_link->devices()[0].name, int(strnlen(m_link->devices()[0].name, 32))),
             name);
}

void tst_Discovery::newSearchEmptiesTable()
{
    sendFrom("127.0.0.20", searchReply(0xA5, 0x21, "Old-1", id(1, 2, 1)));
    QTRY_COMPARE(m_link->DevInfo_DATA_IDX(), 1);
    search();
    QCOMPARE(m_link->DevInfo_DATA_IDX(), 0);
    QCOMPARE(m_link->devices()[0].ip, 0u);
}

void tst_Discovery::fullTableDropsFurtherReplies()
{
    // Fed straight to the decoder: a thousand datagrams would only test the kernel's
    // receive buffer.
    QSignalSpy added(m_link, &SWITCHER_DATA::sigend_datapack);
    const QByteArray frame = searchReply(0xA5, 0x21, "Many-1", id(1, 0, 0));
    for (int i = 0; i < SWITCHER_DATA::MaxDevices + 5; ++i)
        m_link->Get_Bind_Dev(QHostAddress(quint32(0x0A4D0000 + i)), frame);
    QCOMPARE(m_link->DevInfo_DATA_IDX(), SWITCHER_DATA::MaxDevices);
    QCOMPARE(added.count(), SWITCHER_DATA::MaxDevices);
    QCOMPARE(m_link->devices()[SWITCHER_DATA::MaxDevices].ip, 0u); // the zero record after the last
    // HIS replies still reach every record of a full table.
    m_link->Get_Bind_Dev(QHostAddress("10.0.0.1"), searchReply(0xE0, 0x21, "h-1", id(1, 0, 0)));
    QCOMPARE(SWITCHER_DATA::dottedIp(m_link->devices()[SWITCHER_DATA::MaxDevices - 1].ip2),
             QString("10.0.0.1"));
}

void tst_Discovery::garbageNeverReadsOutOfBounds()
{
    // Random bytes, start patterns with absurd lengths and truncated frames: the decoder
    // must neither crash nor bind anything that is not a whole, summed reply. Run under the
    // sanitizers this catches any read past a buffer.
    QRandomGenerator rng(20261121);
    const QHostAddress from("127.0.0.21");
    for (int round = 0; round < 3000; ++round) {
        QByteArray junk(int(rng.bounded(1, 80)), '\0');
        for (char &c : junk)
            c = char(rng.bounded(256));
        if (round % 3 == 0 && junk.size() > 4) {
            junk[0] = char(0xA5);
            junk[1] = char(0x6C);
            junk[2] = char(rng.bounded(40));
            junk[3] = 0;
        }
        if (round % 5 == 0 && junk.size() > 16)
            junk[16] = char(0xFF);
        m_link->MYanalysis(from, junk, junk.size());
    }
    // Whatever was left in the buffer, a new search starts clean.
    search();
    m_link->MYanalysis(from, searchReply(0xA5, 0x21, "After-1", id(8, 8, 8)), 0);
    QCOMPARE(m_link->DevInfo_DATA_IDX(), 0);
}

QTEST_GUILESS_MAIN(tst_Discovery)
#include "tst_discovery.moc"
