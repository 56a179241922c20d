#include "recordbehaviour.h"

#include "emuframe.h"

#include <QHostAddress>

namespace {

constexpr uint8_t CmdReadState = 0x49;
constexpr uint8_t CmdNetwork = 0x24;
constexpr uint8_t CmdDns = 0x23;
constexpr uint8_t CmdSetAddress = 0x05;
constexpr uint8_t CmdSetUrl = 0x67;
constexpr uint8_t CmdReadUrl = 0x6A;
constexpr char StateSeparator = 0x23;
constexpr int UrlRecordSize = 789;
constexpr uint8_t LeverEnd = 128;

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

RecordBehaviour::RecordBehaviour(const UnitConfig &unit, QObject *parent)
    : UnitBehaviour(unit, parent), m_levels(4, '\0')
{
    m_hisIp = unit.hasHis() ? octets(unit.hisIp) : QByteArray(4, '\0');
    m_hisMask = QByteArray::fromHex("ffff0000");
    m_hisGateway = QByteArray::fromHex("0a4d0001");
    m_hisDns = QByteArray::fromHex("0a4d0001");
}

void RecordBehaviour::powerUpRecord(int length, uint8_t ch1, uint8_t ch2)
{
    m_record = QByteArray(length, '\0');
    setField(Pgm, 1);
    setField(Pvw, 2);
    setField(AudioCh1, ch1);
    setField(AudioVol1, 50);
    setField(AudioCh2, ch2);
    setField(AudioVol2, 50);
    setField(TransType, 1);
    setField(PipBorderWidth, 2);
    setField(Rate, 1);
    setField(OutputFormat, 0x07); // 1080P60
}

void RecordBehaviour::resizeRecord(int length)
{
    m_record = padded(m_record, length);
}

uint8_t RecordBehaviour::field(int offset) const
{
    return EmuFrame::byteAt(m_record, offset);
}

void RecordBehaviour::setField(int offset, uint8_t value)
{
    if (offset >= 0 && offset < m_record.size())
        m_record[offset] = char(value);
}

QList<Reply> RecordBehaviour::handle(Board board, uint8_t command, const QByteArray &data, const QByteArray &)
{
    if (board == Board::His)
        return handleHis(command, data);
    if (command == CmdReadState) {
        Reply r;
        r.board = Board::Main;
        r.bytes = readState();
        return {r};
    }
    if (!applyMain(command, data))
        unknownCommand(Board::Main, command);
    return {};
}

QByteArray RecordBehaviour::readState()
{
    return stateReply(QByteArray(1, '\x01'));
}

QByteArray RecordBehaviour::stateReply(const QByteArray &lead) const
{
    QByteArray data;
    data.append(StateSeparator);
    data.append(lead);
    data.append(StateSeparator);
    data.append(m_record);
    data.append(StateSeparator);
    return frameFrom(Board::Main, CmdReadState, data);
}

bool RecordBehaviour::applyCommon(uint8_t command, const QByteArray &data)
{
    const uint8_t d0 = EmuFrame::byteAt(data, 0);
    const uint8_t d1 = EmuFrame::byteAt(data, 1);
    auto swapBuses = [this] {
        const uint8_t pgm = field(Pgm);
        setField(Pgm, field(Pvw));
        setField(Pvw, pgm);
    };
    auto toggle = [this](int offset) { setField(offset, field(offset) ? 0 : 1); };

    switch (command) {
    case 0x80:
        if (takesInput(d0))
            setField(Pgm, d0);
        break;
    case 0x81:
        if (takesInput(d0))
            setField(Pvw, d0);
        break;
    case 0x82:
        // Direction and travel of the lever; 128 is its arrival at an end.
        if (d1 == LeverEnd)
            swapBuses();
        break;
    case 0x83:
    case 0x84:
        swapBuses();
        break;
    case 0x85:
        toggle(Ftb);
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
    case 0xB4:
        m_levels = padded(data, 4);
        break;
    case 0xB9:
        if (takesSource(d0))
            setField(AudioCh1, d0);
        break;
    case 0xBA:
        if (takesSource(d0))
            setField(AudioCh2, d0);
        break;
    case 0xCB:
        setField(AudioType, 1);
        break;
    case 0xCC:
        setField(AudioType, 0);
        break;
    case 0xCD:
        toggle(Still);
        break;
    case 0xCE:
        setField(AudioVol1, d0);
        break;
    case 0xCF:
        setField(AudioVol2, d0);
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

QList<Reply> RecordBehaviour::handleHis(uint8_t command, const QByteArray &data)
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
        unknownCommand(Board::His, command);
        return {};
    }
}

StateLines RecordBehaviour::state() const
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
