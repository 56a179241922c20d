#include "SwitcherData/rvx3210_workdata.h"
#include "labstate.h"

#include <QSignalSpy>
#include <QtTest>
#include <functional>

// Runs on the operator side of a lab whose first unit is an emulated RVX3210 with a HIS board
// (see CMakeLists.txt): the link object drives it as a panel would.
class TestRvx3210Lab : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void stateFollowsCommands();
    void hisNetworkAndUrl();
    void splitRepliesAreJoined();

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
    m_link->SendCMDPIP_H_Position(0x0140);
    const QByteArray after = readState();
    QCOMPARE(after.size(), 26);
    QCOMPARE(int(uint8_t(after.at(0))), 4); // CUT swapped PGM 2 and PVW 4
    QCOMPARE(int(uint8_t(after.at(1))), 2);
    QCOMPARE(int(uint8_t(after.at(15))), 0x01); // high byte first in the record
    QCOMPARE(int(uint8_t(after.at(16))), 0x40);

    QCOMPARE(LabState::waitFor(m_main, {{"pgm", "4"}, {"pvw", "2"}}), QString());
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

void TestRvx3210Lab::splitRepliesAreJoined()
{
    // The second unit sends every reply as 19 bytes and then the rest.
    const QString second = QString::fromLocal8Bit(qgetenv("LAB_UNITS")).split(' ').value(1);
    QVERIFY(!second.isEmpty());
    m_link->get_DevTypeID(second, 0xA5, 0xFF);
    const QByteArray record = readState();
    m_link->get_DevTypeID(m_main, 0xA5, 0xFF);
    QCOMPARE(record.size(), 26);
    QCOMPARE(int(record.at(0)), 1);
}

QTEST_GUILESS_MAIN(TestRvx3210Lab)
#include "tst_rvx3210_workdata_lab.moc"
