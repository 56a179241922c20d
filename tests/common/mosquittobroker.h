#pragma once

// A real MQTT broker for tests: Debian's mosquitto on 127.0.0.1 and a free port, configured from
// a temporary directory, with optional users, ACL and TLS (a CA and a server certificate made
// here with openssl). It can be stopped and started again on the same port, and is killed when
// it goes. Also mosquitto_sub/mosquitto_pub, the broker's own clients, to watch and drive it.
// Run only inside a private network namespace (ctest does).

#include <QByteArray>
#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>
#include <QTimer>
#include <QtGlobal>
#include <algorithm>
#include <arpa/inet.h>
#include <functional>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

namespace mqtttest {

// Runs the event loop until pred() holds or ms have passed; no busy loop.
inline bool waitUntil(const std::function<bool()> &pred, int ms)
{
    QDeadlineTimer deadline(ms);
    while (!pred()) {
        if (deadline.hasExpired())
            return false;
        QEventLoop loop;
        QTimer::singleShot(10, &loop, &QEventLoop::quit);
        loop.exec();
    }
    return true;
}

// A program run to its end (the event loop runs meanwhile); its standard output, or a null
// array when it did not start or did not end in time.
inline QByteArray runProgram(const QString &program, const QStringList &args, int ms = 10000,
                             const QByteArray &input = QByteArray(), int *exitCode = nullptr)
{
    QProcess p;
    p.start(program, args);
    if (!p.waitForStarted(5000))
        return QByteArray();
    if (!input.isNull())
        p.write(input);
    p.closeWriteChannel();
    if (!waitUntil([&p] { return p.state() == QProcess::NotRunning; }, ms)) {
        p.kill();
        p.waitForFinished(2000);
        return QByteArray();
    }
    if (exitCode)
        *exitCode = p.exitCode();
    QByteArray out = p.readAllStandardOutput();
    if (out.isNull())
        out = QByteArray("");
    return out;
}

inline bool portAccepts(quint16 port)
{
    const int fd = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in a{};
    a.sin_family = AF_INET;
    a.sin_port = htons(port);
    a.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    const bool ok = fd >= 0 && ::connect(fd, reinterpret_cast<const sockaddr *>(&a), sizeof a) == 0;
    if (fd >= 0)
        ::close(fd);
    return ok;
}

inline quint16 freePort()
{
    const int fd = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in a{};
    a.sin_family = AF_INET;
    a.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t len = sizeof a;
    quint16 port = 0;
    if (fd >= 0 && ::bind(fd, reinterpret_cast<const sockaddr *>(&a), sizeof a) == 0 &&
        ::getsockname(fd, reinterpret_cast<sockaddr *>(&a), &len) == 0)
        port = ntohs(a.sin_port);
    if (fd >= 0)
        ::close(fd);
    return port;
}

class MosquittoBroker
{
public:
    MosquittoBroker() : m_port(freePort()) {}
    ~MosquittoBroker() { stop(); }
    MosquittoBroker(const MosquittoBroker &) = delete;
    MosquittoBroker &operator=(const MosquittoBroker &) = delete;

    quint16 port() const { return m_port; }
    QString dir() const { return m_dir.path(); }
    bool tls() const { return m_tls; }
    QString caFile() const { return path("ca.crt"); }
    // mqtt://[user@]127.0.0.1:PORT, or mqtts:// once TLS is on.
    QString url(const QString &user = QString()) const
    {
        return QLatin1String(m_tls ? "mqtts://" : "mqtt://") + (user.isEmpty() ? QString() : user + '@') +
               QStringLiteral("127.0.0.1:") + QString::number(m_port);
    }
    // What the broker wrote about itself.
    QByteArray log() const
    {
        QFile f(path("mosquitto.log"));
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
    }

