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

    // One line a record: address, name, class, number, child type and id, HIS address, HIS class
    // and number.
    QStringList table() const
    {
        QStringList out;
        for (int i = 0; i < m_link->DevInfo_DATA_IDX(); ++i) {
            const DevInfo_DATA &r = m_link->devices()[i];
            const QByteArray main = QByteArray() + char(r.devClass) + char(r.devNum) + char(r.childType) +
                                    QByteArray(reinterpret_cast<const char *>(r.unitId), 3);
            out << QString("%1 %2 %3 %4 %5")
                       .arg(SWITCHER_DATA::dottedIp(r.ip), nameOf(r), main.toHex(),
                            SWITCHER_DATA::dottedIp(r.ip2),
                            (QByteArray() + char(r.devClass2) + char(r.devNum2)).toHex());
        }
        return out;
    }

    std::unique_ptr<SWITCHER_DATA> m_link;
};

void tst_Discovery::replies_data()
{
    QTest::addColumn<QStringList>("from");
    QTest::addColumn<QByteArrayList>("datagrams");
    QTest::addColumn<QStringList>("table");

    const QByteArray good = searchReply(0xA5, 0x21, "Good-1", id(5, 5, 5));
    const QString goodLine = "127.0.0.18 Good a5ff21050505 0.0.0.0 0000";
    // A rejected datagram must leave the buffer clear: the good reply right after binds alone.
    auto rejected = [&](const char *name, const QByteArray &d) {
        QTest::newRow(name) << QStringList{"127.0.0.17", "127.0.0.18"} << QByteArrayList{d, good}
                            << QStringList{goodLine};
    };
    auto named = [&](const char *name, const QByteArray &field, const QString &shown) {
        QTest::newRow(name) << QStringList{"127.0.0.17", "127.0.0.18"}
                            << QByteArrayList{searchReply(0xA5, 0x21, field, id(6, 6, 6)), good}
                            << QStringList{"127.0.0.17 " + shown + " a5ff21060606 0.0.0.0 0000", goodLine};
    };

    QTest::newRow("main, then its HIS board")
        << QStringList{"127.0.0.11", "127.0.0.111"}
        << QByteArrayList{searchReply(0xA5, 0x21, "Studio A-V2", id(1, 2, 3)),
                          searchReply(0xE5, 0x21, "his-x", id(1, 2, 3))}
        << QStringList{"127.0.0.11 Studio A a5ff21010203 127.0.0.111 e5ff"};
    QTest::newRow("HIS before main is lost") << QStringList{"127.0.0.112", "127.0.0.12"}
                                             << QByteArrayList{searchReply(0xE0, 0x21, "his-x", id(4, 5, 6)),
                                                               searchReply(0xA5, 0x24, "Late-1", id(4, 5, 6))}
                                             << QStringList{"127.0.0.12 Late a5ff24040506 0.0.0.0 0000"};
    QTest::newRow("HIS matching two records updates both")
        << QStringList{"127.0.0.13", "127.0.0.14", "127.0.0.15", "127.0.0.113"}
        << QByteArrayList{searchReply(0xA5, 0x21, "Twin-1", id(7, 7, 7)),
                          searchReply(0xA5, 0x21, "Twin-2", id(7, 7, 7)),
                          searchReply(0xA5, 0x21, "Other-3", id(7, 7, 8)),
                          searchReply(0xE0, 0x21, "h", id(7, 7, 7))}
        << QStringList{"127.0.0.13 Twin a5ff21070707 127.0.0.113 e0ff",
                       "127.0.0.14 Twin a5ff21070707 127.0.0.113 e0ff",
                       "127.0.0.15 Other a5ff21070708 0.0.0.0 0000"};
    const QByteArray whole = searchReply(0xA5, 0x26, "Split-9", id(9, 9, 9));
    QTest::newRow("19 bytes, then the rest")
        << QStringList{"127.0.0.16", "127.0.0.16"} << QByteArrayList{whole.left(19), whole.mid(19)}
        << QStringList{"127.0.0.16 Split a5ff26090909 0.0.0.0 0000"};

    QByteArray badSum = good;
    badSum[badSum.size() - 3] = char(uint8_t(badSum.at(badSum.size() - 3)) + 1);
    rejected("empty datagram", QByteArray()); // must not deafen the search
    rejected("bad sum", badSum);
    QByteArray notSearch = good;
    notSearch[16] = char(0x49);
    rejected("not a search reply", notSearch);
    rejected("no end byte", good.left(good.size() - 1) + char(0xAD));
    // Two frames in one datagram are joined and the joined sum cannot match.
    rejected("two frames in one datagram", good + searchReply(0xA5, 0x21, "Bad-2", id(2, 2, 2)));
    rejected("oversized", good + QByteArray(1100, '\0'));
    rejected("only a name, no text", searchReply(0xA5, 0x21, "-x", id(3, 3, 3)));
    rejected("wrong device number", QByteArray(good).replace(5, 1, "\x01"));
    named("name ended by dash", "ABC-12", "ABC");
    named("name with a blank", "Main Hall-7", "Main Hall");
    named("name longer than the record", QByteArray(40, 'N').append("-1"), QString(32, 'N'));
}

void tst_Discovery::replies()
{
    QFETCH(QStringList, from);
    QFETCH(QByteArrayList, datagrams);
    QFETCH(QStringList, table);
    QSignalSpy added(m_link.get(), &SWITCHER_DATA::sigend_datapack);
    for (int i = 0; i < from.size(); ++i)
        sendFrom(from[i], datagrams[i]);
    QTRY_COMPARE(this->table(), table);
    QCOMPARE(added.count(), table.size()); // a HIS reply adds no record and announces nothing
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
    // Fed straight to the decoder: this many datagrams would only test the kernel's buffer.
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
