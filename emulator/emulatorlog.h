#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>

// One line per event to stderr and, when opened, to the log file; every line is flushed at
// once so a test can wait on the file.
class EmulatorLog
{
public:
    bool open(const QString &path, QString *error);
    void line(const QString &text);

    // "rx unit=10.77.1.1 board=main cmd=0x83 data=0102 sum=ok dev=a5ff from=10.77.0.1:7000", or for a
    // datagram that is no frame "rx unit=... board=... malformed=short bytes=a56c from=...".
    static QString frameLine(const char *direction, const QString &unit, const QString &board,
                             const QByteArray &datagram, const QString &peerKey, const QString &peer);

private:
    QFile m_file;
};
