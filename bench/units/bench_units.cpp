// Several units on one port-7000 endpoint, on loopback:
//   1. routing: the median cost of handing one datagram to its link (a routed RVX3220 link,
//      whose family reads nothing back, and a stranger's datagram, dropped);
//   2. eight RVX5310 panels open, each unit asked for its state every 20 ms and answering at
//      once: the GUI thread's longest block (the longest gap between ticks of a 1 ms timer);
//   3. one unit flooding the port with state replies at 50,000 datagrams a second while a
//      second unit answers every 100 ms: the time from that unit's reply leaving until its
//      panel has restyled.
// The stand-in units are plain sockets served by a thread of their own, so they never wait
// for the GUI thread being measured.
//
//   bench_units [SECONDS]   (5 s for each of 2 and 3 by default)
//
// Run only inside tests/netns-run.sh (see run.sh): it opens sockets on loopback.
#include "RVX5310/rvx5310dialog.h"
#include "SwitcherData/rvx3220_workdata.h"
#include "SwitcherData/rvx5all_workdata.h"
#include "benchclock.h"
#include "testframes.h"

#include <QApplication>
#include <QEventLoop>
#include <QTimer>
#include <algorithm>
#include <arpa/inet.h>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <mutex>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

using BenchClock::nowNs;

constexpr int Units = 8;
constexpr int PollMs = 20;

QString unitIp(int i)
{
    return QStringLiteral("127.0.0.%1").arg(10 + i);
}

QByteArray stateReply(uint8_t pgm)
{
    QByteArray p = hex("0102010364083204040001010201020280017000010b000001");
    p[0] = char(pgm);
    return reply(0xA5FF, 0x49, "#\x01#" + p + "#");
}

double median(std::vector<double> v)
{
    if (v.empty())
        return 0;
    std::sort(v.begin(), v.end());
    return v[v.size() / 2];
}

double percentile(std::vector<double> v, double p)
{
    if (v.empty())
        return 0;
    std::sort(v.begin(), v.end());
    return v[std::min(v.size() - 1, size_t(p * double(v.size())))];
}

int boundSocket(const QString &ip)
{
    const int fd = ::socket(AF_INET, SOCK_DGRAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
    const int one = 1;
    setsockopt(fd, SOL_SOCKET, SO_REUSEADDR, &one, sizeof one);
    sockaddr_in at{};
    at.sin_family = AF_INET;
    at.sin_port = htons(7000);
    inet_pton(AF_INET, ip.toLatin1().constData(), &at.sin_addr);
    if (::bind(fd, reinterpret_cast<sockaddr *>(&at), sizeof at) != 0) {
        std::perror("bind");
        std::exit(1);
    }
    return fd;
}

sockaddr_in operatorAt()
{
    sockaddr_in to{};
    to.sin_family = AF_INET;
    to.sin_port = htons(7000);
    to.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    return to;
}

// Stand-in units: each answers a state request at once with its state reply.
class Responders
{
public:
    explicit Responders(int count)
    {
        for (int i = 0; i < count; ++i)
            m_fds.push_back(boundSocket(unitIp(i)));
        m_thread = std::thread([this] { run(); });
    }
    ~Responders()
    {
        m_stop = true;
        m_thread.join();
        for (int fd : m_fds)
            ::close(fd);
    }

private:
    void run()
    {
        std::vector<pollfd> p;
        for (int fd : m_fds)
            p.push_back({fd, POLLIN, 0});
        const QByteArray answer = stateReply(2);
        const sockaddr_in to = operatorAt();
        char buf[2048];
        while (!m_stop) {
            if (poll(p.data(), p.size(), 50) <= 0)
                continue;
            for (const pollfd &q : p) {
                if (!(q.revents & POLLIN))
                    continue;
                while (::recv(q.fd, buf, sizeof buf, 0) > 0)
                    ::sendto(q.fd, answer.constData(), size_t(answer.size()), 0,
                             reinterpret_cast<const sockaddr *>(&to), sizeof to);
            }
        }
    }

    std::vector<int> m_fds;
    std::atomic<bool> m_stop{false};
    std::thread m_thread;
};

// The GUI thread's blocks, seen from a 1 ms timer.
struct Ticker
{
    QTimer timer;
    qint64 last = 0;
    qint64 longest = 0;
    std::vector<double> gaps;
    Ticker()
    {
        timer.setTimerType(Qt::PreciseTimer);
        timer.setInterval(1);
        QObject::connect(&timer, &QTimer::timeout, [this] {
            const qint64 now = nowNs();
            if (last) {
                longest = std::max(longest, now - last);
                gaps.push_back(double(now - last) / 1e6);
            }
            last = now;
        });
    }
    void start()
    {
        last = 0;
        longest = 0;
        gaps.clear();
        timer.start();
    }
};

void runFor(int ms)
{
    QEventLoop loop;
    QTimer::singleShot(ms, &loop, &QEventLoop::quit);
    loop.exec();
}

void routing()
{
    RVX3220_workdata link;
    link.DevTypeID(unitIp(0), 0xA5, 0xFF);
    UnitEndpoint *endpoint = link.endpoint();
    const QHostAddress unit(unitIp(0)), stranger(QStringLiteral("127.0.0.99"));
    const QByteArray datagram = stateReply(3);
    for (const auto &[name, from] : {std::make_pair("routed to an RVX3220 link", unit),
                                     std::make_pair("from a stranger, dropped", stranger)}) {
        std::vector<double> us;
        for (int i = 0; i < 100000; ++i) {
            const qint64 t0 = nowNs();
            endpoint->deliver(from, datagram);
            us.push_back(double(nowNs() - t0) / 1e3);
        }
        std::printf("routing %s: median %.2f us, p99 %.2f us per datagram\n", name, median(us),
                    percentile(us, 0.99));
    }
}

void eightUnits(int seconds)
{
    Responders units(Units);
    std::vector<std::unique_ptr<RVX5310Dialog>> panels;
    std::vector<int> shown(Units, 0);
    for (int i = 0; i < Units; ++i) {
        panels.push_back(std::make_unique<RVX5310Dialog>(nullptr));
        panels.back()->DevTypeID(unitIp(i), 0xA5, 0xFF, QStringLiteral("127.0.0.%1").arg(100 + i), 0xE0,
                                 0xFF);
        panels.back()->show();
        QObject::connect(panels.back()->link(), &ReportingLink::stateReported, [&shown, i] { ++shown[i]; });
    }
    runFor(500);
    std::fill(shown.begin(), shown.end(), 0);
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, [&] {
        for (const auto &p : panels)
            p->link()->readState();
    });
    Ticker ticker;
    poll.start(PollMs);
    ticker.start();
    runFor(seconds * 1000);
    poll.stop();
    ticker.timer.stop();
    const int expected = seconds * 1000 / PollMs;
    std::printf("eight units polled every %d ms for %d s: longest GUI block %.1f ms, 99.9th percentile "
                "gap %.1f ms; states shown per unit",
                PollMs, seconds, double(ticker.longest) / 1e6, percentile(ticker.gaps, 0.999));
    for (int n : shown)
        std::printf(" %d", n);
    std::printf(" (of %d polls)\n", expected);
}

