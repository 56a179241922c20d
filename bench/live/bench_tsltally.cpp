// The UMD tally's costs as the GUI thread pays them and as a listener sees them:
//   - building one display message (TslTally::packet), per message;
//   - a tally change (the programme moving to another input: two messages to each target),
//     from the call to setTally until the last message is read by listeners on the loopback,
//     and the time the call itself holds the GUI thread;
//   - a full send of every input to every target, as each refresh does.
// Listeners are plain sockets read by a thread of their own, stamped on arrival.
//
//   bench_tsltally [CHANGES]
//
// Run only inside tests/netns-run.sh (see run.sh): it opens sockets on loopback.
#include "live/tsltally.h"

#include <QCoreApplication>
#include <algorithm>
#include <arpa/inet.h>
#include <atomic>
#include <condition_variable>
#include <cstdio>
#include <ctime>
#include <mutex>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

qint64 nowNs()
{
    timespec ts{};
    clock_gettime(CLOCK_MONOTONIC, &ts);
    return qint64(ts.tv_sec) * 1000000000 + ts.tv_nsec;
}

double percentile(std::vector<qint64> v, double p)
{
    std::sort(v.begin(), v.end());
    return v.empty() ? 0 : double(v[size_t(p * double(v.size() - 1))]) / 1000.0;
}

void report(const char *what, const std::vector<qint64> &ns)
{
    std::printf("  %-34s median %7.1f us   p99 %7.1f us   worst %8.1f us\n", what, percentile(ns, 0.5),
                percentile(ns, 0.99), percentile(ns, 1.0));
}

// Listeners on 127.0.0.1, read by one thread: counts datagrams and stamps the latest arrival.
class Listeners
{
public:
    explicit Listeners(int count)
    {
        for (int i = 0; i < count; ++i) {
            const int fd = socket(AF_INET, SOCK_DGRAM, 0);
            sockaddr_in a{};
            a.sin_family = AF_INET;
            a.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
            a.sin_port = htons(quint16(8900 + i));
            if (bind(fd, reinterpret_cast<sockaddr *>(&a), sizeof a) != 0)
                std::perror("bind");
            m_fds.push_back(fd);
        }
        m_thread = std::thread([this] { run(); });
    }
    ~Listeners()
    {
        m_stop = true;
        m_thread.join();
        for (int fd : m_fds)
            close(fd);
    }
    QList<TslTarget> targets() const
    {
        QList<TslTarget> out;
        for (size_t i = 0; i < m_fds.size(); ++i)
            out << TslTarget{QHostAddress(QHostAddress::LocalHost), quint16(8900 + i)};
        return out;
    }
    // Waits until `count` datagrams have arrived in all; returns the time the last one was read.
    qint64 waitFor(long count)
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        m_cv.wait(lock, [&] { return m_count >= count; });
        return m_last;
    }
    long count()
    {
        std::lock_guard<std::mutex> lock(m_mutex);
        return m_count;
    }

private:
    void run()
    {
        std::vector<pollfd> p;
        for (int fd : m_fds)
            p.push_back({fd, POLLIN, 0});
        char buf[2048];
        while (!m_stop) {
            if (poll(p.data(), p.size(), 50) <= 0)
                continue;
            for (const pollfd &q : p) {
                if (!(q.revents & POLLIN))
                    continue;
                while (recv(q.fd, buf, sizeof buf, MSG_DONTWAIT) > 0) {
                    const qint64 t = nowNs();
                    std::lock_guard<std::mutex> lock(m_mutex);
                    ++m_count;
                    m_last = t;
                    m_cv.notify_one();
                }
            }
        }
    }

    std::vector<int> m_fds;
    std::thread m_thread;
    std::atomic<bool> m_stop{false};
    std::mutex m_mutex;
    std::condition_variable m_cv;
    long m_count = 0;
    qint64 m_last = 0;
};

void benchPacket()
{
    const int n = 2000000;
    for (const QByteArray &text : {QByteArray("CAM 1"), QByteArray("STUDIO CAMERA 12")}) {
        quint64 sink = 0;
        const qint64 t0 = nowNs();
        for (int i = 0; i < n; ++i)
            sink +=
                uint8_t(TslTally::packet(i % 8 + 1, TslTally::control(i % 3 == 0, i % 5 == 0), text).at(0));
        const qint64 t1 = nowNs();
        std::printf("  packet, %2d-byte text: %.1f ns a message (%d messages; %llu)\n", int(text.size()),
                    double(t1 - t0) / n, n, static_cast<unsigned long long>(sink % 10));
    }
}

void benchChanges(int targets, int inputs, int changes)
{
    Listeners listeners(targets);
    TslTally tally;
    QStringList labels;
    for (int i = 1; i <= inputs; ++i)
        labels << QStringLiteral("CAM %1").arg(i);
    tally.setInputs(labels);
    tally.setLive(true);
    tally.setTally(1, 2);
    tally.setTargets(listeners.targets());
    long expected = long(inputs) * targets;
    listeners.waitFor(expected);

    std::vector<qint64> latency, call;
    const int warmUp = 500;
    int programme = 1;
    for (int i = 0; i < warmUp + changes; ++i) {
        // The programme moves to the next input other than the preview: two messages per target.
        do
            programme = programme % inputs + 1;
        while (programme == 2);
        const qint64 t0 = nowNs();
        tally.setTally(programme, 2);
        const qint64 t1 = nowNs();
        expected += 2L * targets;
        const qint64 last = listeners.waitFor(expected);
        if (i >= warmUp) {
            latency.push_back(last - t0);
            call.push_back(t1 - t0);
        }
    }

    // Every input to every target, as the refresh sends them.
    std::vector<qint64> full;
    for (int i = 0; i < 2000; ++i) {
        QStringList renamed = labels;
        for (QString &l : renamed)
            l += QLatin1Char(i % 2 ? 'a' : 'b');
        const qint64 t0 = nowNs();
        tally.setInputs(renamed);
        full.push_back(nowNs() - t0);
        expected += long(inputs) * targets;
        listeners.waitFor(expected);
    }

    std::printf("%d target(s), %d inputs, %d changes:\n", targets, inputs, changes);
    report("change to last message read", latency);
    report("setTally call (GUI thread)", call);
    char what[64];
    std::snprintf(what, sizeof what, "every input (%d messages) sent", inputs * targets);
    report(what, full);
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    const int changes = argc > 1 ? std::max(1, atoi(argv[1])) : 20000;
    std::printf("Message building:\n");
    benchPacket();
    for (int targets : {1, 4})
        for (int inputs : {4, 8})
            benchChanges(targets, inputs, changes);
    return 0;
}
