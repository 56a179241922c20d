// Panel timings against a socket standing in for the unit, the same runs for every panel:
//  - a click on CUT until the datagram is readable at the unit (panels with CUT),
//  - a state reply sent by the unit until the panel has restyled its keys, and repainted them;
//    and one that repeats the last reply (loopback only); panels whose unit reports state,
//  - a PGM key pressed until the click is handled, two keys restyled (loopback only),
//  - a bare datagram between two plain sockets on the same addresses, as the floor,
//  - CPU used by the process over 10 s idle, with FTB blinking, and with AUTO run after AUTO
//    at rate 2 (loopback only).
// What differs between panels is in bench_panels.cpp.

#include "panelbench.h"

#include "SwitcherData/reportinglink.h"
#include "benchclock.h"
#include "testframes.h"

#include <QAbstractButton>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QHBoxLayout>
#include <QNetworkDatagram>
#include <QProcess>
#include <QPushButton>
#include <QTimer>
#include <QUdpSocket>
#include <algorithm>
#include <arpa/inet.h>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <netinet/in.h>
#include <poll.h>
#include <string>
#include <sys/resource.h>
#include <sys/socket.h>
#include <tuple>
#include <unistd.h>
#include <vector>

namespace {

constexpr int Runs = 1000;
constexpr quint16 Port = 7000;
const QHostAddress UnitIp(QStringLiteral("127.0.0.2"));
const QHostAddress HisIp(QStringLiteral("127.0.0.3"));
constexpr auto Share = QAbstractSocket::ShareAddress | QAbstractSocket::ReuseAddressHint;
// A CUT command frame; the floors send the same bytes the click does.
const QByteArray CutFrame = QByteArray::fromHex("a56c1400a5ff01000000000000000000834d03ae");

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

// A state reply of unit A5 FF in the short form: "#", 0x01, "#", the record, "#".
QByteArray stateReply(const QByteArray &record)
{
    return reply(0xA5FF, 0x49, "#\x01#" + record + "#");
}

// CPU time of this (the GUI) thread: what a path costs the panel, whatever else the machine
// runs meanwhile. The wall-clock figures wait for the core as well when it is shared.
qint64 threadCpuNs()
{
    timespec ts{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &ts);
    return qint64(ts.tv_sec) * 1000000000 + ts.tv_nsec;
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

// CLOCK_MONOTONIC is not split by network namespaces, so stamps taken by the bench and by its
// copy in the unit namespace are on the same clock.
qint64 nowNs()
{
    return BenchClock::nowNs();
}

// Counts the style changes (a widget given a new sheet, or repolished with its parent's) the
// application delivers while it lives.
struct StyleChangeCount : QObject
{
    StyleChangeCount() { QCoreApplication::instance()->installEventFilter(this); }
    bool eventFilter(QObject *, QEvent *event) override
    {
        count += event->type() == QEvent::StyleChange;
        return false;
    }
    int count = 0;
};

struct Row
{
    const char *path;
    std::vector<double> us;
};

void printRows(const std::vector<Row> &rows)
{
    std::printf("| Path | Median (us) | Worst (us) |\n|---|---|---|\n");
    for (const Row &row : rows) {
        const Figures f = figures(row.us);
        std::printf("| %s | %.1f | %.1f |\n", row.path, f.median, f.worst);
    }
}

// Clicks `key` again and again for `ms` (a click returns when its run is over); returns the
// number of clicks and the time they took.
std::pair<int, double> clickFor(QPushButton *key, int ms)
{
    QElapsedTimer t;
    t.start();
    int clicks = 0;
    while (t.elapsed() < ms) {
        key->click();
        ++clicks;
    }
    return {clicks, double(t.elapsed())};
}

void printCpu(const char *condition, double cpu, double wallMs)
{
    std::printf("| %s | %.1f ms in %.1f s | %.2f %% |\n", condition, cpu, wallMs / 1e3, cpu / wallMs * 100.0);
}

int loopback(PanelRig &rig, bool restyleOnly)
{
    QUdpSocket unit;
    if (!unit.bind(UnitIp, Port, Share)) {
        std::fprintf(stderr, "cannot bind %s:%d (run inside tests/netns-run.sh)\n",
                     qPrintable(UnitIp.toString()), Port);
        return 1;
    }
    // The HIS board's address must answer too, or a send to it would fail on loopback.
    QUdpSocket his;
    his.bind(HisIp, Port, Share);
    auto reply = [&](uint8_t pgm, uint8_t rate) {
        unit.writeDatagram(stateReply(rig.stateRecord(pgm, rate)), QHostAddress::LocalHost, Port);
    };
    auto drain = [&] {
        while (unit.hasPendingDatagrams())
            awaitDatagram(unit);
    };
    const auto [first, second] = rig.movingInputs();

    rig.panel()->show();
    rig.bind(UnitIp.toString(), HisIp.toString());
    if (rig.reportsState()) {
        awaitDatagram(unit); // the state read of a freshly bound panel
        // Bring every echo-prone control in line with the replies used below.
        reply(1, 0);
    }
    runFor(rig.settleMs());
    drain();

    // Floor: a bare datagram from a plain socket to the unit's socket.
    QUdpSocket plain;
    plain.bind(QHostAddress(QHostAddress::LocalHost), 0);
    std::vector<double> floorUs, cutUs, stateUs;
    QElapsedTimer t;
    for (int i = 0; i < Runs; ++i) {
        t.start();
        plain.writeDatagram(CutFrame, UnitIp, Port);
        if (!awaitDatagram(unit))
            return 1;
        floorUs.push_back(t.nsecsElapsed() / 1e3);
    }

    // CUT click to datagram at the unit. The link reports each frame right after writing it;
    // on loopback the datagram is in the unit's socket by then. The click itself goes on to
    // swap the bus lamps before it returns.
    QPushButton *cutKey = rig.cutKey();
    std::vector<double> cutWrittenUs;
    qint64 writtenAt = 0;
    QMetaObject::Connection sent;
    if (rig.link())
        sent = QObject::connect(rig.link(), &ReportingLink::showCurrentData,
                                [&] { writtenAt = t.nsecsElapsed(); });
    for (int i = 0; cutKey && i < Runs; ++i) {
        t.start();
        cutKey->click();
        if (!awaitDatagram(unit))
            return 1;
        cutUs.push_back(t.nsecsElapsed() / 1e3);
        if (rig.link())
            cutWrittenUs.push_back(writtenAt / 1e3);
    }
    QObject::disconnect(sent);
    // The CUT lamp goes out on a timer; let it, so it does not fall into a state run.
    runFor(500);
    drain();

    // State reply from the unit to restyled keys: the fan-out runs inside the link's signal,
    // so a connection made after the panel's fires once the keys have their new sheets. The
    // repaint they ask for is a posted event, handled right after, so each run starts clean.
    // The replies move PGM between two inputs (two keys change), or repeat one (none does).
    std::vector<double> paintedUs, repeatUs, pressUs, styleChanges, stateCpuUs, pressCpuUs;
    StyleChangeCount styleCount;
    auto stateRuns = [&](bool moving, std::vector<double> &restyled, std::vector<double> *painted) {
        QCoreApplication::sendPostedEvents();
        for (int i = 0; i < Runs; ++i) {
            styleCount.count = 0;
            const uint8_t pgm = uint8_t(moving && i % 2 == 0 ? second : first);
            qint64 restyledAt = -1, cpuAt = 0;
            QEventLoop loop;
            auto c = QObject::connect(rig.link(), &ReportingLink::stateReported, [&] {
                restyledAt = t.nsecsElapsed();
                cpuAt = threadCpuNs();
                loop.quit();
            });
            QTimer::singleShot(1000, &loop, &QEventLoop::quit);
            const qint64 cpu0 = threadCpuNs();
            t.start();
            reply(pgm, 0);
            loop.exec();
            QObject::disconnect(c);
            QCoreApplication::sendPostedEvents();
            if (restyledAt < 0 || rig.pgmLit(first) != (pgm == first))
                return false;
            restyled.push_back(restyledAt / 1e3);
            if (painted) {
                painted->push_back(t.nsecsElapsed() / 1e3);
                styleChanges.push_back(styleCount.count);
                stateCpuUs.push_back((cpuAt - cpu0) / 1e3);
            }
        }
        return true;
    };
    if (rig.reportsState()) {
        if (!stateRuns(true, stateUs, &paintedUs) || !stateRuns(false, repeatUs, nullptr))
            return 1;
        // Nothing the panel was told may have been sent back.
        if (unit.hasPendingDatagrams()) {
            std::fprintf(stderr, "the panel answered a state reply\n");
            return 1;
        }
    }

    // A PGM key pressed, the two inputs in turn: the key lights, the one lit before goes out,
    // and the command is sent. The figure is the whole click (its send is a few us of it).
    QCoreApplication::sendPostedEvents();
    for (int i = 0; i < Runs; ++i) {
        const int input = i % 2 == 0 ? second : first;
        QAbstractButton *key = rig.pgmKey(input);
        const qint64 cpu0 = threadCpuNs();
        t.start();
        key->click();
        pressUs.push_back(t.nsecsElapsed() / 1e3);
        pressCpuUs.push_back((threadCpuNs() - cpu0) / 1e3);
        QCoreApplication::sendPostedEvents();
        if (rig.pgmLit(first) != (input == first)) {
            std::fprintf(stderr, "PGM %d pressed, PGM %d %s\n", input, first,
                         rig.pgmLit(first) ? "lit" : "unlit");
            return 1;
        }
        while (unit.hasPendingDatagrams()) {
            QByteArray d(int(unit.pendingDatagramSize()), '\0');
            unit.readDatagram(d.data(), d.size());
        }
    }

    std::vector<Row> rows = {{"bare UDP datagram, plain socket to the unit's socket (floor)", floorUs}};
    if (!cutWrittenUs.empty())
        rows.push_back({"CUT click to datagram written (in the unit's socket then)", cutWrittenUs});
    if (!cutUs.empty())
        rows.push_back({"CUT click to datagram read at the unit, after the click is fully handled", cutUs});
    if (rig.reportsState()) {
        rows.push_back({"state reply sent by the unit to keys restyled", stateUs});
        rows.push_back({"state reply to keys restyled, CPU time of the GUI thread", stateCpuUs});
        rows.push_back({"state reply sent by the unit to the panel repainted", paintedUs});
        rows.push_back({"state reply repeating the last one to keys restyled", repeatUs});
        rows.push_back({"widgets restyled by a state reply moving two keys (count, not us)", styleChanges});
    }
    rows.push_back({"PGM key press to keys restyled (two keys move)", pressUs});
    rows.push_back({"PGM key press to keys restyled, CPU time of the GUI thread", pressCpuUs});
    if (restyleOnly) {
        printRows(rows);
        return 0;
    }

    // CPU over 10 s: idle, with FTB blinking, then with AUTO clicked again as soon as a run
    // ends, at the rate the unit reports as 2. The runs' one-second guard timers run out
    // first, so they are not counted as idle work.
    runFor(1500);
    double c0 = cpuMs();
    runFor(10000);
    const double idleMs = cpuMs() - c0;
    double blinkMs = -1;
    if (QPushButton *ftb = rig.ftbKey()) {
        ftb->click();
        c0 = cpuMs();
        runFor(10000);
        blinkMs = cpuMs() - c0;
        ftb->click();
    }
    int autoRuns = 0;
    double autoWallMs = 0, autoMs = 0;
    if (rig.autoKey() && rig.link()) {
        reply(1, 2);
        runFor(1500);
        int autoFrames = 0;
        sent = QObject::connect(rig.link(), &ReportingLink::showCurrentData, [&] { ++autoFrames; });
        c0 = cpuMs();
        std::tie(autoRuns, autoWallMs) = clickFor(rig.autoKey(), 10000);
        autoMs = cpuMs() - c0;
        QObject::disconnect(sent);
        // Each run sends AUTO once; a click the panel ignored would leave the figure empty.
        if (autoFrames != autoRuns) {
            std::fprintf(stderr, "%d AUTO clicks sent %d frames\n", autoRuns, autoFrames);
            return 1;
        }
    }

    printRows(rows);
    std::printf("\n| Condition | CPU (user + system) | Share of one core |\n|---|---|---|\n");
    printCpu("panel shown, idle", idleMs, 10000);
    if (blinkMs >= 0)
        printCpu("FTB blinking", blinkMs, 10000);
    if (autoRuns > 0)
        std::printf("| AUTO at rate 2, %d runs back to back (%.0f ms each) | %.1f ms in %.1f s | %.2f %% |\n",
                    autoRuns, autoWallMs / autoRuns, autoMs, autoWallMs / 1e3, autoMs / autoWallMs * 100.0);
    return 0;
}

// The stand-in unit's own addresses on the unit side of the lab. They lie outside the
// emulator's address plan on purpose: the emulator binds every planned address on port 7000,
// and its socket would take the panel's datagrams.
const QString LabUnitIp = QStringLiteral("10.77.250.1");
const QString LabHisIp = QStringLiteral("10.77.250.2");
const QString LabUnitIf = QStringLiteral("kova1");

int bindUnitSocket(const char *addr)
{
    const int fd = socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    if (fd < 0)
        return -1;
    // The emulator's wildcard socket holds port 7000 with address reuse; a socket on one
    // address of the same port must ask for it too, and then gets that address's datagrams.
    const int on = 1;
    setsockopt(fd, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
    setsockopt(fd, SOL_SOCKET, SO_TIMESTAMPNS, &on, sizeof on);
    sockaddr_in a{};
    a.sin_family = AF_INET;
    a.sin_port = htons(Port);
    if (inet_pton(AF_INET, addr, &a.sin_addr) != 1 ||
        bind(fd, reinterpret_cast<const sockaddr *>(&a), sizeof a) != 0) {
        std::fprintf(stderr, "unit: cannot bind %s:%d: %s\n", addr, Port, std::strerror(errno));
        close(fd);
        return -1;
    }
    return fd;
}

void sendTo(int fd, const QByteArray &frame, const sockaddr_in &to)
{
    const qint64 at = nowNs();
    sendto(fd, frame.constData(), size_t(frame.size()), 0, reinterpret_cast<const sockaddr *>(&to),
           sizeof to);
    std::printf("tx @ %lld\n", static_cast<long long>(at));
}

// Reads one datagram; returns its length and the kernel's receive time on the monotonic clock.
ssize_t receive(int fd, char *buf, size_t size, qint64 *arrivedAt)
{
    return BenchClock::receive(fd, buf, size, 0, arrivedAt);
}

// The stand-in unit in the unit namespace. Prints "rx <board> <command> @ <arrived> <awake>"
// for every datagram: the kernel's receive stamp and the moment poll() woke this process. On a
// stdin line "send HEX" it sends those bytes to the panel (port 7000), on "back PORT" a bare
// datagram to that operator port, printing "tx @ <ns>" stamped just before the send. Ends at
// the end of stdin.
int unitCopy(const char *mainIp, const char *hisIp, const char *operatorIp)
{
    const int fds[2] = {bindUnitSocket(mainIp), bindUnitSocket(hisIp)};
    sockaddr_in op{};
    op.sin_family = AF_INET;
    if (fds[0] < 0 || fds[1] < 0 || inet_pton(AF_INET, operatorIp, &op.sin_addr) != 1)
        return 1;
    std::printf("ready\n");
    std::fflush(stdout);
    pollfd p[3] = {{fds[0], POLLIN, 0}, {fds[1], POLLIN, 0}, {STDIN_FILENO, POLLIN, 0}};
    char buf[2048];
    std::string input;
    for (;;) {
        if (poll(p, 3, -1) < 0) {
            if (errno == EINTR)
                continue;
            return 1;
        }
        const qint64 at = nowNs();
        for (int k = 0; k < 2; ++k) {
            if (!(p[k].revents & POLLIN))
                continue;
            qint64 arrivedAt = 0;
            const ssize_t n = receive(fds[k], buf, sizeof buf, &arrivedAt);
            if (n > 0)
                std::printf("rx %s %02x @ %lld %lld\n", k ? "his" : "main",
                            n > 16 ? unsigned(uint8_t(buf[16])) : 0u, static_cast<long long>(arrivedAt),
                            static_cast<long long>(at));
        }
        if (p[2].revents & (POLLIN | POLLHUP)) {
            const ssize_t n = read(STDIN_FILENO, buf, sizeof buf);
            if (n <= 0)
                return 0;
            input.append(buf, size_t(n));
            for (size_t nl; (nl = input.find('\n')) != std::string::npos; input.erase(0, nl + 1)) {
                const QByteArray line = QByteArray::fromStdString(input.substr(0, nl));
                const QList<QByteArray> w = line.split(' ');
                if (w.size() != 2)
                    continue;
                if (w[0] == "send") {
                    op.sin_port = htons(Port);
                    sendTo(fds[0], QByteArray::fromHex(w[1]), op);
                } else if (w[0] == "back") {
                    op.sin_port = htons(quint16(w[1].toUInt()));
                    sendTo(fds[0], CutFrame, op);
                }
            }
        }
        std::fflush(stdout);
    }
}

// Talks to the stand-in unit: its stdout lines, read as they come.
class UnitProcess
{
public:
    bool start(const QString &ns, const QString &operatorIp)
    {
        m_proc.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_proc.start(QStringLiteral("ip"), {QStringLiteral("netns"), QStringLiteral("exec"), ns,
                                            QCoreApplication::applicationFilePath(), QStringLiteral("unit"),
                                            LabUnitIp, LabHisIp, operatorIp});
        return m_proc.waitForStarted(5000) && line(5000) == "ready";
    }
    void stop()
    {
        m_proc.closeWriteChannel();
        if (!m_proc.waitForFinished(3000))
            m_proc.kill();
    }
    QByteArray line(int timeoutMs = 1000)
    {
        while (!m_proc.canReadLine())
            if (!m_proc.waitForReadyRead(timeoutMs))
                return {};
        return m_proc.readLine().trimmed();
    }
    // The stamps of the next line of the given kind ("rx main 83", "tx"); earlier lines of
    // other kinds are skipped. Empty when none comes within a second.
    std::vector<qint64> stamps(const QByteArray &kind)
    {
        for (;;) {
            const QByteArray l = line();
            if (l.isEmpty())
                return {};
            const int at = l.indexOf(" @ ");
            if (at < 0 || l.left(at) != kind)
                continue;
            std::vector<qint64> out;
            for (const QByteArray &w : l.mid(at + 3).split(' '))
                out.push_back(w.toLongLong());
            return out;
        }
    }
    // Lets anything still under way arrive, then throws it away.
    void drain()
    {
        while (m_proc.waitForReadyRead(20))
            m_proc.readAll();
        m_proc.readAll();
    }
    void send(const QByteArray &command) { m_proc.write(command + '\n'); }

private:
    QProcess m_proc;
};

int lab(PanelRig &rig)
{
    const QString ns = qEnvironmentVariable("LAB_UNIT_NS");
    const QString op = qEnvironmentVariable("LAB_OPERATOR");
    if (ns.isEmpty() || op.isEmpty()) {
        std::fprintf(stderr, "lab mode runs as the command of lab/lab.sh (see run.sh --lab)\n");
        return 2;
    }
    for (const QString &ip : {LabUnitIp, LabHisIp}) {
        if (QProcess::execute(QStringLiteral("ip"),
                              {QStringLiteral("-n"), ns, QStringLiteral("addr"), QStringLiteral("add"),
                               ip + QStringLiteral("/32"), QStringLiteral("dev"), LabUnitIf}) != 0) {
            std::fprintf(stderr, "cannot add %s to the unit namespace\n", qPrintable(ip));
            return 1;
        }
    }
    UnitProcess unit;
    if (!unit.start(ns, op)) {
        std::fprintf(stderr, "the stand-in unit did not start\n");
        return 1;
    }

    auto reply = [&](uint8_t pgm) { unit.send("send " + stateReply(rig.stateRecord(pgm, 0)).toHex()); };
    const auto [first, second] = rig.movingInputs();
    rig.panel()->show();
    rig.bind(LabUnitIp, LabHisIp);
    runFor(100);
    reply(1);
    runFor(200);
    unit.drain();

    // Floor, both ways: a bare datagram from a plain socket to the unit, and one from the unit
    // to a plain socket on the operator side, received through the event loop as the panel does.
    QUdpSocket plain;
    if (!plain.bind(QHostAddress(op), 0))
        return 1;
    const QHostAddress unitIp(LabUnitIp);
    std::vector<double> floorInUs, floorAwakeUs, floorBackUs, cutInUs, cutAwakeUs, cutWrittenUs, stateUs,
        paintedUs;
    for (int i = 0; i < Runs; ++i) {
        const qint64 t0 = nowNs();
        plain.writeDatagram(CutFrame, unitIp, Port);
        const std::vector<qint64> at = unit.stamps("rx main 83");
        if (at.size() != 2)
            return 1;
        floorInUs.push_back((at[0] - t0) / 1e3);
        floorAwakeUs.push_back((at[1] - t0) / 1e3);
    }
    const QByteArray back = "back " + QByteArray::number(plain.localPort());
    for (int i = 0; i < Runs; ++i) {
        qint64 at = -1;
        QEventLoop loop;
        auto c = QObject::connect(&plain, &QUdpSocket::readyRead, [&] {
            at = nowNs();
            while (plain.hasPendingDatagrams())
                plain.receiveDatagram();
            loop.quit();
        });
        QTimer::singleShot(1000, &loop, &QEventLoop::quit);
        unit.send(back);
        loop.exec();
        QObject::disconnect(c);
        const std::vector<qint64> sentAt = unit.stamps("tx");
        if (at < 0 || sentAt.size() != 1)
            return 1;
        floorBackUs.push_back((at - sentAt[0]) / 1e3);
    }

    // CUT click to arrival at the unit: the unit stamps the arrival itself, so the rest of the
    // click (the bus lamps) does not hide in the figure as it does on loopback. Clicks follow
    // each other at once, as on loopback; one click sends one datagram.
    QPushButton *cutKey = rig.cutKey();
    qint64 writtenAt = 0;
    auto sent = QObject::connect(rig.link(), &ReportingLink::showCurrentData, [&] { writtenAt = nowNs(); });
    for (int i = 0; cutKey && i < Runs; ++i) {
        const qint64 t0 = nowNs();
        cutKey->click();
        const std::vector<qint64> at = unit.stamps("rx main 83");
        if (at.size() != 2)
            return 1;
        cutInUs.push_back((at[0] - t0) / 1e3);
        cutAwakeUs.push_back((at[1] - t0) / 1e3);
        cutWrittenUs.push_back((writtenAt - t0) / 1e3);
    }
    QObject::disconnect(sent);
    // The CUT lamp goes out on a timer; let it, so it does not fall into a state run.
    runFor(500);
    unit.drain();

    // State reply sent by the unit to restyled keys, stamped by a connection made after the
    // panel's, so it fires once the keys have their new sheets; then to the repaint that follows
    // as posted events. The clicks' own repaints are done first.
    QCoreApplication::sendPostedEvents();
    for (int i = 0; i < Runs; ++i) {
        const uint8_t pgm = uint8_t((i % 2) ? first : second);
        qint64 restyledAt = -1;
        QEventLoop loop;
        auto c = QObject::connect(rig.link(), &ReportingLink::stateReported, [&] {
            restyledAt = nowNs();
            loop.quit();
        });
        QTimer::singleShot(1000, &loop, &QEventLoop::quit);
        reply(pgm);
        loop.exec();
        QObject::disconnect(c);
        QCoreApplication::sendPostedEvents();
        const qint64 paintedAt = nowNs();
        const std::vector<qint64> sentAt = unit.stamps("tx");
        if (restyledAt < 0 || sentAt.size() != 1)
            return 1;
        stateUs.push_back((restyledAt - sentAt[0]) / 1e3);
        paintedUs.push_back((paintedAt - sentAt[0]) / 1e3);
        if (rig.pgmLit(first) != (pgm == first))
            return 1;
    }
    unit.stop();

    std::vector<Row> rows = {
        {"bare UDP datagram, plain socket to the unit's socket (floor)", floorInUs},
        {"the same, to the unit process awake", floorAwakeUs},
    };
    if (cutKey) {
        rows.push_back({"CUT click to datagram written", cutWrittenUs});
        rows.push_back({"CUT click to datagram in the unit's socket", cutInUs});
        rows.push_back({"CUT click to the unit process awake with it", cutAwakeUs});
    }
    rows.push_back(
        {"bare UDP datagram, unit to a plain socket read through the event loop (floor)", floorBackUs});
    rows.push_back({"state reply sent by the unit to keys restyled", stateUs});
    rows.push_back({"state reply sent by the unit to the panel repainted", paintedUs});
    printRows(rows);
    return 0;
}

} // namespace

int runLoopback(PanelRig &rig, bool restyleOnly)
{
    return loopback(rig, restyleOnly);
}

int runLab(PanelRig &rig)
{
    return lab(rig);
}

int runUnit(const char *mainIp, const char *hisIp, const char *operatorIp)
{
    return unitCopy(mainIp, hisIp, operatorIp);
}

int runFloor(const std::vector<SheetPair> &pairs)
{
    std::vector<Row> rows;
    std::vector<std::vector<double>> wall(pairs.size()), cpu(pairs.size());
    for (size_t i = 0; i < pairs.size(); ++i) {
        const SheetPair &pair = pairs[i];
        QWidget window;
        QHBoxLayout layout(&window);
        QPushButton out, in;
        for (QPushButton *key : {&out, &in}) {
            key->setFixedSize(70, 55);
            layout.addWidget(key);
        }
        out.setStyleSheet(pair.lit);
        in.setStyleSheet(pair.unlit);
        window.show();
        runFor(200);
        for (int run = 0; run < Runs; ++run) {
            // Each run swaps the lamps of the one before, painted in between as on a panel.
            const bool even = run % 2 == 0;
            const qint64 cpu0 = threadCpuNs();
            const qint64 t0 = nowNs();
            out.setStyleSheet(even ? pair.unlit : pair.lit);
            in.setStyleSheet(even ? pair.lit : pair.unlit);
            const qint64 t1 = nowNs();
            const qint64 cpu1 = threadCpuNs();
            wall[i].push_back((t1 - t0) / 1e3);
            cpu[i].push_back((cpu1 - cpu0) / 1e3);
            QCoreApplication::processEvents();
        }
    }
    std::vector<std::string> names;
    for (size_t i = 0; i < pairs.size(); ++i) {
        names.push_back(std::string("two bare keys swapping ") + pairs[i].what);
        names.push_back(names.back() + ", CPU time of the GUI thread");
    }
    for (size_t i = 0; i < pairs.size(); ++i) {
        rows.push_back({names[2 * i].c_str(), wall[i]});
        rows.push_back({names[2 * i + 1].c_str(), cpu[i]});
    }
    printRows(rows);
    return 0;
}
