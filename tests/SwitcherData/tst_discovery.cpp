// Discovery through real sockets: replies come back to the search socket from stand-in units on
// loopback addresses, and the device table fills as the window expects. Random input is left to
// the discovery fuzzer.
#include "SwitcherData/workdata.h"
#include "testframes.h"

#include <QSignalSpy>
#include <QUdpSocket>
#include <QtTest>
#include <memory>

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
    void init()
    {
        m_link = std::make_unique<SWITCHER_DATA>();
        m_link->setSearcheQuipment();
    }
    void mainAndHisRepliesBind();
    void hisReplyBeforeMainIsLost();
    void hisReplyMatchingTwoRecordsUpdatesBoth();
    void splitDatagramIsJoined();
    void replies_data();
    void replies();
    void newSearchEmptiesTable();
    void fullTableDropsFurtherReplies();

private:
    // Sends `data` from a stand-in unit at `from` to the search socket.
    void sendFrom(const QString &from, const QByteArray &data)
    {
        QUdpSocket unit;
        QVERIFY(unit.bind(QHostAddress(from), 0));
        const quint16 port = m_link->findChild<QUdpSocket *>()->localPort();
        QCOMPARE(unit.writeDatagram(data, QHostAddress::LocalHost, port), qint64(data.size()));
    }

    std::unique_ptr<SWITCHER_DATA> m_link;
};

void tst_Discovery::mainAndHisRepliesBind()
{
    QSignalSpy added(m_link.get(), &SWITCHER_DATA::sigend_datapack);
    sendFrom("127.0.0.11", searchReply(0xA5, 0x21, "Studio A-V2", id(1, 2, 3)));
    QTRY_COMPARE(added.count(), 1);
    sendFrom("127.0.0.111", searchReply(0xE5, 0x21, "his-x", id(1, 2, 3)));
    QTRY_VERIFY(m_link->devices()[0].ip2 != 0);

    const DevInfo_DATA &rec = m_link->devices()[0];
    QCOMPARE(m_link->DevInfo_DATA_IDX(), 1);
    QCOMPARE(SWITCHER_DATA::dottedIp(rec.ip) + ' ' + SWITCHER_DATA::dottedIp(rec.ip2),
             QString("127.0.0.11 127.0.0.111"));
    QCOMPARE(nameOf(rec), QString("Studio A"));
    QCOMPARE(QByteArray(reinterpret_cast<const char *>(&rec.devClass), 1) + char(rec.devNum) +
                 char(rec.childType) + QByteArray(reinterpret_cast<const char *>(rec.unitId), 3) +
                 char(rec.devClass2) + char(rec.devNum2),
             hex("a5ff21010203e5ff"));
    QCOMPARE(added.count(), 1); // a HIS reply adds no record and announces nothing
}

void tst_Discovery::hisReplyBeforeMainIsLost()
{
    QSignalSpy added(m_link.get(), &SWITCHER_DATA::sigend_datapack);
    sendFrom("127.0.0.112", searchReply(0xE0, 0x21, "his-x", id(4, 5, 6)));
    sendFrom("127.0.0.12", searchReply(0xA5, 0x24, "Late-1", id(4, 5, 6)));
    QTRY_COMPARE(added.count(), 1);
    QCOMPARE(m_link->devices()[0].ip2, 0u);
    QCOMPARE(m_link->devices()[0].devClass2, uint8_t(0));
}

void tst_Discovery::hisReplyMatchingTwoRecordsUpdatesBoth()
{
    QSignalSpy added(m_link.get(), &SWITCHER_DATA::sigend_datapack);
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
    QSignalSpy added(m_link.get(), &SWITCHER_DATA::sigend_datapack);
    const QByteArray whole = searchReply(0xA5, 0x26, "Split-9", id(9, 9, 9));
    sendFrom("127.0.0.16", whole.left(19)); // too short to judge: kept
    QTRY_VERIFY(!m_link->findChild<QUdpSocket *>()->hasPendingDatagrams());
    QCOMPARE(added.count(), 0);
    sendFrom("127.0.0.16", whole.mid(19));
    QTRY_COMPARE(added.count(), 1);
    QCOMPARE(nameOf(m_link->devices()[0]), QString("Split"));
}

void tst_Discovery::replies_data()
{
    QTest::addColumn<QByteArray>("datagram");
    QTest::addColumn<QStringList>("names"); // the table after it and a good reply
    const QByteArray good = searchReply(0xA5, 0x21, "Bad-1", id(1, 1, 1));
    QByteArray badSum = good;
    badSum[badSum.size() - 3] = char(uint8_t(badSum.at(badSum.size() - 3)) + 1);
    QByteArray notSearch = good;
    notSearch[16] = char(0x49);
    QByteArray badEnd = good;
    badEnd[badEnd.size() - 1] = char(0xAD);
    const QStringList rejected{"Good"};

    QTest::newRow("bad sum") << badSum << rejected;
    QTest::newRow("not a search reply") << notSearch << rejected;
    QTest::newRow("no end byte") << badEnd << rejected;
    // Two frames in one datagram are joined and the joined sum cannot match.
    QTest::newRow("two frames in one datagram")
        << good + searchReply(0xA5, 0x21, "Bad-2", id(2, 2, 2)) << rejected;
    QTest::newRow("oversized") << good + QByteArray(1100, '\0') << rejected;
    QTest::newRow("only a name, no text") << searchReply(0xA5, 0x21, "-x", id(3, 3, 3)) << rejected;
    QTest::newRow("wrong device number") << QByteArray(good).replace(5, 1, "\x01") << rejected;
    QTest::newRow("name ended by dash")
        << searchReply(0xA5, 0x21, "ABC-12", id(6, 6, 6)) << QStringList{"ABC", "Good"};
    QTest::newRow("name with a blank")
        << searchReply(0xA5, 0x21, "Main Hall-7", id(6, 6, 6)) << QStringList{"Main Hall", "Good"};
    QTest::newRow("name longer than the record")
        << searchReply(0xA5, 0x21, QByteArray(40, 'N').append("-1"), id(6, 6, 6))
        << QStringList{QString(32, 'N'), "Good"};
}

void tst_Discovery::replies()
{
    QFETCH(QByteArray, datagram);
    QFETCH(QStringList, names);
    sendFrom("127.0.0.17", datagram);
    // A rejected datagram must leave the buffer clear: a good reply right after binds on its own.
    sendFrom("127.0.0.18", searchReply(0xA5, 0x21, "Good-1", id(5, 5, 5)));
    QTRY_COMPARE(m_link->DevInfo_DATA_IDX(), names.size());
    QStringList got;
    for (int i = 0; i < names.size(); ++i)
        got << nameOf(m_link->devices()[i]);
    QCOMPARE(got, names);
}

void tst_Discovery::newSearchEmptiesTable()
{
    sendFrom("127.0.0.20", searchReply(0xA5, 0x21, "Old-1", id(1, 2, 1)));
    QTRY_COMPARE(m_link->DevInfo_DATA_IDX(), 1);
    m_link->setSearcheQuipment();
    QCOMPARE(m_link->DevInfo_DATA_IDX(), 0);
    QCOMPARE(m_link->devices()[0].ip, 0u);
}

void tst_Discovery::fullTableDropsFurtherReplies()
{
    // Fed straight to the decoder: a thousand datagrams would only test the kernel's
    // receive buffer.
    QSignalSpy added(m_link.get(), &SWITCHER_DATA::sigend_datapack);
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

QTEST_GUILESS_MAIN(tst_Discovery)
#include "tst_discovery.moc"
