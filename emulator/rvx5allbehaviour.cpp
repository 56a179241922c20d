#include "rvx5allbehaviour.h"

#include "emuframe.h"
#include "familyregistry.h"

namespace {

constexpr char StateSeparator = 0x23;
// Pieces 2 to 16 of the long reply are empty: 15 separators more after the serial's.
constexpr int LongReplyEmptyPieces = 15;

constexpr uint8_t BarInput = 9;

// Output format codes: 1080P60, P50, I60, I50, P30, P25, P24.
constexpr uint8_t OutputCodes[] = {0x07, 0x0B, 0x09, 0x01, 0x03, 0x0D, 0x05};
// Audio sources the units take, by code.
constexpr uint8_t Sources[] = {0x07, 0x03, 0x04, 0x05, 0x06, 0x08, 0x00};
constexpr uint8_t Sources5350[] = {0x03, 0x04, 0x08, 0x00};

// Wipe pattern codes of 0x92: left, up, right, down.
constexpr uint8_t WipeLeft = 0x28;
constexpr uint8_t WipeUp = 0x2A;
constexpr uint8_t WipeRight = 0x2C;
constexpr uint8_t WipeDown = 0x2E;

// PIP position range by PIP size (small, medium, large).
struct Range
{
    int h;
    int v;
};
constexpr Range PipRanges[] = {{1440, 810}, {1280, 720}, {960, 540}};

template <size_t N> bool contains(const uint8_t (&table)[N], uint8_t value)
{
    for (uint8_t v : table) {
        if (v == value)
            return true;
    }
    return false;
}

} // namespace

Rvx5AllBehaviour::Model Rvx5AllBehaviour::modelOf(uint8_t childType)
{
    switch (childType) {
    case 0x51:
    case 0x52:
    case 0x56:
        return Model::Rvx5370;
    case 0x55:
        return Model::Rvx5350;
    default:
        return Model::Rvx5310;
    }
}

Rvx5AllBehaviour::Rvx5AllBehaviour(const UnitConfig &unit, QObject *parent)
    : RecordBehaviour(unit, parent), m_model(modelOf(unit.childType)), m_serial(unit.serial)
{
    if (m_serial.isEmpty()) {
        // Made in 2026-11, the model, the unit identifier, batch 1.
        m_serial = QByteArray::fromHex("202611");
        m_serial.append(char(unit.childType));
        m_serial.append(unit.id);
        m_serial.append('\x01');
    }
    powerUp();
}

void Rvx5AllBehaviour::powerUp()
{
    if (m_model == Model::Rvx5350)
        powerUpRecord(RecordLength8000, 0x03, 0x04);
    else
        powerUpRecord(RecordLength8000, 0x07, 0x03);
    m_recording = false;
    m_paused = false;
    m_stream = 0;
    m_pop = 0;
    m_pgmBeforeBar = 1;
    m_pvwBeforeBar = 2;
    m_rotated = false;
}

QByteArray Rvx5AllBehaviour::readState()
{
    ++m_reads;
    const bool longForm =
        unit().stateForm == StateForm::Long || (unit().stateForm == StateForm::FirstLong && m_reads == 1);
    if (!longForm)
        return RecordBehaviour::readState();
    QByteArray lead = m_serial;
    lead.append(QByteArray(LongReplyEmptyPieces, StateSeparator));
    return stateReply(lead);
}

bool Rvx5AllBehaviour::takesInput(uint8_t input) const
{
    if (m_model == Model::Rvx5350)
        return input == 1 || input == 2;
    return (input >= 1 && input <= 4) || input == BarInput;
}

bool Rvx5AllBehaviour::takesSource(uint8_t code) const
{
    return m_model == Model::Rvx5350 ? contains(Sources5350, code) : contains(Sources, code);
}

void Rvx5AllBehaviour::setPosition(int highField, int value)
{
    setField(highField, uint8_t(value >> 8));
    setField(highField + 1, uint8_t(value & 0xFF));
}

void Rvx5AllBehaviour::clampPositions()
{
    const Range range = PipRanges[qMin<int>(field(PipSize), 2)];
    const int h = (field(PipHHigh) << 8) | field(PipHLow);
    const int v = (field(PipVHigh) << 8) | field(PipVLow);
    setPosition(PipHHigh, qMin(h, range.h));
    setPosition(PipVHigh, qMin(v, range.v));
}

