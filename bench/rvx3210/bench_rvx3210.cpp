// RVX3210 panel timings on loopback, against a socket standing in for the unit:
//  - a click on CUT until the datagram is readable at the unit,
//  - a state reply sent by the unit until the panel has restyled its keys,
//  - a bare datagram between two plain sockets on the same addresses, as the floor,
//  - CPU used by the process over 10 s with FTB blinking, and over 10 s idle.
// Run only inside tests/netns-run.sh (see run.sh): it opens sockets.
#include "RVX3210/below_widget.h"
#include "RVX3210/rvx3210ui.h"
#include "RVX3210/upper_widget.h"
#include "rvx3210_workdata.h"

#include <QAbstractButton>
#include <QApplication>
#include <QButtonGroup>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QPushButton>
#include <QTimer>
#include <QUdpSocket>
#include <algorithm>
#include <cstdio>
#include <sys/resource.h>
#include <vector>

namespace {

constexpr int Runs = 1000;
constexpr quint16 Port = 7000;
const QHostAddress UnitIp(QStringLiteral("127.0.0.2"));
const QHostAddress HisIp(QStringLiteral("127.0.0.3"));
constexpr auto Share = QAbstractSocket::ShareAddress | QAbstractSocket::ReuseAddressHint;

struct Figures
{
    double median;
    double worst;
};

Figures figures(std::vector<double> us)
{
    std::sort(us.begin(), us.end());
    return {us[us.size() / 2], us.back()};
}

// Runs the event loop until `sock` has a datagram (or 1 s passes); reads it.
bool awaitDatagram(QUdpSocket &sock)
{
    if (!sock.hasPendingDatagrams()) {
        QEventLoop loop;
        QObject::connect(&sock, &QUdpSocket::readyRead, &loop, &QEventLoop::quit);
        QTimer::singleShot(1000, &loop, &QEventLoop::quit);
        loop.exec();
    }
    if (!sock.hasPendingDatagrams())
        return false;
    while (sock.hasPendingDatagrams()) {
        QByteArray d(int(sock.pendingDatagramSize()), '\0');
        sock.readDatagram(d.data(), d.size());
    }
    return true;
}

QByteArray stateReply(uint8_t pgm, uint8_t pvw)
{
    QByteArray rec = QByteArray::fromHex("0102000332043201000000000002000000000000000700000000");
    rec[0] = char(pgm);
    rec[1] = char(pvw);
    QByteArray f = QByteArray::fromHex("a56c3200a5ff0100000000000000000049") + "#\x01#" + rec + "#";
    quint16 sum = 0;
    for (char c : f)
        sum = quint16(sum + uint8_t(c));
    f.append(char(sum & 0xFF));
    f.append(char(sum >> 8));
    f.append(char(0xAE));
    return f;
}

double cpuMs()
{
    rusage r{};
    getrusage(RUSAGE_SELF, &r);
    return r.ru_utime.tv_sec * 1e3 + r.ru_utime.tv_usec / 1e3 + r.ru_stime.tv_sec * 1e3 +
           r.ru_stime.tv_usec / 1e3;
}

void runFor(int ms)
{
    QEventLoop loop;
    QTimer::singleShot(ms, &loop, &QEventLoop::quit);
    loop.exec();
}

} // namespace

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    QLoggingCategory::setFilterRules(QStringLiteral("*.debug=false"));

    QUdpSocket unit;
    if (!unit.bind(UnitIp, Port, Share)) {
        std::fprintf(stderr, "cannot bind %s:%d (run inside tests/netns-run.sh)\n",
                     qPrintable(UnitIp.toString()), Port);
        return 1;
    }
    // The HIS board's address must answer too, or a send to it would fail on loopback.
    QUdpSocket his;
    his.bind(HisIp, Port, Share);

    RVX3210UI panel;
    panel.show();
    panel.DevTypeID(UnitIp.toString(), 0xA5, 0xFF, HisIp.toString(), 0xE0, 0xFF);
    awaitDatagram(unit); // the state read of a freshly bound panel
    // Bring every echo-prone control in line with the replies used below.
    unit.writeDatagram(stateReply(1, 2), QHostAddress::LocalHost, Port);
    runFor(200);
    while (unit.hasPendingDatagrams())
        awaitDatagram(unit);

    // Floor: a bare datagram from a plain socket to the unit's socket.
    QUdpSocket plain;
    plain.bind(QHostAddress(QHostAddress::LocalHost), 0);
    const QByteArray cut = QByteArray::fromHex("a56c1400a5ff01000000000000000000834d03ae");
    std::vector<double> floorUs, cutUs, stateUs;
    QElapsedTimer t;
    for (int i = 0; i < Runs; ++i) {
        t.start();
        plain.writeDatagram(cut, UnitIp, Port);
        if (!awaitDatagram(unit))
            return 1;
        floorUs.push_back(t.nsecsElapsed() / 1e3);
    }

    // CUT click to datagram at the unit. The link reports each frame right after writing it;
    // on loopback the datagram is in the unit's socket by then. The click itself goes on to
    // swap the bus lamps before it returns.
    QPushButton *cutKey = panel.lowerRow()->btnCut();
    std::vector<double> cutWrittenUs;
    qint64 writtenAt = 0;
    auto sent = QObject::connect(panel.link(), &RVX3210_workdata::showCurrentData,
                                 [&] { writtenAt = t.nsecsElapsed(); });
    for (int i = 0; i < Runs; ++i) {
        t.start();
        cutKey->click();
        if (!awaitDatagram(unit))
            return 1;
        cutUs.push_back(t.nsecsElapsed() / 1e3);
        cutWrittenUs.push_back(writtenAt / 1e3);
    }
    QObject::disconnect(sent);

    // State reply from the unit to restyled keys: the fan-out runs inside the link's signal,
    // so a connection made after the panel's fires once the keys have their new sheets.
    bool restyled = false;
    QObject::connect(panel.link(), &RVX3210_workdata::on_signals_3210Data, [&] { restyled = true; });
    QAbstractButton *pgm3 = panel.lowerRow()->pgmGroup()->button(3);
    for (int i = 0; i < Runs; ++i) {
        const uint8_t pgm = (i % 2) ? 3 : 4;
        restyled = false;
        QEventLoop loop;
        auto c =
            QObject::connect(panel.link(), &RVX3210_workdata::on_signals_3210Data, &loop, &QEventLoop::quit);
        t.start();
        unit.writeDatagram(stateReply(pgm, 2), QHostAddress::LocalHost, Port);
        if (!restyled)
            loop.exec();
        stateUs.push_back(t.nsecsElapsed() / 1e3);
        QObject::disconnect(c);
        if (pgm3->styleSheet().contains(QLatin1String(":/images/red/png/3.png")) != (pgm == 3))
            return 1;
    }
    // CPU over 10 s: idle, then with FTB blinking.
    runFor(500);
    double c0 = cpuMs();
    runFor(10000);
    const double idleMs = cpuMs() - c0;
    panel.upperRow()->btnFTB()->click();
    c0 = cpuMs();
    runFor(10000);
    const double blinkMs = cpuMs() - c0;
    panel.upperRow()->btnFTB()->click();

    const Figures f = figures(floorUs), c = figures(cutUs), s = figures(stateUs), w = figures(cutWrittenUs);
    std::printf("| Path | Median (us) | Worst (us) |\n|---|---|---|\n");
    std::printf("| bare UDP datagram, plain socket to unit socket (floor) | %.1f | %.1f |\n", f.median,
                f.worst);
    std::printf("| CUT click to datagram written (in the unit's socket) | %.1f | %.1f |\n", w.median,
                w.worst);
    std::printf("| CUT click to datagram read at the unit (click fully handled first) | %.1f | %.1f |\n",
                c.median, c.worst);
    std::printf("| state reply sent to keys restyled | %.1f | %.1f |\n", s.median, s.worst);
    std::printf("\nCPU over 10 s: idle %.1f ms (%.2f %%), FTB blinking %.1f ms (%.2f %%)\n", idleMs,
                idleMs / 100.0, blinkMs, blinkMs / 100.0);
    return 0;
}
