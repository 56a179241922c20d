#include "rvx3210_workdata.h"

#include <QFile>
#include <QSignalSpy>
#include <QtTest>

// Runs on the operator side of a lab whose first unit is an emulated RVX3210 with a HIS board
// (see CMakeLists.txt): the link object drives it as a panel would.
class TestRvx3210Lab : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void stateFollowsCommands();
    void hisNetworkAndUrl();

private:
    QByteArray readState();
    QByteArray readHis(void (RVX3210_workdata::*signal)(const QByteArray &),
                       const std::function<void()> &ask);

    RVX3210_workdata *m_link = nullptr;
    QString m_main;
    QString m_his;
};

void TestRvx3210Lab::initTestCase()
{
    m_main = QString::fromLocal8Bit(qgetenv("LAB_UNITS")).split(' ').value(0);
    m_his = QString::fromLocal8Bit(qgetenv("LAB_HIS")).split(' ').value(0);
    QVERIFY2(!m_main.isEmpty() && !m_his.isEmpty(), "run through lab/lab.sh");
    m_link = new RVX3210_workdata(this);
    QVERIFY(m_link->isBound());
    m_link->get_DevTypeID(m_main, 0xA5, 0xFF);
    m_link->get_HISTypeID(m_his, 0xE0, 0xFF);
}

QByteArray TestRvx3210Lab::readState()
{
    QSignalSpy spy(m_link, &RVX3210_workdata::on_signals_3210Data);
    m_link->SendCMDRead3210state();
    if (!spy.wait(5000))
        return QByteArray();
    return spy.at(0).at(0).toByteArray();
}

QByteArray TestRvx3210Lab::readHis(void (RVX3210_workdata::*signal)(const QByteArray &),
                                   const std::function<void()> &ask)
{
    QSignalSpy spy(m_link, signal);
    ask();
    if (!spy.wait(5000))
        return QByteArray();
    return spy.at(0).at(0).toByteArray();
}

void TestRvx3210Lab::stateFollowsCommands()
{
    const QByteArray before = readState();
    QCOMPARE(before.size(), 26);
    QCOMPARE(int(before.at(0)), 1);
    QCOMPARE(int(before.at(1)), 2);

    m_link->SendCDMPGMCH(2);
    m_link->SendCMDPVWCH(4);
    m_link->SendCMDCUT();
    m_link->SendCMDTRANSITIONS(5);
    m_link->SendCMDPIP_H_Position(0x0140);
    m_link->SendCMDF1(2);
    m_link->SendCMDF3();
    m_link->SendCMDCH1(5);
    const QByteArray after = readState();
    QCOMPARE(after.size(), 26);
    QCOMPARE(int(uint8_t(after.at(0))), 4); // CUT swapped PGM 2 and PVW 4
    QCOMPARE(int(uint8_t(after.at(1))), 2);
    QCOMPARE(int(uint8_t(after.at(3))), 0x08);
    QCOMPARE(int(uint8_t(after.at(7))), 4); // wipe, LEFT
    QCOMPARE(int(uint8_t(after.at(8))), 0);
    QCOMPARE(int(uint8_t(after.at(15))), 0x01); // high byte first in the record
    QCOMPARE(int(uint8_t(after.at(16))), 0x40);
    QCOMPARE(int(uint8_t(after.at(21))), 9);
    QCOMPARE(int(uint8_t(after.at(24))), 255);

    QFile stateFile(QString::fromLocal8Bit(qgetenv("LAB_STATE_DIR")) + "/" + m_main + ".state");
    QVERIFY(stateFile.open(QIODevice::ReadOnly));
    const QByteArray text = stateFile.readAll();
    QVERIFY(text.contains("\npgm=4\n"));
    QVERIFY(text.contains("\npvw=2\n"));
}

void TestRvx3210Lab::hisNetworkAndUrl()
{
    QByteArray net =
        readHis(&RVX3210_workdata::on_signals_3210HISData, [this] { m_link->SendCMD_Read_His_IP(); });
    QVERIFY(net.size() >= 24);
    QCOMPARE(QHostAddress(qFromBigEndian<quint32>(net.constData() + 2)).toString(), m_his);
    QCOMPARE(net.mid(6, 4), QByteArray::fromHex("ffff0000"));

    m_link->SendCMD_Set_HIS_DNS(QByteArray::fromHex("08080404"), "8.8.4.4");
    net = readHis(&RVX3210_workdata::on_signals_3210HISData, [this] { m_link->SendCMD_Read_His_IP(); });
    QVERIFY(net.size() >= 24);
    QCOMPARE(net.mid(20, 4), QByteArray::fromHex("08080404"));

    m_link->SendCMD_Set_Url(1, "cam", "rtmp://10.77.0.1/live");
    const QByteArray url =
        readHis(&RVX3210_workdata::on_signals_3210HIS_URL_Data, [this] { m_link->SendCMD_Read_Url(1); });
    QCOMPARE(url.size(), 789);
    QCOMPARE(int(url.at(1)), 1);
    QCOMPARE(url.mid(2, 4), QByteArray("\x03"
                                       "cam"));
    QCOMPARE(url.mid(19, 2), QByteArray("\x15\x00", 2));
    QCOMPARE(url.mid(21, 21), QByteArray("rtmp://10.77.0.1/live"));
}

QTEST_GUILESS_MAIN(TestRvx3210Lab)
#include "tst_rvx3210lab.moc"