    // Adds a user (before start()); anonymous clients are then refused.
    bool addUser(const QString &user, const QString &password)
    {
        QStringList args{QStringLiteral("-b")};
        if (!m_hasUsers)
            args << QStringLiteral("-c");
        args << path("passwd") << user << password;
        int code = -1;
        if (runProgram(QStringLiteral("mosquitto_passwd"), args, 10000, QByteArray(), &code).isNull() ||
            code != 0)
            return false;
        m_hasUsers = true;
        return true;
    }
    // An ACL in mosquitto's acl_file syntax (before start()).
    bool setAcl(const QByteArray &acl) { return write("acl", acl); }
    // Makes a CA and a certificate for 127.0.0.1 and localhost signed by it; the listener then
    // speaks TLS only (before start()). Clients check it with caFile().
    bool enableTls()
    {
        const QStringList ec{QStringLiteral("-newkey"), QStringLiteral("ec"), QStringLiteral("-pkeyopt"),
                             QStringLiteral("ec_paramgen_curve:prime256v1"), QStringLiteral("-nodes")};
        const QString openssl = QStringLiteral("openssl");
        int code = -1;
        const auto ok = [&code](const QByteArray &out) { return !out.isNull() && code == 0; };
        if (!ok(runProgram(openssl,
                           QStringList{"req", "-x509"} + ec +
                               QStringList{"-keyout", path("ca.key"), "-out", path("ca.crt"), "-days", "2",
                                           "-subj", "/CN=KOVA test CA"},
                           20000, QByteArray(), &code)))
            return false;
        if (!ok(runProgram(openssl,
                           QStringList{"req"} + ec +
                               QStringList{"-keyout", path("server.key"), "-out", path("server.csr"), "-subj",
                                           "/CN=127.0.0.1"},
                           20000, QByteArray(), &code)))
            return false;
        if (!write("server.ext", "subjectAltName=IP:127.0.0.1,DNS:localhost\nbasicConstraints=CA:FALSE\n"
                                 "extendedKeyUsage=serverAuth\n"))
            return false;
        if (!ok(runProgram(openssl,
                           QStringList{"x509", "-req", "-in", path("server.csr"), "-CA", path("ca.crt"),
                                       "-CAkey", path("ca.key"), "-CAcreateserial", "-days", "2", "-out",
                                       path("server.crt"), "-extfile", path("server.ext")},
                           20000, QByteArray(), &code)))
            return false;
        m_tls = true;
        return true;
    }

    // Starts the broker (again, on the same port, after stop()) and waits until the port accepts.
    bool start()
    {
        if (m_process.state() != QProcess::NotRunning || m_port == 0)
            return false;
        QByteArray conf;
        // mosquitto run as root drops to its own user unless told otherwise, and that user could
        // not read the files here.
        if (::geteuid() == 0)
            conf += "user root\n";
        conf += "persistence false\nlog_dest file " + QFile::encodeName(path("mosquitto.log")) +
                "\nlog_type all\nconnection_messages true\n";
        conf += "listener " + QByteArray::number(m_port) + " 127.0.0.1\n";
        if (m_tls)
            conf += "cafile " + QFile::encodeName(path("ca.crt")) + "\ncertfile " +
                    QFile::encodeName(path("server.crt")) + "\nkeyfile " +
                    QFile::encodeName(path("server.key")) + "\n";
        conf += m_hasUsers
                    ? "allow_anonymous false\npassword_file " + QFile::encodeName(path("passwd")) + '\n'
                    : QByteArray("allow_anonymous true\n");
        if (QFile::exists(path("acl")))
            conf += "acl_file " + QFile::encodeName(path("acl")) + '\n';
        if (!write("mosquitto.conf", conf))
            return false;
        m_process.setProcessChannelMode(QProcess::MergedChannels);
        m_process.setStandardOutputFile(path("stdout.log"), QIODevice::Append);
        m_process.start(QStringLiteral("/usr/sbin/mosquitto"),
                        {QStringLiteral("-c"), path("mosquitto.conf")});
        if (!m_process.waitForStarted(5000))
            return false;
        QDeadlineTimer deadline(10000);
        while (!portAccepts(m_port)) {
            if (deadline.hasExpired() || m_process.waitForFinished(20)) {
                stop();
                return false;
            }
        }
        return true;
    }
    void stop()
    {
        if (m_process.state() == QProcess::NotRunning)
            return;
        m_process.terminate();
        if (!m_process.waitForFinished(5000)) {
            m_process.kill();
            m_process.waitForFinished(5000);
        }
    }
    bool isRunning() const { return m_process.state() == QProcess::Running; }
    // For SIGSTOP/SIGCONT: a broker that stalls without closing its connections.
    qint64 pid() const { return m_process.processId(); }

