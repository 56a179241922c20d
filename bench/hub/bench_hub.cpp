// kova-hub under load, on loopback, with a real broker:
//   1. quiet: the hub follows 32 RVX5310 stand-in units every 200 ms and nothing changes; the
//      hub's CPU time from /proc/PID/stat (and its threads' schedstat, to the nanosecond);
//   2. changes: each unit puts another input on its programme bus every 2 s (the units
//      staggered), as an operator at the unit's own keys would; from the first state reply that
//      carries the new input leaving the unit to a subscriber of the broker holding the state
//      that shows it (median, 90th percentile, worst), and the CPU meanwhile;
//   3. commands: RATE `set` commands a second ("pgm N", N cycling 1-4 for each unit, the units
//      in turn) published at QoS 1 for COMMAND_S seconds; what reached each unit, in which
//      order, how long after its publication, and the hub's VmRSS every second.
// The bench is the stand-in units (one thread, plain sockets: they answer the search so the hub
// learns their model, answer every state request at once and take the commands), the broker's
// subscriber and the publisher (libmosquitto clients, each on the library's own thread). It
// starts mosquitto and kova-hub itself, both on loopback.
//
//   bench_hub KOVA_HUB [QUIET_S [CHANGES_S [COMMAND_S [RATE]]]]   (30 30 10 1000 by default)
//
// Run only inside tests/netns-run.sh (see run.sh): it opens sockets on loopback.
#include "benchclock.h"
#include "mosquittobroker.h"
#include "testframes.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTimer>
#include <algorithm>
#include <arpa/inet.h>
#include <atomic>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dirent.h>
#include <functional>
#include <memory>
#include <mosquitto.h>
#include <mutex>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/uio.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

using BenchClock::nowNs;

constexpr int Units = 32;
constexpr int FollowMs = 200;
constexpr int ChangeEveryMs = 2000;
constexpr int Inputs = 4; // the RVX5310's programme bus
constexpr uint8_t ChildType = 0x4F;
constexpr uint8_t SearchCmd = 0xFF;
constexpr uint8_t StateCmd = 0x49;
constexpr uint8_t PgmCmd = 0x80;
const char *const Station = "bench";

QString unitIp(int u)
{
    return QStringLiteral("127.0.0.%1").arg(10 + u);
}

// The unit's ID in the hub's topics (its address with dashes) and back.
QByteArray topicOf(int u, const char *leaf)
{
    return QByteArray("kova/") + Station + '/' + unitIp(u).replace('.', '-').toLatin1() + '/' + leaf;
}

int unitOfTopic(const char *topic)
{
    const char *at = std::strstr(topic, "/127-0-0-");
    if (!at)
        return -1;
    const int u = std::atoi(at + 9) - 10;
    return u >= 0 && u < Units ? u : -1;
}

// The RVX5310's short state reply: '#', 0x01, '#', the 25-byte record, '#'; the programme input
// in the record's first byte.
QByteArray stateReply(int pgm)
{
    QByteArray record = hex("0102010364083204040001010201020280017000010b000001");
    record[0] = char(pgm);
    return reply(0xA5FF, StateCmd, "#\x01#" + record + "#");
}

QByteArray searchAnswer(int u)
{
    return searchReply(0xA5, ChildType, QByteArray("Bench") + QByteArray::number(u + 1) + "-V1.00",
                       QByteArray("\x0b\x0e") + char(u + 1));
}

struct Summary
{
    size_t n = 0;
    double median = 0, p90 = 0, worst = 0;
};

Summary summarise(std::vector<double> v)
{
    Summary s;
    s.n = v.size();
    if (v.empty())
        return s;
    std::sort(v.begin(), v.end());
    s.median = v[v.size() / 2];
    s.p90 = v[std::min(v.size() - 1, size_t(0.9 * double(v.size())))];
    s.worst = v.back();
    return s;
}

// A process's CPU time: user + system clock ticks from /proc/PID/stat (every thread, dead ones
// included), and the nanoseconds its live threads have run (/proc/PID/task/*/schedstat).
struct CpuTime
{
    long long ticks = 0;
    long long runNs = 0;
    qint64 at = 0;
};

