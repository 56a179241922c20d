#include "rvx3410behaviour.h"

#include "emuframe.h"
#include "familyregistry.h"

namespace {

constexpr uint8_t CmdStream = 0x87;
constexpr uint8_t CmdRec = 0xB2;
constexpr uint8_t CmdPause = 0xC5;
constexpr uint8_t CmdRotate = 0xD5;
constexpr uint8_t CmdMenu = 0xD9;

constexpr uint8_t RecordingMask = 0x18;
constexpr int RecordingShift = 3;
constexpr uint8_t RecIdle = 0;
constexpr uint8_t RecOn = 1;
constexpr uint8_t RecPaused = 2;
constexpr uint8_t StreamingBit = 0x04;
constexpr uint8_t RotateMask = 0xC0;
constexpr uint8_t Rotated = 0x40;

constexpr uint8_t MenuUp = 0x41;
constexpr uint8_t MenuDown = 0x42;
constexpr uint8_t MenuEnter = 0x6B;
constexpr int MenuLines = 8;

constexpr int FrameMarkerOffset = 14;
constexpr uint8_t FrameMarker = 0x27;

} // namespace

Rvx3410Behaviour::Rvx3410Behaviour(const UnitConfig &unit, QObject *parent) : Rvx3210Behaviour(unit, parent)
{
    resizeRecord(RecordLength3410);
}

QByteArray Rvx3410Behaviour::readState()
{
    QByteArray frame = Rvx3210Behaviour::readState();
    frame[FrameMarkerOffset] = char(FrameMarker);
    EmuFrame::reseal(frame);
    return frame;
}

uint8_t Rvx3410Behaviour::recordingState() const
{
    return uint8_t((field(Recording) & RecordingMask) >> RecordingShift);
}

void Rvx3410Behaviour::setRecordingState(uint8_t s)
{
    setField(Recording,
             uint8_t((field(Recording) & ~RecordingMask) | ((s << RecordingShift) & RecordingMask)));
}

bool Rvx3410Behaviour::applyMain(uint8_t command, const QByteArray &data)
{
    const uint8_t d0 = EmuFrame::byteAt(data, 0);
    switch (command) {
    case CmdRec:
        setRecordingState(d0 ? RecOn : RecIdle);
        return true;
    case CmdPause:
        // Pause only means something while recording; a second pause resumes.
        if (recordingState() == RecOn)
            setRecordingState(RecPaused);
        else if (recordingState() == RecPaused)
            setRecordingState(RecOn);
        return true;
    case CmdStream:
        setField(Streaming, uint8_t(d0 ? field(Streaming) | StreamingBit : field(Streaming) & ~StreamingBit));
        return true;
    case CmdRotate:
        setField(Rotation, uint8_t((field(Rotation) & ~RotateMask) |
                                   ((field(Rotation) & RotateMask) == Rotated ? 0 : Rotated)));
        return true;
    case CmdMenu:
        menuKey(d0, EmuFrame::byteAt(data, 1));
        return true;
    default:
        return Rvx3210Behaviour::applyMain(command, data);
    }
}

void Rvx3410Behaviour::menuKey(uint8_t key, uint8_t pressed)
{
    m_lastMenuKey = QByteArray(1, char(key)) + QByteArray(1, char(pressed));
    if (!pressed)
        return;
    if (key == MenuEnter) {
        m_menuOpen = !m_menuOpen;
        m_menuLine = 0;
    } else if (m_menuOpen && key == MenuUp) {
        m_menuLine = (m_menuLine + MenuLines - 1) % MenuLines;
    } else if (m_menuOpen && key == MenuDown) {
        m_menuLine = (m_menuLine + 1) % MenuLines;
    }
}

StateLines Rvx3410Behaviour::state() const
{
    static const char *const recordingNames[] = {"idle", "recording", "paused", "3"};
    StateLines lines = Rvx3210Behaviour::state();
    lines.append({"rec", QString::fromLatin1(recordingNames[recordingState() & 3])});
    lines.append({"stream", QString::number((field(Streaming) & StreamingBit) ? 1 : 0)});
    lines.append({"rotate", QString::number((field(Rotation) & RotateMask) == Rotated ? 1 : 0)});
    lines.append({"menu", m_menuOpen ? QStringLiteral("open") : QStringLiteral("closed")});
    lines.append({"menu_line", QString::number(m_menuLine)});
    lines.append({"menu_last", EmuFrame::hex(m_lastMenuKey)});
    return lines;
}

REGISTER_FAMILY(Rvx3410Behaviour, 0x27, 0x28)
