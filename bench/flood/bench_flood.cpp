// Floods an open panel or the search window through their real sockets and measures what an
// operator would notice:
//   - the longest time the GUI thread was kept from its event loop (gap between two ticks of a
//     1 ms timer), over the flood and the drain after it,
//   - the state replies the panel applied, and the datagrams the kernel dropped at its socket,
//   - resident memory before and after the flood, and its peak,
//   - a CUT click posted to the GUI thread every 100 ms until the frame arrives at the unit,
//   - after the flood, one more state reply until the panel shows it.
//
//   bench_flood panel  [RATE] [SECONDS] [valid|hostile]
//   bench_flood search [RATE] [SECONDS]
//   bench_flood flood  HOST PORT RATE SECONDS PROFILE    (the flooder, started by the above)
//
// Profiles: "valid" sends random, well-formed state replies and well-summed frames whose
// payloads lie; "hostile" adds frames whose length field lies and oversized datagrams (2 to
// 60 KB), either of which stalls the RVX3210 link for good as the protocol has it, after which
// every datagram is read and dropped. "search" sends search replies of random units, lying
// frames and oversized datagrams. The flooder is a separate process so it does not share the
// GUI thread's core more than a second program on the machine would.
//
// Run only inside tests/netns-run.sh (see run.sh): it opens sockets on loopback.
#include "RVX3210/below_widget.h"
#include "RVX3210/rvx3210ui.h"
#include "SwitcherData/rvx3210_workdata.h"
#include "app/showsearch.h"

#include <QAbstractButton>
#include <QApplication>
#include <QButtonGroup>
#include <QElapsedTimer>
#include <QFile>
#include <QListWidget>
#include <QProcess>
#include <QPushButton>
#include <QRandomGenerator>
#include <QTimer>
#include <QUdpSocket>
#include <algorithm>
#include <arpa/inet.h>
#include <atomic>
#include <condition_variable>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <malloc.h>
#include <mutex>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

constexpr quint16 Port = 7000;
const char *const UnitIp = "127.0.0.2";
const char *const HisIp = "127.0.0.3";
const char *const StrangerIp = "127.0.0.9";

qint64 nowNs()
{
    timespec ts{};
    clock_gettime(CLOCK_MONOTONIC, &ts);
    return qint64(ts.tv_sec) * 1000000000 + ts.tv_nsec;
}

QByteArray seal(QByteArray body)
{
    quint16 sum = 0;
    for (char c : body)
        sum = quint16(sum + uint8_t(c));
    return body.append(char(sum & 0xFF)).append(char(sum >> 8)).append(char(0xAE));
}

// A reply from a unit: head with the length of the whole frame, then data, sealed.
QByteArray frame(uint8_t devClass, uint8_t cmd, const QByteArray &data, uint8_t childType = 0)
{
    QByteArray f = QByteArray::fromHex("a56c0000") + char(devClass) + char(0xFF) +
                   QByteArray::fromHex("01000000000000") + char(0) + char(childType) + char(0) + char(cmd) +
                   data;
    const int len = f.size() + 3;
    f[2] = char(len & 0xFF);
    f[3] = char(len >> 8);
    return seal(f);
}

QByteArray stateReply(const QByteArray &record)
{
    return frame(0xA5, 0x49, "#\x01#" + record + "#");
}

// A record the panel can show: buses 1-4, levels and positions anywhere in their ranges.
QByteArray randomRecord(QRandomGenerator &rng)
{
    QByteArray r = QByteArray::fromHex("0102000332043201000000000002000000000000000700000000");
    r[0] = char(rng.bounded(1, 5));
    r[1] = char(rng.bounded(1, 5));
    r[4] = char(rng.bounded(0, 101));
    r[6] = char(rng.bounded(0, 101));
    r[7] = char(rng.bounded(1, 7));
    r[9] = char(rng.bounded(2));
    r[10] = char(rng.bounded(2));
    r[14] = char(rng.bounded(0, 4));
    r[15] = char(rng.bounded(0, 8));
    r[16] = char(rng.bounded(256));
    r[17] = char(rng.bounded(0, 5));
    r[18] = char(rng.bounded(256));
    r[20] = char(rng.bounded(0, 5));
    // The separator may not occur inside a record.
    for (char &c : r)
        if (c == '#')
            c = 0x22;
    return r;
}

