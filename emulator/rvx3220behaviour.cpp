#include "rvx3220behaviour.h"

#include "emuframe.h"
#include "familyregistry.h"

#include <QDebug>
#include <utility>

namespace {

using EmuFrame::hexByte;

constexpr uint8_t CmdReadState = 0x49;
constexpr uint8_t CmdSetAddress = 0x05;
constexpr int LeverTop = 125;

int word(const QByteArray &data)
{
    return EmuFrame::byteAt(data, 0) | (EmuFrame::byteAt(data, 1) << 8);
}

QString wipeName(int pattern)
{
    switch (pattern) {
    case 0x25:
        return QStringLiteral("up");
    case 0x29:
        return QStringLiteral("down");
    case 0x23:
        return QStringLiteral("left");
    case 0x27:
        return QStringLiteral("right");
    default:
        return hexByte(pattern);
    }
}

} // namespace

Rvx3220Behaviour::Rvx3220Behaviour(const UnitConfig &unit, QObject *parent) : UnitBehaviour(unit, parent)
{
    m_volumes.insert(m_ch1, 60);
    m_volumes.insert(m_ch2, 60);
}

void Rvx3220Behaviour::swapBuses()
{
    std::swap(m_pgm, m_pvw);
    ++m_transitions;
}

QList<Reply> Rvx3220Behaviour::handle(Board board, uint8_t command, const QByteArray &data,
                                      const QByteArray &)
{
    if (board != Board::Main)
        return {};
    m_decoded = command == CmdReadState ? QStringLiteral("read state") : apply(command, data);
    if (m_decoded.isEmpty()) {
        m_decoded = QStringLiteral("unknown ") + hexByte(command);
        noteUnknown(hexByte(command));
    }
    // Beside the frame log (which has the bytes), what the unit made of them.
    qInfo().noquote() << "decoded unit=" + unit().mainIp.toString() << m_decoded;
    if (command == CmdReadState) {
        // Layout of the unit's own choosing; the panel drops the reply after looking at
        // byte 17.
        QByteArray record;
        record.append(char(0));
        record.append(char(m_pgm)).append(char(m_pvw)).append(char(m_pip)).append(char(m_pop));
        record.append(char(m_output));
        return {reply(Board::Main, CmdReadState, record)};
    }
    return {};
}