    // The arguments mosquitto_sub and mosquitto_pub need to reach this broker.
    QStringList clientArgs(const QString &user = QString(), const QString &password = QString()) const
    {
        QStringList args{QStringLiteral("-h"), QStringLiteral("127.0.0.1"), QStringLiteral("-p"),
                         QString::number(m_port)};
        if (m_tls)
            args << QStringLiteral("--cafile") << caFile();
        if (!user.isEmpty())
            args << QStringLiteral("-u") << user << QStringLiteral("-P") << password;
        return args;
    }
    // Every retained message under `pattern` as sorted "topic payload" lines (waits a second
    // for them), or {"<failed>"} when mosquitto_sub could not run.
    QStringList retained(const QString &pattern, const QStringList &auth = QStringList()) const
    {
        const QByteArray out = runProgram(
            QStringLiteral("mosquitto_sub"),
            clientArgs() + auth + QStringList{"-v", "--retained-only", "-W", "1", "-t", pattern}, 10000);
        if (out.isNull())
            return {QStringLiteral("<failed>")};
        QStringList lines = QString::fromUtf8(out).split('\n', Qt::SkipEmptyParts);
        std::sort(lines.begin(), lines.end());
        return lines;
    }
    // Publishes payload (read from standard input, so any bytes go) with mosquitto_pub.
    bool publish(const QString &topic, const QByteArray &payload,
                 const QStringList &extra = QStringList()) const
    {
        int code = -1;
        const QByteArray out =
            runProgram(QStringLiteral("mosquitto_pub"), clientArgs() + extra + QStringList{"-t", topic, "-s"},
                       10000, payload.isNull() ? QByteArray("") : payload, &code);
        return !out.isNull() && code == 0;
    }

private:
    QString path(const char *name) const { return m_dir.filePath(QLatin1String(name)); }
    bool write(const char *name, const QByteArray &data) const
    {
        QFile f(path(name));
        return f.open(QIODevice::WriteOnly | QIODevice::Truncate) && f.write(data) == data.size();
    }

    QTemporaryDir m_dir;
    quint16 m_port;
    bool m_hasUsers = false;
    bool m_tls = false;
    QProcess m_process;
};

// A mosquitto_sub that keeps running and collects "topic payload" lines, for messages that are
// not retained. waitReady() proves the subscription is in place before the test acts.
class MosquittoSub
{
public:
    MosquittoSub(const MosquittoBroker &broker, const QStringList &patterns,
                 const QStringList &extra = QStringList())
        : m_broker(broker)
    {
        QStringList args = broker.clientArgs() + extra + QStringList{"-v", "-t", QString::fromLatin1(Probe)};
        for (const QString &p : patterns)
            args << QStringLiteral("-t") << p;
        QObject::connect(&m_process, &QProcess::readyReadStandardOutput, [this] {
            m_buffer += m_process.readAllStandardOutput();
            int nl;
            while ((nl = m_buffer.indexOf('\n')) >= 0) {
                const QString line = QString::fromUtf8(m_buffer.left(nl));
                m_buffer.remove(0, nl + 1);
                if (line.startsWith(QLatin1String(Probe)))
                    m_probed = true;
                else
                    m_lines << line;
            }
        });
        m_process.start(QStringLiteral("mosquitto_sub"), args);
    }
    ~MosquittoSub()
    {
        m_process.kill();
        m_process.waitForFinished(2000);
    }
    bool waitReady(int ms = 5000)
    {
        return waitUntil(
                   [this] {
                       if (!m_probed)
                           m_broker.publish(QString::fromLatin1(Probe), "ready");
                       return m_probed || m_process.state() == QProcess::NotRunning;
                   },
                   ms) &&
               m_probed;
    }
    bool waitForLines(int n, int ms = 5000)
    {
        return waitUntil([this, n] { return m_lines.size() >= n; }, ms);
    }
    QStringList lines() const { return m_lines; }

private:
    static constexpr const char *Probe = "mqtttest/probe";
    const MosquittoBroker &m_broker;
    QProcess m_process;
    QByteArray m_buffer;
    QStringList m_lines;
    bool m_probed = false;
};

} // namespace mqtttest
