#pragma once

#include <QElapsedTimer>
#include <QFile>
#include <QMap>
#include <QRegularExpression>
#include <QString>
#include <QStringList>
#include <QtTest>

// Reading an emulated unit's state file (<LAB_STATE_DIR>/<main-ip>.state) from a lab test.
namespace LabState {

inline QMap<QString, QString> read(const QString &ip)
{
    QMap<QString, QString> out;
    QFile file(qEnvironmentVariable("LAB_STATE_DIR") + QLatin1Char('/') + ip + QStringLiteral(".state"));
    if (!file.open(QIODevice::ReadOnly))
        return out;
    for (const QByteArray &line : file.readAll().split('\n')) {
        const int eq = line.indexOf('=');
        if (eq > 0)
            out.insert(QString::fromUtf8(line.left(eq)), QString::fromUtf8(line.mid(eq + 1)));
    }
    return out;
}

// Waits until the unit's state holds every expected value; empty on success, else what differs.
inline QString waitFor(const QString &ip, const QMap<QString, QString> &expected, int ms = 5000)
{
    QElapsedTimer clock;
    clock.start();
    for (;;) {
        const QMap<QString, QString> state = read(ip);
        QStringList wrong;
        for (auto it = expected.cbegin(); it != expected.cend(); ++it) {
            if (state.value(it.key()) != it.value())
                wrong << QStringLiteral("%1=%2 (want %3)").arg(it.key(), state.value(it.key()), it.value());
        }
        if (wrong.isEmpty())
            return QString();
        if (clock.elapsed() > ms)
            return wrong.join(QStringLiteral(", "));
        QTest::qWait(20);
    }
}

// Lines of the emulator's frame log that match `pattern`.
inline int logCount(const QString &pattern)
{
    QFile file(qEnvironmentVariable("LAB_EMULATOR_LOG"));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    const QRegularExpression line(pattern);
    int n = 0;
    for (const QByteArray &l : file.readAll().split('\n'))
        n += line.match(QString::fromUtf8(l)).hasMatch() ? 1 : 0;
    return n;
}

} // namespace LabState