QByteArray randomBytes(QRandomGenerator &rng, int n)
{
    QByteArray b(n, '\0');
    for (char &c : b)
        c = char(rng.bounded(256));
    return b;
}

// Well-summed frames whose payloads are cut short, lie about lengths or sit on the wrong board.
QByteArray liar(QRandomGenerator &rng)
{
    switch (rng.bounded(4)) {
    case 0:
        return frame(0xA5, 0x49, "#\x01#" + randomBytes(rng, rng.bounded(0, 30)).replace('#', '"'));
    case 1:
        return frame(0xA5, 0x49, QByteArray(rng.bounded(14, 20), '#') + randomBytes(rng, 4));
    case 2:
        return frame(0xE0, 0x24, QByteArray(1, '\0') + randomBytes(rng, rng.bounded(0, 30)));
    default:
        return frame(0xE0, 0x6A, QByteArray::fromHex("0003ff") + randomBytes(rng, rng.bounded(0, 24)));
    }
}

std::vector<QByteArray> pool(const QByteArray &profile, QRandomGenerator &rng)
{
    std::vector<QByteArray> out;
    for (int i = 0; i < 4096; ++i) {
        const int pick = rng.bounded(100);
        if (profile == "search") {
            const QByteArray id = randomBytes(rng, 3);
            if (pick < 70)
                out.push_back(frame(0xA5, 0xFF, "\x01Flood " + QByteArray::number(i) + "-V1" + id, 0x21));
            else if (pick < 85)
                out.push_back(frame(0xE0, 0xFF, "\x01his-V1" + id, 0x21));
            else if (pick < 95)
                out.push_back(liar(rng));
            else
                out.push_back(randomBytes(rng, rng.bounded(2048, 60000)));
        } else if (profile == "hostile" && pick >= 80) {
            if (pick < 90)
                out.push_back(QByteArray::fromHex("a56cffff") + randomBytes(rng, rng.bounded(16, 200)));
            else
                out.push_back(randomBytes(rng, rng.bounded(2048, 60000)));
        } else {
            out.push_back(pick < 80 ? stateReply(randomRecord(rng)) : liar(rng));
        }
    }
    return out;
}

// The flooder: RATE datagrams a second in batches of one millisecond's worth, for SECONDS.
int runFlooder(const char *host, int port, int rate, int seconds, const QByteArray &profile)
{
    QRandomGenerator rng(0x464C4F4F);
    const std::vector<QByteArray> datagrams = pool(profile, rng);
    const int fd = socket(AF_INET, SOCK_DGRAM, 0);
    sockaddr_in from{}, to{};
    from.sin_family = to.sin_family = AF_INET;
    inet_pton(AF_INET, StrangerIp, &from.sin_addr);
    inet_pton(AF_INET, host, &to.sin_addr);
    to.sin_port = htons(quint16(port));
    const int big = 8 << 20;
    setsockopt(fd, SOL_SOCKET, SO_SNDBUF, &big, sizeof big);
    if (bind(fd, reinterpret_cast<sockaddr *>(&from), sizeof from) != 0)
        return 1;
    const int perMs = std::max(1, rate / 1000);
    std::vector<mmsghdr> msgs(static_cast<size_t>(perMs));
    std::vector<iovec> iov(static_cast<size_t>(perMs));
    qint64 sent = 0, bytes = 0;
    size_t next = 0;
    timespec tick{};
    clock_gettime(CLOCK_MONOTONIC, &tick);
    for (int ms = 0; ms < seconds * 1000; ++ms) {
        for (int i = 0; i < perMs; ++i) {
            const QByteArray &d = datagrams[next++ % datagrams.size()];
            iov[size_t(i)] = {const_cast<char *>(d.constData()), size_t(d.size())};
            msgs[size_t(i)] = {};
            msgs[size_t(i)].msg_hdr.msg_name = &to;
            msgs[size_t(i)].msg_hdr.msg_namelen = sizeof to;
            msgs[size_t(i)].msg_hdr.msg_iov = &iov[size_t(i)];
            msgs[size_t(i)].msg_hdr.msg_iovlen = 1;
            bytes += d.size();
        }
        const int n = sendmmsg(fd, msgs.data(), unsigned(perMs), 0);
        sent += std::max(n, 0);
        tick.tv_nsec += 1000000;
        if (tick.tv_nsec >= 1000000000) {
            tick.tv_nsec -= 1000000000;
            ++tick.tv_sec;
        }
        clock_nanosleep(CLOCK_MONOTONIC, TIMER_ABSTIME, &tick, nullptr);
    }
    std::printf("%lld %lld\n", static_cast<long long>(sent), static_cast<long long>(bytes));
    close(fd);
    return 0;
}

