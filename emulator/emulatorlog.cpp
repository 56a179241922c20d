#include "emulatorlog.h"

#include "emuframe.h"

#include <cstdio>

bool EmulatorLog::open(const QString &path, QString *error)
{
    m_file.setFileName(path);
    if (!m_file.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Text)) {
        *error = m_file.errorString();
        return false;
    }
    return true;
}

void EmulatorLog::line(const QString &text)
{
    const QByteArray bytes = text.toUtf8() + '\n';
    std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stderr);
    std::fflush(stderr);
    if (m_file.isOpen()) {
        m_file.write(bytes);
        m_file.flush();
    }
}

QString EmulatorLog::frameLine(const char *direction, const QString &unit, const QString &board,
                               const QByteArray &datagram, const QString &peerKey, const QString &peer)
{
    const EmuFrame::Parsed p = EmuFrame::parse(datagram);
    QString text = QStringLiteral("%1 unit=%2 board=%3 ").arg(QLatin1String(direction), unit, board);
    if (!p.framed) {
        text += QStringLiteral("malformed=%1 bytes=%2").arg(p.problem, EmuFrame::hex(datagram));
    } else {
        text += QStringLiteral("cmd=0x%1 data=%2 sum=%3 dev=%4%5")
                    .arg(p.command, 2, 16, QLatin1Char('0'))
                    .arg(EmuFrame::hex(p.data), p.checksumOk ? QStringLiteral("ok") : QStringLiteral("bad"))
                    .arg(p.deviceClass, 2, 16, QLatin1Char('0'))
                    .arg(p.deviceNumber, 2, 16, QLatin1Char('0'));
    }
    text += QStringLiteral(" %1=%2").arg(peerKey, peer);
    return text;
}
