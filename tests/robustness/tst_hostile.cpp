// Whatever a network sends, an open panel must neither crash nor read past what arrived: each
// panel family is fed, through its real socket, noise and well-summed frames whose payloads are
// cut short or lie about their lengths. The sanitizers catch the reads; the test asks that the
// panel is still up and still sends, and that no warning box opened (a modal box raised by
// network data would stall a live panel).
#include "RVX3210/rvx3210ui.h"
#include "RVX3220/rvx3220ui.h"
#include "RVX3410/rvx3410ui.h"
#include "SwitcherData/rvx3210_workdata.h"
#include "modalanswer.h"
#include "testframes.h"

#include <QNetworkDatagram>
#include <QRandomGenerator>
#include <QUdpSocket>
#include <QtTest>

namespace {

// Frames that pass reassembly and the sum, with payloads a unit should never send.
QList<QByteArray> liars()
{
    QList<QByteArray> out;
    const uint16_t main = 0xA5FF;
    for (uint16_t his : {uint16_t(0xE0FF), uint16_t(0xE5FF)}) {
        // Network and URL replies cut at every length, and with separators in odd places.
        for (int n = 0; n <= 30; ++n) {
            out << reply(his, 0x24, QByteArray(1, '\0') + QByteArray(n, char(0x11)) + char(0x24));
            out << reply(his, 0x24, QByteArray(1, '\0') + QByteArray(n, char(0x24)));
        }
        // A URL record that claims the longest name and URL but carries a few bytes.
        for (int n = 0; n <= 24; ++n) {
            QByteArray rec = hex("0003ff") + QByteArray(n, 'u');
            out << reply(his, 0x6A, rec + char(0x6A));
            out << reply(his, 0x6A,
                         hex("000110") + QByteArray(16, 'n') + hex("ffff") + QByteArray(n, 'u') + 'j');
        }
    }
    // State replies: short and long forms with every record length and piece count.
    for (int n = 0; n <= 32; ++n) {
        out << reply(main, 0x49, "#\x01#" + QByteArray(n, char(0x01)) + "#");
        out << reply(main, 0x49, "#\x01#" + QByteArray(n, char(0x01)) + "#", 0x27);
    }
    for (int pieces = 14; pieces <= 19; ++pieces)
        out << reply(main, 0x49, QByteArray(pieces, '#') + QByteArray(4, char(0x02)));
    out << reply(main, 0x49, QByteArray()) << reply(main, 0x49, "#") << reply(main, 0x49, "##");
    return out;
}

QByteArray noise(QRandomGenerator &rng)
{
    QByteArray junk(int(rng.bounded(1, 90)), '\0');
    for (char &c : junk)
        c = char(rng.bounded(256));
    if (junk.size() > 4 && rng.bounded(2)) {
        // A start pattern with a length that may reach past the end, or stop short of the head.
        junk[0] = char(0xA5);
        junk[1] = char(0x6C);
        junk[2] = char(rng.bounded(60));
        junk[3] = 0;
    }
    return junk;
}

} // namespace

class tst_Hostile : public QObject
{
    Q_OBJECT
private slots:
    void panelSurvives_data();
    void panelSurvives();

private:
    void flood(const QList<QByteArray> &datagrams, const QHostAddress &from);
};

void tst_Hostile::flood(const QList<QByteArray> &datagrams, const QHostAddress &from)
{
    QUdpSocket unit;
    QVERIFY(unit.bind(from, 0));
    int sent = 0;
    for (const QByteArray &d : datagrams) {
        unit.writeDatagram(d, QHostAddress::LocalHost, 7000);
        // Let the panel drain its socket now and then, so nothing is lost to a full buffer.
        if (++sent % 40 == 0)
            QTest::qWait(2);
    }
    QTest::qWait(20);
}

void tst_Hostile::panelSurvives_data()
{
    QTest::addColumn<int>("family");
    QTest::newRow("RVX3210") << 0;
    QTest::newRow("RVX3410") << 1;
    QTest::newRow("RVX3220") << 2;
}

void tst_Hostile::panelSurvives()
{
    QFETCH(int, family);
    const QHostAddress mainIp("127.0.0.2"), hisIp("127.0.0.3");
    QUdpSocket captured;
    QVERIFY(captured.bind(mainIp, 7000, QUdpSocket::ShareAddress | QUdpSocket::ReuseAddressHint));

    QScopedPointer<QWidget> panel;
    std::function<void()> sendSomething;
    if (family == 2) {
        auto *p = new RVX3220UI(nullptr);
        p->DevTypeID(mainIp.toString(), 0xA5, 0xFF);
        panel.reset(p);
    } else {
        Rvx3210PanelFrame *p = family == 0 ? static_cast<Rvx3210PanelFrame *>(new RVX3210UI(nullptr))
                                           : static_cast<Rvx3210PanelFrame *>(new RVX3410UI(nullptr));
        p->DevTypeID(mainIp.toString(), 0xA5, 0xFF, hisIp.toString(), 0xE0, 0xFF);
        panel.reset(p);
        sendSomething = [p] { p->link()->SendCMDCUT(); };
    }
    panel->show();
    ModalWatch watch;

    QRandomGenerator rng(0x4B4F5641 + uint(family));
    QList<QByteArray> datagrams = liars();
    for (int i = 0; i < 1500; ++i)
        datagrams << noise(rng);
    flood(datagrams, mainIp);
    flood(liars(), hisIp);

    QVERIFY(panel->isVisible());
    QVERIFY2(watch.boxes.isEmpty(), qPrintable(watch.boxes.join(QLatin1Char('\n'))));
    if (sendSomething) {
        while (captured.hasPendingDatagrams())
            captured.receiveDatagram();
        sendSomething();
        QTRY_VERIFY(captured.hasPendingDatagrams());
    }
}

QTEST_MAIN(tst_Hostile)
#include "tst_hostile.moc"