// CPU time of the calling thread.
qint64 threadCpuNs()
{
    timespec ts{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &ts);
    return qint64(ts.tv_sec) * 1000000000 + ts.tv_nsec;
}

// Resident and peak resident memory of this process, in KiB.
qint64 statusKb(const char *key)
{
    QFile f(QStringLiteral("/proc/self/status"));
    if (!f.open(QIODevice::ReadOnly))
        return -1;
    for (const QByteArray &line : f.readAll().split('\n'))
        if (line.startsWith(key))
            return line.mid(int(std::strlen(key))).trimmed().split(' ').value(0).toLongLong();
    return -1;
}

// Bytes the C heap has handed out and not had back, in KiB: unlike the resident size, it does
// not count pages the allocator keeps for reuse.
qint64 heapInUseKb()
{
    return qint64(mallinfo2().uordblks / 1024);
}

// Datagrams the kernel dropped at the UDP socket on `port` (bound to any address), from
// /proc/net/udp of this namespace.
qint64 kernelDrops(quint16 port)
{
    QFile f(QStringLiteral("/proc/net/udp"));
    if (!f.open(QIODevice::ReadOnly))
        return -1;
    qint64 drops = 0;
    const QByteArray local =
        QByteArray("00000000:") + QByteArray::number(port, 16).toUpper().rightJustified(4, '0');
    for (const QByteArray &line : f.readAll().split('\n')) {
        const QList<QByteArray> w = line.simplified().split(' ');
        if (w.size() > 12 && w.at(1) == local)
            drops += w.last().toLongLong();
    }
    return drops;
}

// The longest gap between two ticks of a 1 ms timer on the GUI thread.
class Ticker
{
public:
    Ticker()
    {
        m_timer.setInterval(1);
        m_timer.setTimerType(Qt::PreciseTimer);
        QObject::connect(&m_timer, &QTimer::timeout, [this] {
            const double gap = m_since.nsecsElapsed() / 1e6;
            const qint64 cpu = threadCpuNs();
            if (gap > m_longest) {
                m_longest = gap;
                m_longestAt = m_clock.elapsed();
                m_longestCpu = (cpu - m_cpuAtTick) / 1e6;
            }
            if (gap > 50)
                m_long << QByteArray::number(m_clock.elapsed() / 1000.0, 'f', 1) +
                              "s:" + QByteArray::number(gap, 'f', 0) + "/" +
                              QByteArray::number((cpu - m_cpuAtTick) / 1e6, 'f', 0);
            m_cpuAtTick = cpu;
            m_over50 += gap > 50 ? 1 : 0;
            m_over20 += gap > 20 ? 1 : 0;
            m_since.restart();
        });
    }
    void start()
    {
        m_longest = 0;
        m_over50 = m_over20 = 0;
        m_long.clear();
        m_clock.start();
        m_cpuAtTick = threadCpuNs();
        m_since.start();
        m_timer.start();
    }
    double longestMs() const { return m_longest; }
    // "longest_gui_block_ms=15.6 (ending 5210 ms in, 14.9 ms of it on the CPU) blocks_over_20ms=0
    // blocks_over_50ms=0 (...)": a block with little CPU time in it is the thread waiting for a
    // core. Each block over 50 ms is listed as "when:length/CPU", in seconds and milliseconds.
    QByteArray summary() const
    {
        return QByteArray("longest_gui_block_ms=") + QByteArray::number(m_longest, 'f', 1) + " (ending " +
               QByteArray::number(m_longestAt) + " ms in, " + QByteArray::number(m_longestCpu, 'f', 1) +
               " ms of it on the CPU)" + " blocks_over_20ms=" + QByteArray::number(m_over20) +
               " blocks_over_50ms=" + QByteArray::number(m_over50) + " (" + m_long.join(' ') + ")";
    }

private:
    QTimer m_timer;
    QElapsedTimer m_since;
    QElapsedTimer m_clock;
    double m_longest = 0;
    qint64 m_longestAt = 0;
    double m_longestCpu = 0;
    qint64 m_cpuAtTick = 0;
    int m_over20 = 0;
    int m_over50 = 0;
    QList<QByteArray> m_long;
};

