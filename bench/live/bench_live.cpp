// The live coordinator on loopback, one RVX5310 panel open against a stand-in unit:
//   1. an OSC command (/kova/pgm) until the unit's socket holds the PGM frame;
//   2. a state reply from the unit until an OSC subscriber's socket holds /kova/pgm;
//   3. the same reply until the tally listener's socket holds the new programme input's packet;
//   4. a flood of 1,000 OSC datagrams a second for 10 s (commands that do not wait, refused
//      ones and garbage): the GUI thread's longest block, seen as the longest gap between ticks
//      of a 1 ms timer, and the process's resident memory.
// The unit, the subscriber and the tally listener are plain sockets read by a thread of their
// own; each datagram carries the kernel's stamp of its arrival in the socket and the stamp of
// the read, so neither waits for the GUI thread being measured.
//
//   bench_live [RUNS [FLOOD_SECONDS]]   (2000 runs and 10 s by default)
//
// Run only inside tests/netns-run.sh (see run.sh): it opens sockets on loopback.
#include "RVX5310/rvx5310dialog.h"
#include "SwitcherData/rvx5all_workdata.h"
#include "app/liveproduction.h"
#include "benchclock.h"
#include "testframes.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QLoggingCategory>
#include <QTimer>
#include <algorithm>
#include <arpa/inet.h>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <deque>
#include <functional>
#include <mutex>
#include <netinet/in.h>
#include <optional>
#include <poll.h>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

constexpr quint16 UnitPort = 7000;
constexpr quint16 OscPort = 9000;
constexpr quint16 TallyPort = 8900;
constexpr quint16 SubscriberPort = 9100;
constexpr int WarmUp = 100;
constexpr int FloodRate = 1000; // datagrams a second

// "/kova/pgm i 2" as the wire carries it: address and type tag padded to four bytes, then a
// big-endian int32.
const QByteArray PgmTwo = QByteArray::fromHex("2f6b6f76612f70676d0000002c69000000000002");

using BenchClock::nowNs;

sockaddr_in address(const char *ip, quint16 port)
{
    sockaddr_in a{};
    a.sin_family = AF_INET;
    a.sin_port = htons(port);
    inet_pton(AF_INET, ip, &a.sin_addr);
    return a;
}

