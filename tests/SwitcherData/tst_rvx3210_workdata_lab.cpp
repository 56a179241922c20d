// The link object driving an emulated RVX3210 with a HIS board, as a panel would, on the
// operator side of a lab (see CMakeLists.txt).
#include "SwitcherData/rvx3210_workdata.h"
#include "labstate.h"

#include <QSignalSpy>
#include <QtTest>
#include <functional>

class TestRvx3210Lab : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void stateFollowsCommands();
    void hisNetworkAndUrl();

private:
    // The first payload of `signal` after `ask`, empty if none came.
    QByteArray answer(void (RVX3210_workdata::*signal)(const QByteArray &), const std::function<void()> &ask)
    {
        QSignalSpy spy(m_link, signal);
        ask();
        return spy.wait(5000) ? spy.at(0).at(0).toByteArray() : QByteArray();
    }
    QByteArray readState()
    {
        return answer(&RVX3210_workdata::on_signals_3210Data, [this] { m_link->SendCMDRead3210state(); });
    }
    QByteArray readHis()
    {
        return answer(&RVX3210_workdata::on_signals_3210HISData, [this] { m_link->SendCMD_Read_His_IP(); });
    }

    RVX3210_workdata *m_link = nullptr;
    QString m_main;
    QString m_his;
};

void TestRvx3210Lab::initTestCase()
{
    m_main = qEnvironmentVariable("LAB_UNITS").split(' ').value(0);
    m_his = qEnvironmentVariable("LAB_HIS").split(' ').value(0);
    QVERIFY2(!m_main.isEmpty() && !m_his.isEmpty(), "run through lab/lab.sh");
    m_link = new RVX3210_workdata(this);
    QVERIFY(m_link->isBound());
    m_link->get_DevTypeID(m_main, 0xA5, 0xFF);
    m_link->get_HISTypeID(m_his, 0xE0, 0xFF);
}

void TestRvx3210Lab::stateFollowsCommands()
{
    QCOMPARE(readState().left(2), QByteArray("\x01\x02"));
    m_link->SendCDMPGMCH(2);
    m_link->SendCMDPVWCH(4);
    m_link->SendCMDCUT();
    m_link->SendCMDPIP_H_Position(0x0140);
    const QByteArray after = readState();
    QCOMPARE(after.size(), 26);
    QCOMPARE(after.left(2), QByteArray("\x04\x02"));    // CUT swapped PGM 2 and PVW 4
    QCOMPARE(after.mid(15, 2), QByteArray("\x01\x40")); // high byte first in the record
    QCOMPARE(LabState::waitFor(m_main, {{"pgm", "4"}, {"pvw", "2"}}), QString());
}

void TestRvx3210Lab::hisNetworkAndUrl()
{
    QByteArray net = readHis();
    QVERIFY(net.size() >= 24);
    QCOMPARE(QHostAddress(qFromBigEndian<quint32>(net.constData() + 2)).toString(), m_his);
    QCOMPARE(net.mid(6, 4), QByteArray::fromHex("ffff0000"));
    m_link->SendCMD_Set_HIS_DNS(QByteArray::fromHex("08080404"), "8.8.4.4");
    QCOMPARE(readHis().mid(20, 4), QByteArray::fromHex("08080404"));

    m_link->SendCMD_Set_Url(1, "cam", "rtmp://10.77.0.1/live");
    const QByteArray url =
        answer(&RVX3210_workdata::on_signals_3210HIS_URL_Data, [this] { m_link->SendCMD_Read_Url(1); });
    QCOMPARE(url.size(), 789);
    QCOMPARE(url.mid(1, 5), QByteArray("\x01\x03"
                                       "cam"));
    QCOMPARE(url.mid(19, 23), QByteArray("\x15\x00"
                                         "rtmp://10.77.0.1/live",
                                         23));
}

QTEST_GUILESS_MAIN(TestRvx3210Lab)
#include "tst_rvx3210_workdata_lab.moc"