void runFor(int ms)
{
    QEventLoop loop;
    QTimer::singleShot(ms, &loop, &QEventLoop::quit);
    loop.exec();
}

// The stand-in unit: a socket on the unit's address that notes when each CUT frame arrives.
class Unit
{
public:
    bool start()
    {
        m_fd = socket(AF_INET, SOCK_DGRAM, 0);
        const int on = 1;
        setsockopt(m_fd, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
        sockaddr_in a{};
        a.sin_family = AF_INET;
        a.sin_port = htons(Port);
        inet_pton(AF_INET, UnitIp, &a.sin_addr);
        if (bind(m_fd, reinterpret_cast<sockaddr *>(&a), sizeof a) != 0)
            return false;
        m_thread = std::thread([this] { listen(); });
        return true;
    }
    void stop()
    {
        m_stop = true;
        m_thread.join();
        close(m_fd);
    }
    // Sends from the unit's address to the panel.
    void send(const QByteArray &d)
    {
        sockaddr_in to{};
        to.sin_family = AF_INET;
        to.sin_port = htons(Port);
        inet_pton(AF_INET, "127.0.0.1", &to.sin_addr);
        sendto(m_fd, d.constData(), size_t(d.size()), 0, reinterpret_cast<sockaddr *>(&to), sizeof to);
    }
    // Waits up to `ms` for the CUT after `count` CUTs; returns its arrival time or 0.
    qint64 awaitCut(int count, int ms)
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        m_cv.wait_for(lock, std::chrono::milliseconds(ms), [&] { return int(m_cuts.size()) > count; });
        return int(m_cuts.size()) > count ? m_cuts[size_t(count)] : 0;
    }

private:
    void listen()
    {
        char buf[2048];
        while (!m_stop) {
            pollfd p{m_fd, POLLIN, 0};
            if (poll(&p, 1, 50) <= 0)
                continue;
            const ssize_t n = recv(m_fd, buf, sizeof buf, 0);
            if (n > 16 && uint8_t(buf[16]) == 0x83) {
                std::lock_guard<std::mutex> lock(m_mutex);
                m_cuts.push_back(nowNs());
                m_cv.notify_all();
            }
        }
    }

    int m_fd = -1;
    std::thread m_thread;
    std::atomic<bool> m_stop{false};
    std::mutex m_mutex;
    std::condition_variable m_cv;
    std::vector<qint64> m_cuts;
};

// Starts the flooder in this namespace; it ends by itself after `seconds`.
QProcess *startFlooder(quint16 port, int rate, int seconds, const char *profile)
{
    auto *p = new QProcess;
    p->setProcessChannelMode(QProcess::ForwardedErrorChannel);
    p->start(QCoreApplication::applicationFilePath(),
             {QStringLiteral("flood"), QStringLiteral("127.0.0.1"), QString::number(port),
              QString::number(rate), QString::number(seconds), QString::fromLatin1(profile)});
    p->waitForStarted();
    return p;
}

struct Percentiles
{
    double median = 0, worst = 0;
    int count = 0;
};