int boundSocket(const char *ip, quint16 port)
{
    const int fd = socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    const int on = 1;
    setsockopt(fd, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
    setsockopt(fd, SOL_SOCKET, SO_TIMESTAMPNS, &on, sizeof on);
    const sockaddr_in a = address(ip, port);
    if (fd < 0 || bind(fd, reinterpret_cast<const sockaddr *>(&a), sizeof a) != 0) {
        std::fprintf(stderr, "cannot bind %s:%d (run inside tests/netns-run.sh)\n", ip, port);
        std::exit(1);
    }
    return fd;
}

void sendTo(int fd, const QByteArray &bytes, const sockaddr_in &to)
{
    sendto(fd, bytes.constData(), size_t(bytes.size()), MSG_DONTWAIT, reinterpret_cast<const sockaddr *>(&to),
           sizeof to);
}

QByteArray oscString(const QByteArray &s)
{
    QByteArray b = s + '\0';
    while (b.size() % 4)
        b.append('\0');
    return b;
}

QByteArray oscInt(const char *path, qint32 v)
{
    const quint32 be = htonl(quint32(v));
    return oscString(path) + oscString(",i") + QByteArray(reinterpret_cast<const char *>(&be), 4);
}

QByteArray oscText(const char *path, const char *text)
{
    return oscString(path) + oscString(",s") + oscString(text);
}

QByteArray oscFloat(const char *path, float f)
{
    quint32 bits = 0;
    std::memcpy(&bits, &f, 4);
    const quint32 be = htonl(bits);
    return oscString(path) + oscString(",f") + QByteArray(reinterpret_cast<const char *>(&be), 4);
}

// A state reply of unit A5 FF in the short form ("#", 0x01, "#", the record, "#"), carrying the
// RVX5310's 25-byte record with PGM `pgm` and PVW 2: MIX, CH1 IN1 at 50, CH2 IN2 at 60, FADE,
// wipe U, PIP off, border 0/0/2, size L at 0/0, 1080P60, the rest off.
QByteArray stateReply(uint8_t pgm)
{
    QByteArray record = QByteArray::fromHex("0102010332043c020200000000020200000000000007000000");
    record[0] = char(pgm);
    return reply(0xA5FF, 0x49, "#\x01#" + record + "#");
}

long rssKiB()
{
    long pages = 0, resident = 0;
    if (FILE *f = std::fopen("/proc/self/statm", "r")) {
        if (std::fscanf(f, "%ld %ld", &pages, &resident) != 2)
            resident = 0;
        std::fclose(f);
    }
    return resident * (sysconf(_SC_PAGESIZE) / 1024);
}

QByteArray loadAverage()
{
    char buf[64] = {};
    if (FILE *f = std::fopen("/proc/loadavg", "r")) {
        if (!std::fgets(buf, sizeof buf, f))
            buf[0] = 0;
        std::fclose(f);
    }
    return QByteArray(buf).split(' ').mid(0, 3).join(' ');
}

void runFor(int ms)
{
    QEventLoop loop;
    QTimer::singleShot(ms, &loop, &QEventLoop::quit);
    loop.exec();
}

struct Arrival
{
    QByteArray bytes;
    qint64 inSocket; // the kernel's stamp, on the monotonic clock
    qint64 read;
};

// The stand-in unit (127.0.0.2:7000), the tally listener and the OSC subscriber, read by one
// thread. While keeping, each datagram is queued for await(); while only counting (the flood),
// nothing is queued and the GUI thread is never woken.
class Listeners
{
public:
    enum Which
    {
        Unit,
        Tally,
        Subscriber,
        Count
    };

    Listeners()
    {
        m_fds[Unit] = boundSocket("127.0.0.2", UnitPort);
        m_fds[Tally] = boundSocket("127.0.0.1", TallyPort);
        m_fds[Subscriber] = boundSocket("127.0.0.1", SubscriberPort);
        m_thread = std::thread([this] { run(); });
    }
    ~Listeners()
    {
        m_stop = true;
        m_thread.join();
        for (int fd : m_fds)
            close(fd);
    }
    int fd(Which w) const { return m_fds[w]; }
    void setKeeping(bool keep) { m_keep = keep; }
    long count(Which w) const { return m_count[w]; }
    long busFrames() const { return m_busFrames; }

    // Runs the event loop until a datagram that arrived on `w` after `since` matches; the ones
    // before it are dropped.
    std::optional<Arrival> await(Which w, qint64 since, const std::function<bool(const QByteArray &)> &match)
    {
        std::optional<Arrival> got;
        QEventLoop loop;
        // Later wake-ups may run before the loop has returned; they must not lose the match.
        m_wake = [&] {
            if (!got && (got = take(w, since, match)))
                loop.quit();
        };
        QTimer::singleShot(1000, &loop, &QEventLoop::quit);
        m_wake();
        if (!got)
            loop.exec();
        m_wake = nullptr;
        return got;
    }

private:
    std::optional<Arrival> take(Which w, qint64 since, const std::function<bool(const QByteArray &)> &match)
    {
        std::lock_guard<std::mutex> lock(m_mutex);
        std::deque<Arrival> &q = m_queue[w];
        while (!q.empty()) {
            Arrival a = std::move(q.front());
            q.pop_front();
            if (a.inSocket >= since && match(a.bytes))
                return a;
        }
        return std::nullopt;
    }

    void run()
    {
        pollfd p[Count];
        for (int i = 0; i < Count; ++i)
            p[i] = {m_fds[i], POLLIN, 0};
        char buf[2048];
        while (!m_stop) {
            if (poll(p, Count, 50) <= 0)
                continue;
            for (int i = 0; i < Count; ++i) {
                if (!(p[i].revents & POLLIN))
                    continue;
                qint64 inSocket = 0;
                const ssize_t n = receive(p[i].fd, buf, sizeof buf, &inSocket);
                if (n < 0)
                    continue;
                ++m_count[i];
                if (i == Unit && n > 16 && (uint8_t(buf[16]) == 0x80 || uint8_t(buf[16]) == 0x81))
                    ++m_busFrames;
                if (!m_keep)
                    continue;
                {
                    std::lock_guard<std::mutex> lock(m_mutex);
                    m_queue[i].push_back({QByteArray(buf, int(n)), inSocket, nowNs()});
                }
                QMetaObject::invokeMethod(
                    &m_waker,
                    [this] {
                        if (m_wake)
                            m_wake();
                    },
                    Qt::QueuedConnection);
            }
        }
    }

    static ssize_t receive(int fd, char *buf, size_t size, qint64 *inSocket)
    {
        return BenchClock::receive(fd, buf, size, MSG_DONTWAIT, inSocket);
    }

    int m_fds[Count] = {};
    std::thread m_thread;
    std::atomic<bool> m_stop{false};
    std::atomic<bool> m_keep{true};
    std::atomic<long> m_count[Count] = {};
    std::atomic<long> m_busFrames{0};
    std::mutex m_mutex;
    std::deque<Arrival> m_queue[Count];
    QObject m_waker;              // lives on the GUI thread: the wake-ups run there
    std::function<void()> m_wake; // GUI thread only
};

struct Row
{
    const char *path;
    std::vector<qint64> ns;
};

double percentileUs(std::vector<qint64> v, double p)
{
    std::sort(v.begin(), v.end());
    return v.empty() ? 0 : double(v[size_t(p * double(v.size() - 1))]) / 1000.0;
}

void printRows(const std::vector<Row> &rows)
{
    std::printf("| Path | Median (us) | p99 (us) | Worst (us) |\n|---|---|---|---|\n");
    for (const Row &r : rows)
        std::printf("| %s | %.1f | %.1f | %.1f |\n", r.path, percentileUs(r.ns, 0.5),
                    percentileUs(r.ns, 0.99), percentileUs(r.ns, 1.0));
}

// The flood's messages, in the order they repeat: commands that act at once, refused ones
// (out of range, wrong type, unknown address) and datagrams that are not OSC at all. CUT, AUTO
// and FTB are left out: their runs wait inside the click by design.
// The first BusMessages of them each send a PGM or PVW frame to the unit.
constexpr size_t BusMessages = 7;
std::vector<QByteArray> floodMessages()
{
    std::vector<QByteArray> m;
    for (int i = 1; i <= 4; ++i)
        m.push_back(oscInt("/kova/pgm", i));
    for (int i = 1; i <= 3; ++i)
        m.push_back(oscInt("/kova/pvw", 5 - i));
    m.push_back(oscText("/kova/key", "pip"));
    m.push_back(oscInt("/kova/pip", 0));
    m.push_back(oscString("/kova/still") + oscString(","));
    m.push_back(oscText("/kova/transition", "fade"));
    m.push_back(oscFloat("/kova/fader", 0.25f));
    m.push_back(oscFloat("/kova/fader", 0.75f));
    m.push_back(oscInt("/kova/pgm", 99));
    m.push_back(oscText("/kova/nothing", "x"));
    m.push_back(QByteArray::fromHex("2f6b6f76612f70676d0000002c6900")); // cut short
    return m;
}

struct FloodResult
{
    long sent = 0;
    long busCommands = 0;
    long errors = 0; // /kova/error replies read back
};

// Sends FloodRate datagrams a second for `seconds` from a socket of its own, one every
// millisecond on an absolute schedule; every 17th is random bytes.
FloodResult flood(int seconds)
{
    FloodResult r;
    const int fd = boundSocket("127.0.0.1", 0);
    const sockaddr_in remote = address("127.0.0.1", OscPort);
    const std::vector<QByteArray> messages = floodMessages();
    quint32 seed = 12345;
    timespec next{};
    clock_gettime(CLOCK_MONOTONIC, &next);
    char buf[512];
    for (int i = 0; i < FloodRate * seconds; ++i) {
        QByteArray d;
        if (i % 17 == 16) {
            d.resize(int(seed % 60) + 1);
            for (char &c : d)
                c = char((seed = seed * 1103515245 + 12345) >> 16);
        } else {
            d = messages[size_t(i) % messages.size()];
            r.busCommands += size_t(i) % messages.size() < BusMessages;
        }
        sendTo(fd, d, remote);
        ++r.sent;
        while (recv(fd, buf, sizeof buf, MSG_DONTWAIT) > 0)
            ++r.errors;
        next.tv_nsec += 1000000000 / FloodRate;
        if (next.tv_nsec >= 1000000000) {
            next.tv_nsec -= 1000000000;
            ++next.tv_sec;
        }
        clock_nanosleep(CLOCK_MONOTONIC, TIMER_ABSTIME, &next, nullptr);
    }
    usleep(200000);
    while (recv(fd, buf, sizeof buf, MSG_DONTWAIT) > 0)
        ++r.errors;
    close(fd);
    return r;
}

// The gaps between ticks of a 1 ms timer on the GUI thread over `ms`; `everySecond` runs on the
// GUI thread once a second (the RSS readings).
std::vector<qint64> tickGaps(int ms, const std::function<void()> &everySecond = nullptr)
{
    // Filled in place: the storage is touched before the run, so it does not show as growth
    // in the RSS readings.
    std::vector<qint64> gaps(size_t(ms) * 2);
    size_t n = 0;
    QTimer tick;
    tick.setTimerType(Qt::PreciseTimer);
    tick.setInterval(1);
    qint64 last = nowNs();
    QObject::connect(&tick, &QTimer::timeout, [&] {
        const qint64 t = nowNs();
        if (n < gaps.size())
            gaps[n++] = t - last;
        last = t;
    });
    QTimer second;
    if (everySecond)
        QObject::connect(&second, &QTimer::timeout, everySecond);
    second.start(1000);
    tick.start();
    runFor(ms);
    gaps.resize(n);
    return gaps;
}

int bench(int runs, int floodSeconds)
{
    Listeners listen;
    // The HIS board's address must answer too, or a send to it would fail on loopback.
    const int his = boundSocket("127.0.0.3", UnitPort);
    const sockaddr_in panelLink = address("127.0.0.1", UnitPort);
    const sockaddr_in remote = address("127.0.0.1", OscPort);

    LiveOptions options;
    options.oscPort = OscPort;
    options.oscBind = QStringLiteral("127.0.0.1");
    options.tslTargets = QStringList{QStringLiteral("127.0.0.1:%1").arg(TallyPort)};
    LiveProduction live(options);
    QString error;
    if (!live.start(&error)) {
        std::fprintf(stderr, "%s\n", qPrintable(error));
        return 1;
    }
    RVX5310Dialog panel;
    panel.show();
    panel.DevTypeID(QStringLiteral("127.0.0.2"), 0xA5, 0xFF, QStringLiteral("127.0.0.3"), 0xE0, 0xFF);
    live.panelOpened(&panel, panel.link(), PanelKind::Rvx5310,
                     UnitModels::forPanel(PanelKind::Rvx5310).childTypes[0]);
    // Stamped by a connection made after the panel's and the coordinator's: the GUI thread is
    // done with the reply then.
    qint64 handledAt = 0;
    QObject::connect(panel.link(), &ReportingLink::stateReported, [&] { handledAt = nowNs(); });

    const int osc = boundSocket("127.0.0.1", 0);
    if (oscInt("/kova/pgm", 2) != PgmTwo) {
        std::fprintf(stderr, "the OSC builder disagrees with the literal message\n");
        return 1;
    }
    sendTo(osc, oscInt("/kova/subscribe", SubscriberPort), remote);
    sendTo(listen.fd(Listeners::Unit), stateReply(1), panelLink); // answers the bound panel's read
    runFor(300);

    // Floor: a bare datagram from the GUI thread to the unit's socket and its reading thread.
    std::vector<qint64> floorIn, floorRead, cmdIn, cmdRead, subIn, subRead, tallyIn, tallyRead, handled;
    for (int i = 0; i < WarmUp + runs; ++i) {
        const qint64 t0 = nowNs();
        sendTo(osc, "floor", address("127.0.0.2", UnitPort));
        const auto a = listen.await(Listeners::Unit, t0, [](const QByteArray &b) { return b == "floor"; });
        if (!a)
            return 1;
        if (i >= WarmUp) {
            floorIn.push_back(a->inSocket - t0);
            floorRead.push_back(a->read - t0);
        }
    }

    // 1. /kova/pgm to the PGM frame at the unit (command 0x80, the input after it).
    for (int i = 0; i < WarmUp + runs; ++i) {
        const int input = 2 + i % 2;
        const QByteArray message = input == 2 ? PgmTwo : oscInt("/kova/pgm", input);
        const qint64 t0 = nowNs();
        sendTo(osc, message, remote);
        const auto a = listen.await(Listeners::Unit, t0, [input](const QByteArray &b) {
            return b.size() > 17 && uint8_t(b[16]) == 0x80 && b[17] == char(input);
        });
        if (!a) {
            std::fprintf(stderr, "no PGM %d frame reached the unit\n", input);
            return 1;
        }
        if (i >= WarmUp) {
            cmdIn.push_back(a->inSocket - t0);
            cmdRead.push_back(a->read - t0);
        }
    }

    // 2 and 3. A state reply moving PGM between 3 and 4 (PVW stays 2) to the subscriber's
    // /kova/pgm and to the tally packet lighting the new input red (index at 6, control at 8).
    for (int i = 0; i < WarmUp + runs; ++i) {
        const uint8_t pgm = i % 2 ? 3 : 4;
        const QByteArray pushed = oscInt("/kova/pgm", pgm);
        handledAt = 0;
        const qint64 t0 = nowNs();
        sendTo(listen.fd(Listeners::Unit), stateReply(pgm), panelLink);
        const auto s =
            listen.await(Listeners::Subscriber, t0, [&](const QByteArray &b) { return b == pushed; });
        const auto t = listen.await(Listeners::Tally, t0, [pgm](const QByteArray &b) {
            return b.size() > 9 && uint8_t(b[6]) == pgm && b[7] == 0 && (uint8_t(b[8]) & 3) == 1;
        });
        if (!s || !t) {
            std::fprintf(stderr, "PGM %d: %s\n", pgm, s ? "no tally packet" : "no /kova/pgm pushed");
            return 1;
        }
        if (i >= WarmUp) {
            subIn.push_back(s->inSocket - t0);
            subRead.push_back(s->read - t0);
            tallyIn.push_back(t->inSocket - t0);
            tallyRead.push_back(t->read - t0);
            handled.push_back(handledAt - t0);
        }
    }

    std::printf("%d runs after %d for warming up; load average %s\n\n", runs, WarmUp,
                loadAverage().constData());
    printRows({
        {"floor: bare datagram, GUI thread to the unit's socket", floorIn},
        {"floor: the same, read by the listening thread", floorRead},
        {"1. /kova/pgm sent to PGM frame in the unit's socket", cmdIn},
        {"1. the same, read by the listening thread", cmdRead},
        {"2/3. state reply sent to the GUI thread done with it", handled},
        {"2. state reply sent to /kova/pgm in the subscriber's socket", subIn},
        {"2. the same, read by the listening thread", subRead},
        {"3. state reply sent to tally packet in the listener's socket", tallyIn},
        {"3. the same, read by the listening thread", tallyRead},
    });

    // 4. The flood. The listeners only count from here: nothing wakes the GUI thread but the
    // remote's socket and the panel's own timers.
    listen.setKeeping(false);
    const std::vector<qint64> idle = tickGaps(2000);
    const long unitBefore = listen.busFrames();
    const long subBefore = listen.count(Listeners::Subscriber);
    std::vector<long> rss{rssKiB()};
    rss.reserve(size_t(floodSeconds) + 2);
    FloodResult result;
    std::thread sender([&] { result = flood(floodSeconds); });
    const std::vector<qint64> gaps = tickGaps(floodSeconds * 1000 + 300, [&] { rss.push_back(rssKiB()); });
    sender.join();
    runFor(200);
    rss.push_back(rssKiB());
    const auto worstMs = [](const std::vector<qint64> &g) { return percentileUs(g, 1.0) / 1000.0; };
    const auto over = [](const std::vector<qint64> &g, qint64 ns) {
        return std::count_if(g.begin(), g.end(), [ns](qint64 x) { return x > ns; });
    };
    std::printf("\nFlood: %ld datagrams in %d s; %ld PGM/PVW commands, %ld bus frames at the unit, "
                "%ld /kova/error replies, %ld messages pushed to the subscriber\n",
                result.sent, floodSeconds, result.busCommands, listen.busFrames() - unitBefore, result.errors,
                listen.count(Listeners::Subscriber) - subBefore);
    std::printf(
        "| 1 ms timer on the GUI thread | ticks | median gap | p99 gap | longest gap | gaps > 5 ms |\n"
        "|---|---|---|---|---|---|\n");
    std::printf("| idle, 2 s before | %zu | %.2f ms | %.2f ms | %.2f ms | %ld |\n", idle.size(),
                percentileUs(idle, 0.5) / 1000, percentileUs(idle, 0.99) / 1000, worstMs(idle),
                long(over(idle, 5000000)));
    std::printf("| flood, %d s | %zu | %.2f ms | %.2f ms | %.2f ms | %ld |\n", floodSeconds, gaps.size(),
                percentileUs(gaps, 0.5) / 1000, percentileUs(gaps, 0.99) / 1000, worstMs(gaps),
                long(over(gaps, 5000000)));
    std::printf("\nRSS (KiB) at the start, then each second, then at the end:");
    for (long kib : rss)
        std::printf(" %ld", kib);
    std::printf("\nload average %s\n", loadAverage().constData());
    close(his);
    close(osc);
    return 0;
}

} // namespace

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    QLoggingCategory::setFilterRules(QStringLiteral("*.debug=false\nkova.*.info=false"));
    const int runs = argc > 1 ? std::max(1, std::atoi(argv[1])) : 2000;
    const int floodSeconds = argc > 2 ? std::max(1, std::atoi(argv[2])) : 10;
    return bench(runs, floodSeconds);
}