void floodBeside(int seconds)
{
    RVX5310Dialog flooded(nullptr), quiet(nullptr);
    flooded.DevTypeID(unitIp(0), 0xA5, 0xFF, QStringLiteral("127.0.0.100"), 0xE0, 0xFF);
    quiet.DevTypeID(unitIp(1), 0xA5, 0xFF, QStringLiteral("127.0.0.101"), 0xE0, 0xFF);
    flooded.show();
    quiet.show();
    std::mutex mutex;
    std::vector<qint64> sentAt(256, 0);
    std::vector<double> latencyMs;
    std::atomic<bool> stop{false};
    std::atomic<long> floodSent{0};
    QObject::connect(quiet.link(), &ReportingLink::stateReported, [&](const UnitState &s) {
        // The panel restyled itself from the reply's bytes just before this signal.
        const qint64 now = nowNs();
        std::lock_guard<std::mutex> lock(mutex);
        qint64 &at = sentAt[size_t(s.pgm()) & 0xFF];
        if (at)
            latencyMs.push_back(double(now - at) / 1e6);
        at = 0;
    });
    std::thread flooder([&] {
        const int fd = boundSocket(unitIp(0));
        const sockaddr_in to = operatorAt();
        std::vector<QByteArray> replies;
        for (int i = 0; i < 4; ++i)
            replies.push_back(stateReply(uint8_t(1 + i)));
        constexpr int Rate = 50000;
        const qint64 start = nowNs();
        long n = 0;
        while (!stop) {
            const qint64 due = start + n * (1000000000LL / Rate);
            while (nowNs() < due)
                ;
            ::sendto(fd, replies[size_t(n % 4)].constData(), size_t(replies[0].size()), 0,
                     reinterpret_cast<const sockaddr *>(&to), sizeof to);
            ++n;
        }
        floodSent = n;
        ::close(fd);
    });
    std::thread answering([&] {
        const int fd = boundSocket(unitIp(1));
        const sockaddr_in to = operatorAt();
        for (int k = 0; !stop; ++k) {
            // Inputs 5..204 stand for "the k-th reply" (the panel shows what it can of them).
            const uint8_t pgm = uint8_t(5 + k % 200);
            const QByteArray r = stateReply(pgm);
            {
                std::lock_guard<std::mutex> lock(mutex);
                sentAt[pgm] = nowNs();
            }
            ::sendto(fd, r.constData(), size_t(r.size()), 0, reinterpret_cast<const sockaddr *>(&to),
                     sizeof to);
            std::this_thread::sleep_for(std::chrono::milliseconds(100));
        }
        ::close(fd);
    });
    Ticker ticker;
    ticker.start();
    runFor(seconds * 1000);
    stop = true;
    flooder.join();
    answering.join();
    runFor(200);
    std::lock_guard<std::mutex> lock(mutex);
    std::printf("one unit flooding at %.0f datagrams/s for %d s, another answering every 100 ms: its panel "
                "restyled %zu times, median %.2f ms, worst %.2f ms after the reply left; longest GUI block "
                "%.1f ms; flooded link dropped %llu held datagrams\n",
                double(floodSent) / seconds, seconds, latencyMs.size(), median(latencyMs),
                latencyMs.empty() ? 0.0 : *std::max_element(latencyMs.begin(), latencyMs.end()),
                double(ticker.longest) / 1e6, static_cast<unsigned long long>(flooded.link()->droppedHeld()));
}

} // namespace

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    const int seconds = argc > 1 ? std::max(1, std::atoi(argv[1])) : 5;
    routing();
    eightUnits(seconds);
    floodBeside(seconds);
    return 0;
}