Percentiles percentiles(std::vector<double> v)
{
    std::sort(v.begin(), v.end());
    Percentiles p;
    p.count = int(v.size());
    if (!v.empty()) {
        p.median = v[v.size() / 2];
        p.worst = v.back();
    }
    return p;
}

void printFlooder(QProcess *flooder, int seconds)
{
    const QList<QByteArray> w = flooder->readAllStandardOutput().trimmed().split(' ');
    const qint64 sent = w.value(0).toLongLong();
    std::printf("sent=%lld (%.0f/s, %.1f MB/s)\n", static_cast<long long>(sent), double(sent) / seconds,
                w.value(1).toDouble() / seconds / 1e6);
}

int runPanel(int rate, int seconds, const char *profile)
{
    Unit unit;
    QUdpSocket his;
    his.bind(QHostAddress(QString::fromLatin1(HisIp)), Port,
             QAbstractSocket::ShareAddress | QAbstractSocket::ReuseAddressHint);
    if (!unit.start()) {
        std::fprintf(stderr, "cannot bind %s:%d (run inside tests/netns-run.sh)\n", UnitIp, Port);
        return 1;
    }
    RVX3210UI panel;
    panel.show();
    panel.DevTypeID(QString::fromLatin1(UnitIp), 0xA5, 0xFF, QString::fromLatin1(HisIp), 0xE0, 0xFF);
    int applied = 0;
    QByteArray lastShown;
    QObject::connect(panel.link(), &RVX3210_workdata::on_signals_3210Data, [&](const QByteArray &record) {
        ++applied;
        lastShown = record;
    });
    runFor(300);
    const qint64 rssBefore = statusKb("VmRSS:");
    const qint64 heapBefore = heapInUseKb();
    const qint64 dropsBefore = kernelDrops(Port);
    applied = 0;

    Ticker ticker;
    ticker.start();
    QProcess *flooder = startFlooder(Port, rate, seconds, profile);

    // The operator: a CUT click posted to the GUI thread every 100 ms, as a real click is
    // queued behind whatever the thread is doing, timed until the frame is at the unit.
    std::vector<double> cutMs;
    std::atomic<bool> flooding{true};
    std::atomic<bool> operatorDone{false};
    QPushButton *cut = panel.lowerRow()->btnCut();
    std::thread op([&] {
        int n = 0;
        while (flooding) {
            const qint64 t0 = nowNs();
            QMetaObject::invokeMethod(cut, &QAbstractButton::click, Qt::QueuedConnection);
            const qint64 t1 = unit.awaitCut(n, 5000);
            if (t1 == 0)
                break;
            ++n;
            cutMs.push_back((t1 - t0) / 1e6);
            std::this_thread::sleep_for(std::chrono::milliseconds(100));
        }
        operatorDone = true;
    });
    QEventLoop wait;
    QObject::connect(flooder, qOverload<int, QProcess::ExitStatus>(&QProcess::finished), &wait,
                     &QEventLoop::quit);
    wait.exec();
    flooding = false;
    // The operator may be waiting on a click still queued here: keep the loop running.
    while (!operatorDone)
        runFor(1);
    op.join();
    // What the socket still holds is drained, pass by pass.
    while (panel.link()->endpoint()->hasPendingDatagrams() || panel.link()->holdsBack())
        runFor(1);
    const QByteArray blocks = ticker.summary();
    const int appliedInFlood = applied;
    const qint64 rssAfter = statusKb("VmRSS:");
    const qint64 heapAfter = heapInUseKb();
    const qint64 drops = kernelDrops(Port) - dropsBefore;

    // One more reply after the flood, until the panel shows it.
    QByteArray record = QByteArray::fromHex("0304000332043201000000000002000000000000000700000000");
    QAbstractButton *pgm3 = panel.lowerRow()->pgmGroup()->button(3);
    QElapsedTimer t;
    t.start();
    unit.send(stateReply(record));
    double shownMs = -1;
    while (t.elapsed() < 2000) {
        runFor(1);
        if (lastShown == record && pgm3->styleSheet().contains(QLatin1String(":/images/red/png/3.png"))) {
            shownMs = t.nsecsElapsed() / 1e6;
            break;
        }
    }
    unit.stop();

    printFlooder(flooder, seconds);
    const Percentiles c = percentiles(cutMs);
    std::printf("panel profile=%s rate=%d seconds=%d\n", profile, rate, seconds);
    std::printf("%s\n", blocks.constData());
    std::printf("state_replies_applied=%d (%.0f/s) kernel_drops=%lld\n", appliedInFlood,
                double(appliedInFlood) / seconds, static_cast<long long>(drops));
    std::printf("rss_kb before=%lld after=%lld peak=%lld\n", static_cast<long long>(rssBefore),
                static_cast<long long>(rssAfter), static_cast<long long>(statusKb("VmHWM:")));
    std::printf("heap_in_use_kb before=%lld after=%lld\n", static_cast<long long>(heapBefore),
                static_cast<long long>(heapAfter));
    std::printf("link_held_bytes=%d (stalled=%s)\n", panel.link()->heldBytes(),
                panel.link()->heldBytes() >= ReportingLink::StallSize ? "yes" : "no");
    std::printf("cut_ms clicks=%d median=%.2f worst=%.2f\n", c.count, c.median, c.worst);
    std::printf("reply_after_flood_shown_ms=%.1f\n", shownMs);
    delete flooder;
    return 0;
}