CpuTime cpuOf(qint64 pid)
{
    CpuTime t;
    t.at = nowNs();
    QFile stat(QStringLiteral("/proc/%1/stat").arg(pid));
    if (stat.open(QIODevice::ReadOnly)) {
        const QByteArray text = stat.readAll();
        // Fields from the third on follow the command name's closing parenthesis; utime and
        // stime are the 14th and 15th.
        const QList<QByteArray> f = text.mid(text.lastIndexOf(')') + 2).split(' ');
        if (f.size() > 12)
            t.ticks = f.at(11).toLongLong() + f.at(12).toLongLong();
    }
    const QByteArray tasks = QStringLiteral("/proc/%1/task").arg(pid).toLatin1();
    if (DIR *d = opendir(tasks.constData())) {
        while (dirent *e = readdir(d)) {
            if (e->d_name[0] == '.')
                continue;
            QFile sched(QString::fromLatin1(tasks) + '/' + QLatin1String(e->d_name) + "/schedstat");
            if (sched.open(QIODevice::ReadOnly))
                t.runNs += sched.readAll().split(' ').value(0).toLongLong();
        }
        closedir(d);
    }
    return t;
}

struct CpuShare
{
    double statPct = 0;  // from the ticks
    double schedPct = 0; // from the run time
};

CpuShare shareBetween(const CpuTime &a, const CpuTime &b)
{
    const double wall = double(b.at - a.at) / 1e9;
    return {100.0 * double(b.ticks - a.ticks) / double(sysconf(_SC_CLK_TCK)) / wall,
            100.0 * double(b.runNs - a.runNs) / 1e9 / wall};
}

long rssKb(qint64 pid)
{
    QFile status(QStringLiteral("/proc/%1/status").arg(pid));
    if (!status.open(QIODevice::ReadOnly))
        return -1;
    for (const QByteArray &line : status.readAll().split('\n'))
        if (line.startsWith("VmRSS:"))
            return line.mid(6).trimmed().split(' ').value(0).toLong();
    return -1;
}

int threadsOf(qint64 pid)
{
    int n = 0;
    const QByteArray tasks = QStringLiteral("/proc/%1/task").arg(pid).toLatin1();
    if (DIR *d = opendir(tasks.constData())) {
        while (dirent *e = readdir(d))
            n += e->d_name[0] != '.';
        closedir(d);
    }
    return n;
}

// The namespace's UDP datagrams dropped for a full receive buffer (/proc/net/snmp).
long udpBufferDrops()
{
    QFile snmp(QStringLiteral("/proc/net/snmp"));
    if (!snmp.open(QIODevice::ReadOnly))
        return -1;
    QList<QByteArray> names;
    for (const QByteArray &line : snmp.readAll().split('\n')) {
        if (!line.startsWith("Udp: "))
            continue;
        const QList<QByteArray> f = line.split(' ');
        if (names.isEmpty()) {
            names = f;
            continue;
        }
        return f.value(int(names.indexOf("RcvbufErrors"))).toLong();
    }
    return -1;
}

void runFor(int ms)
{
    QEventLoop loop;
    // A coarse timer may end the span 5 % early.
    QTimer::singleShot(ms, Qt::PreciseTimer, &loop, &QEventLoop::quit);
    loop.exec();
}

bool waitFor(const std::function<bool()> &pred, int ms)
{
    return mqtttest::waitUntil(pred, ms);
}

