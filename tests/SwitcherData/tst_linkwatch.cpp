// Whether the unit answers: a state request left a second without a state reply marks the unit
// silent, the next state reply marks it answering again, and no other traffic counts.
#include "SwitcherData/rvx3210_workdata.h"
#include "linktest.h"

#include <QElapsedTimer>
#include <QTimer>

using Link = RVX3210_workdata;
using Call = LinkTest::Call<Link>;
Q_DECLARE_METATYPE(Call)

namespace {
const QByteArray Record = hex("0201010732036401000000010203010110008000010b00000000");
const QByteArray StateReply = LinkTest::stateReply("#\x01#" + Record + "#");
} // namespace

class TestLinkWatch : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        QVERIFY(m_rig.open());
        m_changes = std::make_unique<QSignalSpy>(m_rig.link->watch(), &LinkWatch::answeringChanged);
    }
    void cleanup()
    {
        m_changes.reset();
        m_rig.close();
    }

    void silenceThenReply();
    void replyWithinTheSecond();
    void otherFramesStartNothing_data();
    void otherFramesStartNothing();
    void pollingKeepsTheFirstDeadline();

private:
    QList<bool> changes() const
    {
        QList<bool> out;
        for (const QList<QVariant> &args : *m_changes)
            out << args.at(0).toBool();
        return out;
    }

    LinkTest::Rig<Link> m_rig;
    std::unique_ptr<QSignalSpy> m_changes;
};

void TestLinkWatch::silenceThenReply()
{
    QVERIFY(m_rig.link->watch()->isAnswering());
    QElapsedTimer clock;
    clock.start();
    m_rig.link->SendCMDRead3210state();
    QVERIFY(m_changes->wait(3000));
    QVERIFY2(clock.elapsed() >= 900, qPrintable(QString::number(clock.elapsed())));
    QCOMPARE(changes(), QList<bool>{false});
    QVERIFY(!m_rig.link->watch()->isAnswering());

    // The HIS board answering says nothing about the main board.
    LinkTest::deliver(m_rig,
                      {reply(0xE0FF, 0x24, hex("0000c0a80132ffffff00c0a8010100000000000008080404") + "$")});
    QCOMPARE(changes(), QList<bool>{false});

    // A state reply nobody asked for still shows the unit is there.
    LinkTest::deliver(m_rig, {StateReply});
    QCOMPARE(changes(), (QList<bool>{false, true}));
    QVERIFY(m_rig.link->watch()->isAnswering());
}

void TestLinkWatch::replyWithinTheSecond()
{
    m_rig.link->SendCMDRead3210state();
    QTimer::singleShot(500, m_rig.link.get(), [this] { m_rig.main->reply(StateReply); });
    QVERIFY(!m_changes->wait(1500));
    QVERIFY(m_rig.link->watch()->isAnswering());
}

void TestLinkWatch::otherFramesStartNothing_data()
{
    QTest::addColumn<Call>("call");
    QTest::newRow("programme") << Call([](Link &l) { l.SendCDMPGMCH(2); });
    QTest::newRow("cut") << Call(&Link::SendCMDCUT);
    QTest::newRow("his address") << Call(&Link::SendCMD_Read_His_IP);
    QTest::newRow("url slot 0x49") << Call([](Link &l) { l.SendCMD_Read_Url(0x49); });
}

void TestLinkWatch::otherFramesStartNothing()
{
    QFETCH(Call, call);
    call(*m_rig.link);
    QVERIFY(!m_changes->wait(1300));
    QVERIFY(m_rig.link->watch()->isAnswering());
}

void TestLinkWatch::pollingKeepsTheFirstDeadline()
{
    // A unit polled faster than the window still goes silent one window after the first
    // unanswered request, not after the last.
    QElapsedTimer clock;
    clock.start();
    m_rig.link->SendCMDRead3210state();
    QTimer::singleShot(700, m_rig.link.get(), [this] { m_rig.link->SendCMDRead3210state(); });
    QVERIFY(m_changes->wait(3000));
    QVERIFY2(clock.elapsed() < 1500, qPrintable(QString::number(clock.elapsed())));
    QCOMPARE(changes(), QList<bool>{false});
}

QTEST_GUILESS_MAIN(TestLinkWatch)
#include "tst_linkwatch.moc"