QString Rvx3220Behaviour::apply(uint8_t command, const QByteArray &data)
{
    const int d1 = EmuFrame::byteAt(data, 0);
    const int d2 = EmuFrame::byteAt(data, 1);
    switch (command) {
    case 0x80:
        m_pgm = d1;
        return QStringLiteral("PGM %1").arg(d1);
    case 0x81:
        m_pvw = d1;
        return QStringLiteral("PVW %1").arg(d1);
    case 0x82:
        m_leverStroke = d1;
        m_leverTravel = d2;
        // A push reaches the top when the return stroke starts at 0, and the pull ends at
        // the return stroke's 125: each end completes one transition.
        if (d1 == 1 && d2 == 0 && !m_leverAtEnd) {
            m_leverAtEnd = true;
            swapBuses();
        } else if (d1 == 1 && d2 == LeverTop && m_leverAtEnd) {
            m_leverAtEnd = false;
            swapBuses();
        }
        return QStringLiteral("lever %1 %2").arg(d1).arg(d2);
    case 0x83:
        ++m_cuts;
        // With an inset up a cut changes the inset, not the buses.
        if (!m_pip)
            swapBuses();
        return QStringLiteral("CUT");
    case 0x86:
        m_pip = d1 ? 1 : 0;
        if (m_pip)
            m_pop = 0;
        return QStringLiteral("PIP %1").arg(d1);
    case 0x8E:
        m_effect = QStringLiteral("mix");
        m_wipeArmed = false;
        return QStringLiteral("effect MIX");
    case 0x8F:
        m_effect = QStringLiteral("fade");
        m_wipeArmed = false;
        return QStringLiteral("effect FADE");
    case 0x90:
        m_wipeArmed = true;
        return QStringLiteral("wipe");
    case 0x92:
        if (!m_wipeArmed)
            return QStringLiteral("wipe pattern %1 without wipe, ignored").arg(wipeName(d1));
        m_effect = QStringLiteral("wipe");
        m_wipe = d1;
        return QStringLiteral("wipe pattern %1").arg(wipeName(d1));
    case 0x9D:
        m_pipBorder = d1;
        return QStringLiteral("PIP border %1").arg(d1);
    case 0x9E:
        m_pipColor = d1;
        return QStringLiteral("PIP colour %1").arg(d1);
    case 0x9F:
        m_pipWidth = d1;
        return QStringLiteral("PIP width %1").arg(d1);
    case 0xA0:
        m_pipH = word(data);
        return QStringLiteral("PIP H %1").arg(m_pipH);
    case 0xA1:
        m_pipV = word(data);
        return QStringLiteral("PIP V %1").arg(m_pipV);
    case 0xA2:
        m_pipSize = d1;
        return QStringLiteral("PIP size %1").arg(d1);
    case 0xA3:
        m_output = d1;
        return QStringLiteral("output %1").arg(hexByte(d1));
    case 0xA7:
        m_pop = d1 ? 1 : 0;
        if (m_pop)
            m_pip = 0;
        return QStringLiteral("POP %1").arg(d1);
    case 0xB8:
        // One code for both channels' volumes: the source code says which.
        m_volumes.insert(d1, d2);
        return QStringLiteral("volume source %1 to %2").arg(hexByte(d1)).arg(d2);
    case 0xB9:
        m_ch1 = d1;
        return QStringLiteral("CH1 source %1").arg(hexByte(d1));
    case 0xBA:
        m_ch2 = d1;
        return QStringLiteral("CH2 source %1").arg(hexByte(d1));
    case 0xCB:
        m_audio = QStringLiteral("mix");
        return QStringLiteral("audio MIX");
    case 0xCC:
        m_audio = QStringLiteral("afv");
        return QStringLiteral("audio AFV");
    case CmdSetAddress:
        m_requestedIp = QStringLiteral("%1.%2.%3.%4")
                            .arg(d1)
                            .arg(d2)
                            .arg(EmuFrame::byteAt(data, 2))
                            .arg(EmuFrame::byteAt(data, 3));
        return QStringLiteral("address %1").arg(m_requestedIp);
    default:
        return m_popSettings.apply(command, data) ? m_popSettings.describe(command) : QString();
    }
}

StateLines Rvx3220Behaviour::state() const
{
    auto num = [](int v) { return QString::number(v); };
    StateLines lines{
        {"pgm", num(m_pgm)},
        {"pvw", num(m_pvw)},
        {"effect", m_effect},
        {"wipe", m_effect == QLatin1String("wipe") ? wipeName(m_wipe) : QStringLiteral("-")},
        {"lever", QStringLiteral("%1,%2").arg(m_leverStroke).arg(m_leverTravel)},
        {"cuts", num(m_cuts)},
        {"transitions", num(m_transitions)},
        {"audio", m_audio},
        {"ch1", hexByte(m_ch1)},
        {"ch2", hexByte(m_ch2)},
    };
    for (auto it = m_volumes.cbegin(); it != m_volumes.cend(); ++it)
        lines.append({QStringLiteral("vol_%1").arg(hexByte(it.key())), num(it.value())});
    lines += StateLines{
        {"output", hexByte(m_output)},
        {"pip", num(m_pip)},
        {"pip_border", num(m_pipBorder)},
        {"pip_color", num(m_pipColor)},
        {"pip_width", num(m_pipWidth)},
        {"pip_size", num(m_pipSize)},
        {"pip_h", num(m_pipH)},
        {"pip_v", num(m_pipV)},
        {"pop", num(m_pop)},
    };
    m_popSettings.appendState(lines);
    lines.append({"decoded", m_decoded});
    if (!m_requestedIp.isEmpty())
        lines.append({"requested_ip", m_requestedIp});
    appendUnknown(lines);
    return lines;
}

REGISTER_FAMILY(Rvx3220Behaviour, 0x22)
