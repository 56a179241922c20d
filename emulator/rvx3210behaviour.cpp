#include "rvx3210behaviour.h"

#include "emuframe.h"
#include "familyregistry.h"

#include <QHostAddress>
#include <utility>

namespace {

constexpr uint8_t CmdReadState = 0x49;
constexpr uint8_t CmdNetwork = 0x24;
constexpr uint8_t CmdDns = 0x23;
constexpr uint8_t CmdSetAddress = 0x05;
constexpr uint8_t CmdSetUrl = 0x67;
constexpr uint8_t CmdReadUrl = 0x6A;
constexpr char StateSeparator = 0x23;
constexpr int UrlRecordSize = 789;

// Output format: the command carries the list index, the state reports the unit's own code.
constexpr uint8_t OutputCodes[] = {7, 11, 9, 1, 3, 13, 5};

QByteArray octets(const QHostAddress &address)
{
    const quint32 v = address.toIPv4Address();
    QByteArray out(4, '\0');
    for (int i = 0; i < 4; ++i)
        out[i] = char((v >> (24 - 8 * i)) & 0xFF);
    return out;
}

QString dotted(const QByteArray &four)
{
    return QStringLiteral("%1.%2.%3.%4")
        .arg(EmuFrame::byteAt(four, 0))
        .arg(EmuFrame::byteAt(four, 1))
        .arg(EmuFrame::byteAt(four, 2))
        .arg(EmuFrame::byteAt(four, 3));
}

QByteArray padded(const QByteArray &bytes, int size)
{
    return bytes.left(size).leftJustified(size, '\0');
}

} // namespace

Rvx3210Behaviour::Rvx3210Behaviour(const UnitConfig &unit, QObject *parent)
    : UnitBehaviour(unit, parent), m_record(RecordLength3210, '\0'), m_levels(4, '\0')
{
    // A plausible unit after power-up; no value equals the state separator 0x23.
    setField(Pgm, 1);
    setField(Pvw, 2);
    setField(AudioCh1, 0x07);
    setField(AudioVol1, 50);
    setField(AudioCh2, 0x03);
    setField(AudioVol2, 50);
    setField(TransType, 1);
    setField(PipBorderWidth, 2);
    setField(Rate, 1);
    setField(OutputFormat, OutputCodes[0]);

    m_hisIp = unit.hasHis() ? octets(unit.hisIp) : QByteArray(4, '\0');
    m_hisMask = QByteArray::fromHex("ffff0000");
    m_hisGateway = QByteArray::fromHex("0a4d0001");
    m_hisDns = QByteArray::fromHex("0a4d0001");
}

void Rvx3210Behaviour::resizeRecord(int length)
{
    m_record = padded(m_record, length);
}

uint8_t Rvx3210Behaviour::field(int offset) const
{
    return EmuFrame::byteAt(m_record, offset);
}

void Rvx3210Behaviour::setField(int offset, uint8_t value)
{
    if (offset >= 0 && offset < m_record.size())
        m_record[offset] = char(value);
}

void Rvx3210Behaviour::setLevels(const QByteArray &levels)
{
    m_levels = padded(levels, 4);
}

QList<Reply> Rvx3210Behaviour::handle(Board board, uint8_t command, const QByteArray &data,
                                      const QByteArray &)
{
    if (board == Board::His)
        return handleHis(command, data);
    if (command == CmdReadState) {
        Reply r;
        r.board = Board::Main;
        r.bytes = stateReply();
        return {r};
    }
    applyMain(command, data);
    return {};
}

QByteArray Rvx3210Behaviour::stateReply() const
{
    QByteArray data;
    data.append(StateSeparator);
    data.append('\x01');
    data.append(StateSeparator);
    data.append(m_record);
    data.append(StateSeparator);
    QByteArray frame = frameFrom(Board::Main, CmdReadState, data);
    frame[14] = char(stateFrameMarker());
    EmuFrame::reseal(frame);
    return frame;
}

bool Rvx3210Behaviour::applyMain(uint8_t command, const QByteArray &data)
{
    const uint8_t d0 = EmuFrame::byteAt(data, 0);
    const uint8_t d1 = EmuFrame::byteAt(data, 1);
    auto swapBuses = [this] {
        const uint8_t pgm = field(Pgm);
        setField(Pgm, field(Pvw));
        setField(Pvw, pgm);
    };
    auto toggle = [this](int offset, uint8_t on) { setField(offset, field(offset) ? 0 : on); };

    switch (command) {
    case 0x80:
        setField(Pgm, d0);
        break;
    case 0x81:
        setField(Pvw, d0);
        break;
    case 0x82:
        // Direction and travel; 128 marks the end of a transition.
        if (d1 == 128)
            swapBuses();
        break;
    case 0x83:
    case 0x84:
        swapBuses();
        break;
    case 0x85:
        toggle(Ftb, 1);
        break;
    case 0x86:
        setField(PipState, d0);
        break;
    case 0x8D:
        setField(TransType, 1);
        break;
    case 0x8E:
        setField(TransType, 2);
        break;
    case 0x8F:
        setField(TransType, 4);
        break;
    case 0x92:
        setField(WipeType, uint8_t(d0 - 0x23));
        break;
    case 0x9D:
        setField(PipBorderEnable, d0);
        break;
    case 0x9E:
        setField(PipBorderColor, d0);
        break;
    case 0x9F:
        setField(PipBorderWidth, d0);
        break;
    case 0xA0: // positions arrive low byte first and are reported high byte first
        setField(PipHHigh, d1);
        setField(PipHLow, d0);
        break;
    case 0xA1:
        setField(PipVHigh, d1);
        setField(PipVLow, d0);
        break;
    case 0xA2:
        setField(PipSize, d0);
        break;
    case 0xA3:
        if (d0 < sizeof(OutputCodes))
            setField(OutputFormat, OutputCodes[d0]);
        break;
    case 0xB1:
        setField(Rate, d0);
        break;
    case 0xB4:
        setLevels(data);
        break;
    case 0xB9:
        setField(AudioCh1, d0);
        break;
    case 0xBA:
        setField(AudioCh2, d0);
        break;
    case 0xCB:
        setField(AudioType, 1);
        break;
    case 0xCC:
        setField(AudioType, 0);
        break;
    case 0xCD:
        toggle(Still, 1);
        break;
    case 0xCE:
        setField(AudioVol1, d0);
        break;
    case 0xCF:
        setField(AudioVol2, d0);
        break;
    case 0xD4:
        toggle(StaticValue, 255);
        break;
    case CmdSetAddress:
        // The emulator cannot move a unit to another address; the request is kept for the lab.
        m_requestedIp = dotted(data.left(4));
        break;
    case 0xD0: // F2 and F7 change nothing the state record reports
    case 0xD6:
        break;
    default:
        return false;
    }
    return true;
}