void Rvx5AllBehaviour::putBar(int busField, uint8_t on, uint8_t *kept)
{
    if (!takesInput(BarInput))
        return;
    if (on && field(busField) != BarInput) {
        *kept = field(busField);
        setField(busField, BarInput);
    } else if (!on && field(busField) == BarInput) {
        setField(busField, *kept);
    }
}

void Rvx5AllBehaviour::unknownCommand(Board board, uint8_t command)
{
    noteUnknown((board == Board::His ? QStringLiteral("his:") : QString()) + EmuFrame::hexByte(command));
}

bool Rvx5AllBehaviour::applyMain(uint8_t command, const QByteArray &data)
{
    const uint8_t d0 = EmuFrame::byteAt(data, 0);
    const uint8_t d1 = EmuFrame::byteAt(data, 1);

    switch (command) {
    case 0x86:
        if (d0)
            m_pop = 0; // one inset at a time
        return applyCommon(command, data);
    case 0x87:
        m_stream = d0;
        break;
    case 0x92:
        if (m_model == Model::Rvx5350) {
            const int own = d0 == WipeLeft    ? 0
                            : d0 == WipeRight ? 1
                            : d0 == WipeDown  ? 2
                            : d0 == WipeUp    ? 3
                                              : -1;
            if (own >= 0)
                setField(WipeType, uint8_t(own));
        } else if (d0 == WipeLeft || d0 == WipeUp || d0 == WipeRight || d0 == WipeDown) {
            setField(WipeType, uint8_t(d0 - WipeLeft));
        }
        break;
    case 0xA0:
    case 0xA1:
        applyCommon(command, data);
        clampPositions();
        break;
    case 0xA2:
        if (d0 <= 2) {
            setField(PipSize, d0);
            clampPositions();
        }
        break;
    case 0xA3: // the format's code, reported back as it came
        if (contains(OutputCodes, d0))
            setField(OutputFormat, d0);
        break;
    case 0xA5:
        if (d0 <= 2)
            setField(Rate, d0);
        break;
    case 0xA7:
        m_pop = d0;
        if (d0)
            setField(PipState, 0);
        break;
    case 0xB2:
        m_recording = d0 != 0;
        m_paused = false;
        break;
    case 0xB4: // CH1, CH2, third and master level; the state reports the first two as received
        applyCommon(command, data);
        setField(AudioVol1, d0);
        setField(AudioVol2, d1);
        break;
    case 0xC5:
        if (m_recording)
            m_paused = !m_paused;
        break;
    case 0xD4:
        setField(Mute, field(Mute) ? 0 : 1);
        break;
    case 0xD5:
        m_rotated = !m_rotated;
        break;
    case 0xD7:
        putBar(Pgm, d0, &m_pgmBeforeBar);
        break;
    case 0xD8:
        putBar(Pvw, d0, &m_pvwBeforeBar);
        break;
    case 0x0B:
        ++m_resets;
        powerUp();
        break;
    default:
        return m_popSettings.apply(command, data) || applyCommon(command, data);
    }
    return true;
}

StateLines Rvx5AllBehaviour::state() const
{
    static const char *const models[] = {"RVX5310", "RVX5370", "RVX5350"};
    auto num = [](int v) { return QString::number(v); };
    StateLines lines = RecordBehaviour::state();
    lines.prepend({"model", QString::fromLatin1(models[int(m_model)])});
    lines.append({"mute", num(field(Mute))});
    lines.append({"serial", EmuFrame::hex(m_serial)});
    lines.append({"reads", num(m_reads)});
    lines.append({"rec", num(m_recording)});
    lines.append({"pause", num(m_paused)});
    lines.append({"stream", num(m_stream)});
    lines.append({"pop", num(m_pop)});
    m_popSettings.appendState(lines);
    lines.append({"rotate", num(m_rotated)});
    lines.append({"resets", num(m_resets)});
    appendUnknown(lines);
    return lines;
}

REGISTER_FAMILY(Rvx5AllBehaviour, 0x4F, 0x53, 0x54, 0x51, 0x52, 0x56, 0x55)