int runSearch(int rate, int seconds)
{
    showsearch window;
    window.show();
    QUdpSocket *socket = window.link()->findChild<QUdpSocket *>();
    if (!socket) {
        std::fprintf(stderr, "the search window holds no search socket\n");
        return 1;
    }
    runFor(300);
    const qint64 rssBefore = statusKb("VmRSS:");
    const qint64 heapBefore = heapInUseKb();
    Ticker ticker;
    ticker.start();
    QProcess *flooder = startFlooder(socket->localPort(), rate, seconds, "search");
    QEventLoop wait;
    QObject::connect(flooder, qOverload<int, QProcess::ExitStatus>(&QProcess::finished), &wait,
                     &QEventLoop::quit);
    wait.exec();
    while (socket->hasPendingDatagrams())
        runFor(1);
    runFor(50);
    printFlooder(flooder, seconds);
    std::printf("search rate=%d seconds=%d\n", rate, seconds);
    std::printf("%s\n", ticker.summary().constData());
    std::printf("units_listed=%d table=%d\n", window.deviceList()->count(),
                window.link()->DevInfo_DATA_IDX());
    std::printf("rss_kb before=%lld after=%lld peak=%lld\n", static_cast<long long>(rssBefore),
                static_cast<long long>(statusKb("VmRSS:")), static_cast<long long>(statusKb("VmHWM:")));
    std::printf("heap_in_use_kb before=%lld after=%lld\n", static_cast<long long>(heapBefore),
                static_cast<long long>(heapInUseKb()));
    delete flooder;
    return 0;
}

} // namespace

// The offscreen platform warns on every resize the panel asks of it; nothing of ours.
void quietPlatform(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    if (type >= QtWarningMsg && !message.contains(QLatin1String("propagateSizeHints")))
        std::fprintf(stderr, "%s\n", qPrintable(qFormatLogMessage(type, context, message)));
}

int main(int argc, char *argv[])
{
    if (argc >= 7 && std::strcmp(argv[1], "flood") == 0)
        return runFlooder(argv[2], std::atoi(argv[3]), std::atoi(argv[4]), std::atoi(argv[5]), argv[6]);
    qInstallMessageHandler(quietPlatform);
    QApplication app(argc, argv);
    const QStringList args = app.arguments();
    const int rate = args.value(2, "50000").toInt();
    const int seconds = args.value(3, "10").toInt();
    if (args.value(1) == "panel") {
        const QByteArray profile = args.value(4, "valid").toLatin1();
        return runPanel(rate, seconds, profile == "hostile" ? "hostile" : "valid");
    }
    if (args.value(1) == "search")
        return runSearch(rate, seconds);
    std::fprintf(stderr,
                 "usage: bench_flood panel [RATE] [SECONDS] [valid|hostile] | search [RATE] [SECONDS]\n");
    return 2;
}