QList<Reply> Rvx3210Behaviour::handleHis(uint8_t command, const QByteArray &data)
{
    switch (command) {
    case CmdNetwork: {
        QByteArray payload;
        payload.append(QByteArray(2, '\0'));
        payload.append(m_hisIp);
        payload.append(m_hisMask);
        payload.append(m_hisGateway);
        payload.append(QByteArray(6, '\0'));
        payload.append(m_hisDns);
        payload.append(char(CmdNetwork)); // ends the payload for the receiver's split
        return {reply(Board::His, CmdNetwork, payload)};
    }
    case CmdSetAddress:
        m_hisIp = padded(data.mid(0, 4), 4);
        m_hisMask = padded(data.mid(4, 4), 4);
        m_hisGateway = padded(data.mid(8, 4), 4);
        return {};
    case CmdDns:
        m_hisDns = padded(data.left(4), 4);
        return {};
    case CmdSetUrl: {
        const QByteArray record = padded(data, UrlRecordSize);
        m_urls.insert(EmuFrame::byteAt(record, 1), record);
        return {};
    }
    case CmdReadUrl: {
        const uint8_t slot = EmuFrame::byteAt(data, 0);
        QByteArray record = m_urls.value(slot, QByteArray(UrlRecordSize, '\0'));
        record[0] = 0;
        record[1] = char(slot);
        record.append(char(CmdReadUrl));
        return {reply(Board::His, CmdReadUrl, record)};
    }
    default:
        return {};
    }
}

StateLines Rvx3210Behaviour::state() const
{
    auto num = [](int v) { return QString::number(v); };
    auto pos = [this](int high, int low) { return QString::number((field(high) << 8) | field(low)); };
    StateLines lines{
        {"pgm", num(field(Pgm))},
        {"pvw", num(field(Pvw))},
        {"audio", field(AudioType) ? QStringLiteral("mix") : QStringLiteral("afv")},
        {"ch1", num(field(AudioCh1))},
        {"vol1", num(field(AudioVol1))},
        {"ch2", num(field(AudioCh2))},
        {"vol2", num(field(AudioVol2))},
        {"trans", num(field(TransType))},
        {"wipe", num(field(WipeType))},
        {"ftb", num(field(Ftb))},
        {"pip", num(field(PipState))},
        {"pip_border", num(field(PipBorderEnable))},
        {"pip_color", num(field(PipBorderColor))},
        {"pip_width", num(field(PipBorderWidth))},
        {"pip_size", num(field(PipSize))},
        {"pip_h", pos(PipHHigh, PipHLow)},
        {"pip_v", pos(PipVHigh, PipVLow)},
        {"still", num(field(Still))},
        {"rate", num(field(Rate))},
        {"output", num(field(OutputFormat))},
        {"f3", num(field(StaticValue))},
        {"levels", EmuFrame::hex(m_levels)},
        {"record", EmuFrame::hex(m_record)},
        {"his_ip", dotted(m_hisIp)},
        {"his_mask", dotted(m_hisMask)},
        {"his_gateway", dotted(m_hisGateway)},
        {"his_dns", dotted(m_hisDns)},
    };
    if (!m_requestedIp.isEmpty())
        lines.append({"requested_ip", m_requestedIp});
    for (auto it = m_urls.cbegin(); it != m_urls.cend(); ++it) {
        const QByteArray &r = it.value();
        const int nameLen = qMin<int>(EmuFrame::byteAt(r, 2), 16);
        const int urlLen = qMin(EmuFrame::byteAt(r, 19) | (EmuFrame::byteAt(r, 20) << 8), 768);
        const QString name = QString::fromLatin1(r.mid(3, nameLen)).remove('\n').remove('=');
        const QString url = QString::fromLatin1(r.mid(21, urlLen)).remove('\n');
        lines.append({QStringLiteral("url%1").arg(it.key()), name + QLatin1Char(' ') + url});
    }
    return lines;
}

REGISTER_FAMILY(Rvx3210Behaviour, 0x21, 0x23, 0x24, 0x25, 0x26, 0x47)