int udpSocket(in_addr_t address)
{
    const int fd = ::socket(AF_INET, SOCK_DGRAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
    const int one = 1;
    setsockopt(fd, SOL_SOCKET, SO_REUSEADDR, &one, sizeof one);
    setsockopt(fd, SOL_SOCKET, SO_TIMESTAMPNS, &one, sizeof one);
    sockaddr_in at{};
    at.sin_family = AF_INET;
    at.sin_port = htons(7000);
    at.sin_addr.s_addr = address;
    if (::bind(fd, reinterpret_cast<sockaddr *>(&at), sizeof at) != 0) {
        std::perror("bind");
        std::exit(1);
    }
    return fd;
}

// What the units saw of the commands and of the changes, shared by the units' thread, the
// subscriber's and the publisher's.
struct Ledger
{
    std::mutex mutex;

    // A change made at a unit: the input, when the first reply carrying it left, and whether a
    // subscriber has seen it yet.
    struct Change
    {
        int value = 0;
        qint64 sentAt = 0;
        bool open = false;
    };
    Change change[Units];
    std::vector<double> changeMs;                   // reply left -> subscriber holds the state
    std::vector<std::pair<int, qint64>> changeFrom; // the unit and the reply's stamp of each
    std::vector<qint64> searchedAt;                 // when the hub's search reached the units
    int changesMade = 0;

    // Commands: the k-th "pgm" for unit u was published at published[u][k]; the inputs each
    // unit was told, in arrival order, with the kernel's arrival stamps.
    std::vector<std::unique_ptr<std::atomic<qint64>[]>> published;
    int perUnit = 0;
    std::vector<std::vector<std::pair<int, qint64>>> arrived{size_t(Units)};

    void prepareCommands(int count)
    {
        perUnit = count;
        published.clear();
        for (int u = 0; u < Units; ++u) {
            published.emplace_back(new std::atomic<qint64>[size_t(count)]);
            for (int k = 0; k < count; ++k)
                published.back()[size_t(k)] = 0;
        }
    }

    void replyLeft(int u, int value, qint64 at)
    {
        std::lock_guard<std::mutex> lock(mutex);
        change[u] = {value, at, true};
        ++changesMade;
    }

    void stateSeen(int u, int value, qint64 at)
    {
        std::lock_guard<std::mutex> lock(mutex);
        Change &c = change[u];
        if (c.open && c.value == value) {
            changeMs.push_back(double(at - c.sentAt) / 1e6);
            changeFrom.emplace_back(u, c.sentAt);
            c.open = false;
        }
    }

    void commandArrived(int u, int value, qint64 at)
    {
        std::lock_guard<std::mutex> lock(mutex);
        arrived[size_t(u)].emplace_back(value, at);
    }

    long commandsArrived()
    {
        std::lock_guard<std::mutex> lock(mutex);
        long n = 0;
        for (const auto &a : arrived)
            n += long(a.size());
        return n;
    }
};

// The 32 stand-in units on 127.0.0.10-41, port 7000, and a socket on the broadcast address that
// hears the hub's search; served by one thread that never waits for anything but poll().
class StandIns
{
public:
    explicit StandIns(Ledger *ledger) : m_ledger(ledger)
    {
        for (int u = 0; u < Units; ++u)
            m_fds.push_back(udpSocket(inet_addr(unitIp(u).toLatin1().constData())));
        m_fds.push_back(udpSocket(htonl(INADDR_BROADCAST)));
        m_thread = std::thread([this] { run(); });
    }
    ~StandIns()
    {
        m_stop = true;
        m_thread.join();
        for (int fd : m_fds)
            ::close(fd);
    }

    long polls(int u) const { return m_polls[u]; }
    long searches() const { return m_searches; }
    long others() const { return m_others; }
    // While on, each unit moves its programme bus on every ChangeEveryMs, the units staggered.
    void setChanging(bool on) { m_changing = on; }

private:
    void run()
    {
        std::vector<pollfd> p;
        for (int fd : m_fds)
            p.push_back({fd, POLLIN, 0});
        int pgm[Units];
        bool stamp[Units] = {};
        qint64 nextChange[Units] = {};
        std::fill(std::begin(pgm), std::end(pgm), 1);
        bool changing = false;
        sockaddr_in hub{};
        hub.sin_family = AF_INET;
        hub.sin_port = htons(7000);
        hub.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        std::vector<QByteArray> answers;
        for (int u = 0; u < Units; ++u)
            answers.push_back(searchAnswer(u));

        uint8_t buf[2048];
        while (!m_stop) {
            if (m_changing != changing) {
                changing = m_changing;
                const qint64 now = nowNs();
                for (int u = 0; u < Units; ++u)
                    nextChange[u] = now + qint64(u) * ChangeEveryMs * 1000000 / Units;
            }
            if (changing) {
                const qint64 now = nowNs();
                for (int u = 0; u < Units; ++u) {
                    if (now < nextChange[u])
                        continue;
                    pgm[u] = pgm[u] % Inputs + 1;
                    stamp[u] = true; // the next reply carries it first
                    nextChange[u] += qint64(ChangeEveryMs) * 1000000;
                }
            }
            if (poll(p.data(), p.size(), 2) <= 0)
                continue;
            for (size_t i = 0; i < p.size(); ++i) {
                if (!(p[i].revents & POLLIN))
                    continue;
                const int fd = p[i].fd;
                const int u = int(i);
                sockaddr_in from{};
                qint64 arrivedAt = 0;
                ssize_t n;
                while ((n = receive(fd, buf, sizeof buf, &from, &arrivedAt)) > 0) {
                    if (n < 20 || buf[0] != 0xA5 || buf[1] != 0x6C) {
                        ++m_others;
                        continue;
                    }
                    const uint8_t cmd = buf[16];
                    if (u == Units) { // the broadcast socket
                        if (cmd != SearchCmd)
                            continue;
                        ++m_searches;
                        {
                            std::lock_guard<std::mutex> lock(m_ledger->mutex);
                            m_ledger->searchedAt.push_back(nowNs());
                        }
                        // On loopback the broadcast leaves from no address at all.
                        if (from.sin_addr.s_addr == htonl(INADDR_ANY))
                            from.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
                        for (int v = 0; v < Units; ++v)
                            ::sendto(m_fds[size_t(v)], answers[size_t(v)].constData(),
                                     size_t(answers[size_t(v)].size()), 0,
                                     reinterpret_cast<const sockaddr *>(&from), sizeof from);
                    } else if (cmd == StateCmd) {
                        ++m_polls[u];
                        const QByteArray r = stateReply(pgm[u]);
                        const qint64 now = nowNs();
                        if (stamp[u]) {
                            m_ledger->replyLeft(u, pgm[u], now);
                            stamp[u] = false;
                        }
                        ::sendto(fd, r.constData(), size_t(r.size()), 0,
                                 reinterpret_cast<const sockaddr *>(&hub), sizeof hub);
                    } else if (cmd == PgmCmd && n >= 21) {
                        pgm[u] = buf[17];
                        m_ledger->commandArrived(u, buf[17], arrivedAt ? arrivedAt : nowNs());
                    } else {
                        ++m_others;
                    }
                }
            }
        }
    }

    // One datagram, its sender and the kernel's arrival stamp (on the monotonic clock).
    static ssize_t receive(int fd, uint8_t *buf, size_t size, sockaddr_in *from, qint64 *arrivedAt)
    {
        iovec iov{buf, size};
        alignas(cmsghdr) char control[CMSG_SPACE(sizeof(timespec))];
        msghdr msg{};
        msg.msg_name = from;
        msg.msg_namelen = sizeof *from;
        msg.msg_iov = &iov;
        msg.msg_iovlen = 1;
        msg.msg_control = control;
        msg.msg_controllen = sizeof control;
        const ssize_t n = recvmsg(fd, &msg, 0);
        *arrivedAt = n >= 0 ? BenchClock::arrivalNs(&msg) : 0;
        return n;
    }

    Ledger *m_ledger;
    std::vector<int> m_fds;
    std::atomic<long> m_polls[Units] = {};
    std::atomic<long> m_searches{0};
    std::atomic<long> m_others{0};
    std::atomic<bool> m_changing{false};
    std::atomic<bool> m_stop{false};
    std::thread m_thread;
};

// A libmosquitto client on the library's own thread.
class Client
{
public:
    Client(const char *id, quint16 port) : m_port(port)
    {
        m_mosq = mosquitto_new(id, true, this);
        mosquitto_connect_callback_set(
            m_mosq, [](mosquitto *, void *self, int rc) { static_cast<Client *>(self)->connected(rc); });
        mosquitto_message_callback_set(m_mosq, [](mosquitto *, void *self, const mosquitto_message *m) {
            // Stamped before anything else is done with it.
            const qint64 at = nowNs();
            static_cast<Client *>(self)->message(m, at);
        });
    }
    virtual ~Client()
    {
        stop();
        mosquitto_destroy(m_mosq);
    }
    // Disconnects and waits for the library's thread; no callback comes after it.
    void stop()
    {
        if (m_stopped)
            return;
        m_stopped = true;
        mosquitto_disconnect(m_mosq);
        mosquitto_loop_stop(m_mosq, false);
    }
    bool start()
    {
        return mosquitto_connect(m_mosq, "127.0.0.1", m_port, 30) == MOSQ_ERR_SUCCESS &&
               mosquitto_loop_start(m_mosq) == MOSQ_ERR_SUCCESS;
    }
    bool isConnected() const { return m_connected; }
    mosquitto *handle() const { return m_mosq; }

protected:
    virtual void connected(int rc) { m_connected = rc == 0; }
    virtual void message(const mosquitto_message *, qint64) {}

    mosquitto *m_mosq;
    quint16 m_port;
    std::atomic<bool> m_connected{false};
    bool m_stopped = false;
};

// Watches kova/bench/+/state and +/link.
class Watcher : public Client
{
public:
    Watcher(quint16 port, Ledger *ledger) : Client("bench-watcher", port), m_ledger(ledger) {}
    ~Watcher() override { stop(); }

    int unitsWithState() const
    {
        int n = 0;
        for (const auto &s : m_seen)
            n += s.load() ? 1 : 0;
        return n;
    }
    long states() const { return m_states; }
    long downs() const { return m_downs; }

protected:
    void connected(int rc) override
    {
        if (rc == 0) {
            const QByteArray prefix = QByteArray("kova/") + Station + '/';
            mosquitto_subscribe(m_mosq, nullptr, (prefix + "+/state").constData(), 1);
            mosquitto_subscribe(m_mosq, nullptr, (prefix + "+/link").constData(), 1);
        }
        Client::connected(rc);
    }
    void message(const mosquitto_message *m, qint64 at) override
    {
        const int u = unitOfTopic(m->topic);
        if (u < 0)
            return;
        const QByteArray payload(static_cast<const char *>(m->payload), m->payloadlen);
        if (QByteArray(m->topic).endsWith("/link")) {
            m_downs += payload == "down" ? 1 : 0;
            return;
        }
        m_seen[u] = true;
        if (m->retain) // the broker's copy handed over on subscribing, not news
            return;
        ++m_states;
        const int pgm = payload.indexOf("\"pgm\":");
        if (pgm >= 0)
            m_ledger->stateSeen(u, std::atoi(payload.constData() + pgm + 6), at);
    }

private:
    Ledger *m_ledger;
    std::atomic<bool> m_seen[Units] = {};
    std::atomic<long> m_states{0};
    std::atomic<long> m_downs{0};
};

// mosquitto for the bench: anonymous, on 127.0.0.1 only, logging errors and warnings only (a
// log line per message would cost the broker more than the hub).
class Broker
{
public:
    Broker() : m_port(mqtttest::freePort()) {}
    ~Broker()
    {
        m_process.terminate();
        if (!m_process.waitForFinished(5000))
            m_process.kill();
        m_process.waitForFinished(5000);
    }
    bool start()
    {
        QByteArray conf;
        if (::geteuid() == 0)
            conf += "user root\n";
        conf += "persistence false\nlog_dest file " + QFile::encodeName(m_dir.filePath("mosquitto.log")) +
                "\nlog_type error\nlog_type warning\nlog_type notice\n";
        conf += "listener " + QByteArray::number(m_port) + " 127.0.0.1\nallow_anonymous true\n";
        QFile f(m_dir.filePath(QStringLiteral("mosquitto.conf")));
        if (!f.open(QIODevice::WriteOnly) || f.write(conf) != conf.size())
            return false;
        f.close();
        m_process.setProcessChannelMode(QProcess::MergedChannels);
        m_process.setStandardOutputFile(m_dir.filePath(QStringLiteral("stdout.log")));
        m_process.start(QStringLiteral("/usr/sbin/mosquitto"), {QStringLiteral("-c"), f.fileName()});
        return m_process.waitForStarted(5000) &&
               waitFor([this] { return mqtttest::portAccepts(m_port); }, 10000);
    }
    quint16 port() const { return m_port; }
    qint64 pid() const { return m_process.processId(); }
    QByteArray log() const
    {
        QFile f(m_dir.filePath(QStringLiteral("mosquitto.log")));
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
    }

private:
    QTemporaryDir m_dir;
    quint16 m_port;
    QProcess m_process;
};

void printCpu(const char *what, qint64 hubPid, const CpuTime &h0, const CpuTime &h1, const CpuTime &b0,
              const CpuTime &b1)
{
    const CpuShare hub = shareBetween(h0, h1);
    const CpuShare broker = shareBetween(b0, b1);
    std::printf("%s: kova-hub %.2f %% of one core (/proc/%lld/stat: %lld ticks in %.1f s; schedstat %.2f "
                "%%), mosquitto %.2f %% (schedstat %.2f %%)\n",
                what, hub.statPct, hubPid, h1.ticks - h0.ticks, double(h1.at - h0.at) / 1e9, hub.schedPct,
                broker.statPct, broker.schedPct);
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    if (argc < 2) {
        std::fprintf(stderr, "usage: bench_hub KOVA_HUB [QUIET_S [CHANGES_S [COMMAND_S [RATE]]]]\n");
        return 2;
    }
    const auto arg = [&](int i, int fallback) {
        return argc > i ? std::max(1, std::atoi(argv[i])) : fallback;
    };
    const int quietS = arg(2, 30), changesS = arg(3, 30), commandS = arg(4, 10), rate = arg(5, 1000);

    mosquitto_lib_init();
    Broker broker;
    if (!broker.start()) {
        std::fprintf(stderr, "mosquitto did not start\n");
        return 1;
    }
    Ledger ledger;
    StandIns units(&ledger);
    Watcher watcher(broker.port(), &ledger);
    if (!watcher.start() || !waitFor([&] { return watcher.isConnected(); }, 5000)) {
        std::fprintf(stderr, "the subscriber could not connect\n");
        return 1;
    }

    QTemporaryDir dir;
    QFile config(dir.filePath(QStringLiteral("hub.conf"))); // empty: nothing from /etc
    config.open(QIODevice::WriteOnly);
    config.close();
    QStringList args{QStringLiteral("--config"),  config.fileName(),
                     QStringLiteral("--follow"),  QString::number(FollowMs),
                     QStringLiteral("--mqtt"),    QStringLiteral("mqtt://127.0.0.1:%1").arg(broker.port()),
                     QStringLiteral("--station"), QLatin1String(Station)};
    for (int u = 0; u < Units; ++u)
        args << QStringLiteral("--unit") << unitIp(u);
    QProcess hub;
    const QString hubLog = dir.filePath(QStringLiteral("hub.log"));
    hub.setStandardErrorFile(hubLog);
    hub.setStandardOutputFile(QProcess::nullDevice());
    hub.start(QString::fromLocal8Bit(argv[1]), args);
    if (!hub.waitForStarted(5000)) {
        std::fprintf(stderr, "kova-hub did not start\n");
        return 1;
    }
    const qint64 pid = hub.processId();
    const auto hubLogText = [&] {
        QFile f(hubLog);
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
    };
    const bool ready = waitFor(
        [&] {
            for (int u = 0; u < Units; ++u)
                if (units.polls(u) < 3)
                    return false;
            return watcher.unitsWithState() == Units;
        },
        30000);
    if (!ready) {
        std::fprintf(stderr, "the hub did not take up all %d units within 30 s (%d states seen)\n%s", Units,
                     watcher.unitsWithState(), hubLogText().constData());
        return 1;
    }
    const long rssReady = rssKb(pid);
    runFor(2000);
    std::printf("kova-hub pid %lld holding %d RVX5310 units, --follow %d, %d threads, VmRSS %ld kB; "
                "load %s",
                pid, Units, FollowMs, threadsOf(pid), rssReady,
                mqtttest::runProgram(QStringLiteral("cat"), {QStringLiteral("/proc/loadavg")}).constData());

    // 1. Quiet.
    {
        long polls0[Units];
        for (int u = 0; u < Units; ++u)
            polls0[u] = units.polls(u);
        const long states0 = watcher.states(), downs0 = watcher.downs();
        const CpuTime h0 = cpuOf(pid), b0 = cpuOf(broker.pid());
        runFor(quietS * 1000);
        const CpuTime h1 = cpuOf(pid), b1 = cpuOf(broker.pid());
        long lo = 1 << 30, hi = 0;
        for (int u = 0; u < Units; ++u) {
            lo = std::min(lo, units.polls(u) - polls0[u]);
            hi = std::max(hi, units.polls(u) - polls0[u]);
        }
        printCpu(QStringLiteral("quiet, %1 s").arg(quietS).toLatin1().constData(), pid, h0, h1, b0, b1);
        std::printf("  state requests per unit %ld-%ld (every %d ms: %d); states published %ld; links "
                    "down %ld\n",
                    lo, hi, FollowMs, quietS * 1000 / FollowMs, watcher.states() - states0,
                    watcher.downs() - downs0);
    }

    // 2. Changes at the units.
    {
        const long downs0 = watcher.downs();
        const CpuTime h0 = cpuOf(pid), b0 = cpuOf(broker.pid());
        const qint64 phase = nowNs();
        units.setChanging(true);
        runFor(changesS * 1000);
        units.setChanging(false);
        const CpuTime h1 = cpuOf(pid), b1 = cpuOf(broker.pid());
        runFor(1000);
        std::lock_guard<std::mutex> lock(ledger.mutex);
        const Summary s = summarise(ledger.changeMs);
        int open = 0;
        for (const auto &c : ledger.change)
            open += c.open ? 1 : 0;
        printCpu(QStringLiteral("changes, %1 s").arg(changesS).toLatin1().constData(), pid, h0, h1, b0, b1);
        std::printf("  a change at a unit, from its reply leaving to the subscriber holding the state: "
                    "%zu of %d changes seen, median %.2f ms, 90th percentile %.2f ms, worst %.2f ms; never "
                    "seen %d; links down %ld\n",
                    s.n, ledger.changesMade, s.median, s.p90, s.worst, open, watcher.downs() - downs0);
        if (s.n) {
            // When the slowest one left, beside the hub's searches, to tell a stall's cause.
            const size_t w = size_t(std::max_element(ledger.changeMs.begin(), ledger.changeMs.end()) -
                                    ledger.changeMs.begin());
            std::printf("  the slowest: unit %d, its reply left %.3f s into the phase; the hub searched at",
                        ledger.changeFrom[w].first + 1, double(ledger.changeFrom[w].second - phase) / 1e9);
            for (qint64 t : ledger.searchedAt)
                std::printf(" %+.3f", double(t - phase) / 1e9);
            std::printf(" s\n");
        }
    }

    // 3. Commands.
    {
        const int total = rate * commandS;
        const int perUnit = (total + Units - 1) / Units;
        ledger.prepareCommands(perUnit);
        Client publisher("bench-publisher", broker.port());
        // No limit on QoS 1 messages in flight: the publisher's pace is the bench's, not the
        // library's queue.
        mosquitto_int_option(publisher.handle(), MOSQ_OPT_SEND_MAXIMUM, 65535);
        if (!publisher.start() || !waitFor([&] { return publisher.isConnected(); }, 5000)) {
            std::fprintf(stderr, "the publisher could not connect\n");
            return 1;
        }
        std::vector<QByteArray> topics;
        for (int u = 0; u < Units; ++u)
            topics.push_back(topicOf(u, "set"));
        const long downs0 = watcher.downs(), states0 = watcher.states();
        std::atomic<bool> done{false};
        std::atomic<int> refused{0};
        qint64 lastPublished = 0, maxBehind = 0;
        const CpuTime h0 = cpuOf(pid), b0 = cpuOf(broker.pid());
        std::vector<long> rss{rssKb(pid)};
        const qint64 start = nowNs() + 1000000;
        std::thread pacer([&] {
            for (int i = 0; i < total; ++i) {
                const qint64 due = start + qint64(i) * 1000000000 / rate;
                const timespec ts{time_t(due / 1000000000), long(due % 1000000000)};
                clock_nanosleep(CLOCK_MONOTONIC, TIMER_ABSTIME, &ts, nullptr);
                const int u = i % Units, k = i / Units;
                const QByteArray line = "pgm " + QByteArray::number(k % Inputs + 1);
                const qint64 now = nowNs();
                maxBehind = std::max(maxBehind, now - due);
                ledger.published[size_t(u)][size_t(k)] = now;
                if (mosquitto_publish(publisher.handle(), nullptr, topics[size_t(u)].constData(), line.size(),
                                      line.constData(), 1, false) != MOSQ_ERR_SUCCESS)
                    ++refused;
            }
            lastPublished = nowNs();
            done = true;
        });
        for (int s = 1; s <= commandS; ++s) {
            const qint64 due = start + qint64(s) * 1000000000;
            runFor(int(std::max<qint64>(0, due - nowNs()) / 1000000));
            rss.push_back(rssKb(pid));
        }
        pacer.join();
        const CpuTime h1 = cpuOf(pid), b1 = cpuOf(broker.pid());
        waitFor([&] { return ledger.commandsArrived() >= total; }, 10000);
        const qint64 allIn = nowNs();
        runFor(2000);
        const long rssAfter = rssKb(pid);

        std::lock_guard<std::mutex> lock(ledger.mutex);
        long arrived = 0, inOrder = 0, unitsComplete = 0;
        std::vector<double> ms;
        for (int u = 0; u < Units; ++u) {
            const auto &got = ledger.arrived[size_t(u)];
            const int sent = total / Units + (u < total % Units ? 1 : 0);
            arrived += long(got.size());
            // In order: the k-th arrival is the k-th command published to that unit.
            long ordered = 0;
            for (size_t k = 0; k < got.size() && k < size_t(sent); ++k) {
                if (got[k].first != int(k % Inputs) + 1)
                    break;
                ++ordered;
                ms.push_back(double(got[k].second - ledger.published[size_t(u)][k]) / 1e6);
            }
            inOrder += ordered;
            unitsComplete += got.size() == size_t(sent) && ordered == sent ? 1 : 0;
        }
        const Summary s = summarise(ms);
        const double span = double(lastPublished - start) / 1e9;
        printCpu(QStringLiteral("commands, %1 s").arg(commandS).toLatin1().constData(), pid, h0, h1, b0, b1);
        std::printf("  %d commands published at %.0f a second (QoS 1; %d refused by the library, the pace "
                    "at most %.2f ms behind), %ld reached the units, %ld of them in order from the first "
                    "(every unit complete and in order: %ld of %d); the last %.0f ms after the last "
                    "publication\n",
                    total, double(total) / span, refused.load(), double(maxBehind) / 1e6, arrived, inOrder,
                    unitsComplete, Units, double(allIn - lastPublished) / 1e6);
        std::printf("  from publication to the unit: median %.2f ms, 90th percentile %.2f ms, worst %.2f ms; "
                    "states published meanwhile %ld; links down %ld\n",
                    s.median, s.p90, s.worst, watcher.states() - states0, watcher.downs() - downs0);
        std::printf("  VmRSS (kB) at 0, 1, ... %d s:", commandS);
        for (long kb : rss)
            std::printf(" %ld", kb);
        std::printf("; 2 s after the last: %ld (at start-up %ld)\n", rssAfter, rssReady);
    }

    std::printf("searches answered %ld; other datagrams at the units %ld; UDP datagrams dropped for a full "
                "receive buffer %ld; load %s",
                units.searches(), units.others(), udpBufferDrops(),
                mqtttest::runProgram(QStringLiteral("cat"), {QStringLiteral("/proc/loadavg")}).constData());
    if (std::getenv("BENCH_HUB_LOG"))
        std::printf("kova-hub's log:\n%s\nmosquitto's log:\n%s", hubLogText().constData(),
                    broker.log().constData());
    hub.terminate();
    if (!hub.waitForFinished(5000))
        hub.kill();
    hub.waitForFinished(5000);
    mosquitto_lib_cleanup();
    return 0;
}
