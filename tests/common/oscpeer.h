#pragma once

#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QStringList>
#include <QtTest>

// liblo's own tools as the peers of KOVA's OSC remote: oscsend as the control surface, oscdump
// as a subscriber listening on its own port (with -L, one line a message).
class OscPeer
{
public:
    ~OscPeer()
    {
        m_dump.kill();
        m_dump.waitForFinished();
    }

    // Empty when both tools are there and oscdump listens on `dumpPort`; else why not.
    QString start(quint16 remotePort, quint16 dumpPort)
    {
        m_remotePort = remotePort;
        m_oscsend = QStandardPaths::findExecutable(QStringLiteral("oscsend"));
        const QString oscdump = QStandardPaths::findExecutable(QStringLiteral("oscdump"));
        if (m_oscsend.isEmpty() || oscdump.isEmpty())
            return QStringLiteral(
                "oscsend and oscdump are missing: install liblo-tools (scripts/install-deps.sh)");
        m_dump.start(oscdump, {QStringLiteral("-L"), QString::number(dumpPort)});
        return m_dump.waitForStarted() ? QString() : QStringLiteral("oscdump did not start");
    }

    // One message to the remote, as "/kova/pgm i 2" is typed to oscsend; true once sent.
    bool send(const QStringList &message, QString *error = nullptr)
    {
        QProcess p;
        p.start(m_oscsend, QStringList{QStringLiteral("127.0.0.1"), QString::number(m_remotePort)} + message);
        const bool ok = p.waitForFinished(5000) && p.exitCode() == 0;
        if (!ok && error)
            *error = QString::fromLocal8Bit(p.readAllStandardError());
        return ok;
    }

    // New lines of oscdump (without their time tag) until `want` shows, within `ms`.
    bool shows(const QString &want, int ms = 4000)
    {
        return QTest::qWaitFor(
            [&] {
                take();
                return m_dumped.contains(want);
            },
            ms);
    }
    bool shows(const QRegularExpression &want, int ms = 4000)
    {
        return QTest::qWaitFor(
            [&] {
                take();
                return !m_dumped.filter(want).isEmpty();
            },
            ms);
    }

    // Every line oscdump printed so far; clear() it to look only at what comes after.
    QStringList &dumped() { return m_dumped; }

private:
    void take()
    {
        while (m_dump.canReadLine())
            m_dumped << QString::fromUtf8(m_dump.readLine()).trimmed().section(QLatin1Char(' '), 1);
    }

    quint16 m_remotePort = 0;
    QString m_oscsend;
    QProcess m_dump;
    QStringList m_dumped;
};
