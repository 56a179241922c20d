#include "rvx3220_workdata.h"

#include "framecodec.h"
#include "protocol.h"
#include "workdata.h"

#include <cstring>

namespace Cmd = Protocol::Cmd;

namespace {

// Audio source list index -> source code. The unit has no source 0x02; the gap is its own.
const uint8_t CH_NB[8] = {0x00, 0x01, 0x03, 0x04, 0x05, 0x06, 0x07, 0x08};

// The panel's lists never give an index past the source or format tables; a sender given
// one sends nothing rather than a byte read from beyond them.
using Protocol::CmdReadState;
constexpr uint8_t CmdWipe = 0x90;
constexpr uint8_t CmdMix = 0x8E;
constexpr uint8_t CmdFade = 0x8F;
constexpr uint8_t CmdSetIp = 5;

} // namespace

Q_LOGGING_CATEGORY(lc3220, "kova.rvx3220", QtInfoMsg)

RVX3220_workdata::RVX3220_workdata(QObject *parent)
    // If someone holds the port exclusively, commands still leave; the unit's answers are
    // ignored in any case.
    : UnitLink(Family::Rvx3220, lc3220, parent)
{}

RVX3220_workdata::~RVX3220_workdata() = default;

void RVX3220_workdata::DevTypeID(QString ip, quint8 classByte, quint8 numberByte)
{
    bindUnit(UnitAddress::fromText(ip, classByte, numberByte));
}

void RVX3220_workdata::datagramArrived(const QByteArray &datagram, int length)
{
    Read3220State_Data(datagram, length);
}

RVX3220_workdata::Verdict RVX3220_workdata::examine(const QByteArray &frame, int length)
{
    using FrameCodec::byteAt;
    if (frame.size() < 2)
        return Verdict::TooShort;
    if (byteAt(frame, 0) != 0xA5 || byteAt(frame, 1) != 0x6C)
        return Verdict::BadLeadIn;
    // byteAt keeps a read count that disagrees with the buffer from reading outside it.
    if (length < 1 || length > frame.size() || byteAt(frame, length - 1) != 0xAE)
        return Verdict::BadTrailer;
    if (length < 18 || byteAt(frame, 16) != CmdReadState)
        return Verdict::NotState;
    return Verdict::StateReply;
}

void RVX3220_workdata::Read3220State_Data(const QByteArray &frame, int length)
{
    // The panel never shows what the unit reports, so even a state reply ends here. Its
    // first data byte is the one the unit's software looks at; nothing depends on it.
    (void)examine(frame, length);
}

void RVX3220_workdata::send0(uint8_t cmd)
{
    sendMain(nullptr, cmd);
}

void RVX3220_workdata::send1(uint8_t cmd, uint8_t d1)
{
    sendMain(nullptr, cmd, {d1});
}

void RVX3220_workdata::send2(uint8_t cmd, uint8_t d1, uint8_t d2)
{
    sendMain(nullptr, cmd, {d1, d2});
}

void RVX3220_workdata::SendCMDReadstate()
{
    send0(CmdReadState);
}

void RVX3220_workdata::SendCMDPGM(quint8 ch)
{
    send1(Cmd::Pgm, ch);
}

void RVX3220_workdata::SendCMDPVW(quint8 ch)
{
    send1(Cmd::Pvw, ch);
}

void RVX3220_workdata::SwndCMDslider(quint8 stroke, quint8 travel)
{
    send2(Cmd::Tbar, stroke, travel);
}

void RVX3220_workdata::SendCMDCUT()
{
    send0(Cmd::Cut);
}

void RVX3220_workdata::SendCMDAUTO()
{
    // The unit runs its automatic transition from the lever and CUT only; AUTO is a
    // panel-side animation and puts nothing on the wire.
}

void RVX3220_workdata::SendCMDPIP(quint8 on)
{
    send1(Cmd::Pip, on);
}

void RVX3220_workdata::SendCMDTRANSITIONS(quint8 effect)
{
    // MIX and FADE have codes of their own here; a wipe is the wipe command, then its pattern
    // (the RVX3210 family's patterns).
    if (effect == 1)
        send0(CmdMix);
    else if (effect == 2)
        send0(CmdFade);
    else if (effect >= 3 && effect <= 6) {
        SET_WIPE();
        send1(Cmd::WipePattern, Protocol::WipePatterns3210[effect - 3]);
    }
}

void RVX3220_workdata::SET_WIPE()
{
    send0(CmdWipe);
}

void RVX3220_workdata::SendCMDPIP_Border_Enable(quint8 v)
{
    send1(Cmd::PipBorderEnable, v);
}

void RVX3220_workdata::SendCMDPIP_Border_Color(quint8 v)
{
    send1(Cmd::PipBorderColor, v);
}

void RVX3220_workdata::SendCMDPIP_Border_Width(quint8 v)
{
    send1(Cmd::PipBorderWidth, v);
}

void RVX3220_workdata::SendCMDPIP_H_Position(quint16 x)
{
    send2(Cmd::PipH, FrameCodec::lowByte(x), FrameCodec::highByte(x));
}

void RVX3220_workdata::SendCMDPIP_V_Position(quint16 y)
{
    send2(Cmd::PipV, FrameCodec::lowByte(y), FrameCodec::highByte(y));
}

void RVX3220_workdata::SendCMDPIP_Border_Size(quint8 v)
{
    send1(Cmd::PipSize, v);
}

void RVX3220_workdata::SendCMDPGM_OUT(int index)
{
    const int code = Protocol::outputFormatCode(index);
    if (code >= 0)
        send1(Cmd::Format, uint8_t(code));
}

void RVX3220_workdata::SendCMDPOP(quint8 on)
{
    send1(Cmd::Pop, on);
}

void RVX3220_workdata::SendCMDPOP_Window(quint8 w)
{
    send1(Cmd::PopWindow, w);
}

void RVX3220_workdata::SendCMDPOP_Border_Enable(quint8 on)
{
    send1(Cmd::PopBorderEnable, on);
}

void RVX3220_workdata::SendCMDPOP_Border_Color(quint8 v)
{
    send1(Cmd::PopBorderColor, v);
}

void RVX3220_workdata::SendCMDPOP_Border_Width(quint8 v)
{
    send1(Cmd::PopBorderWidth, v);
}

void RVX3220_workdata::SendCMDPOP_H_Position(quint16 x)
{
    send2(Cmd::PopH, FrameCodec::lowByte(x), FrameCodec::highByte(x));
}

void RVX3220_workdata::SendCMDPOP_V_Position(quint16 y)
{
    send2(Cmd::PopV, FrameCodec::lowByte(y), FrameCodec::highByte(y));
}

// Both channels' volumes share one command code: the unit tells them apart by the source
// code alone.
void RVX3220_workdata::SendCMDCH1_VOL(int src, quint8 vol)
{
    if (src < 0 || src >= int(sizeof(CH_NB)))
        return;
    send2(Cmd::Level3220, CH_NB[src], vol);
}

void RVX3220_workdata::SendCMDCH2_VOL(int src, quint8 vol)
{
    if (src < 0 || src >= int(sizeof(CH_NB)))
        return;
    send2(Cmd::Level3220, CH_NB[src], vol);
}

void RVX3220_workdata::SendCMDCH1(int src)
{
    if (src < 0 || src >= int(sizeof(CH_NB)))
        return;
    send1(Cmd::Ch1Source, CH_NB[src]);
}

void RVX3220_workdata::SendCMDCH2(int src)
{
    if (src < 0 || src >= int(sizeof(CH_NB)))
        return;
    send1(Cmd::Ch2Source, CH_NB[src]);
}

void RVX3220_workdata::SendCMDMIX()
{
    send0(Cmd::AudioMix);
}

void RVX3220_workdata::SendCMDAFV()
{
    send0(Cmd::AudioAfv);
}

void RVX3220_workdata::SendCMD_IP(QByteArray &ip4, QString newIp)
{
    std::memset(&m_ipBlock, 0, sizeof(m_ipBlock));
    for (int i = 0; i < 4; ++i)
        m_ipBlock.ip[i] = FrameCodec::byteAt(ip4, i);
    uint8_t buf[128] = {};
    const uint16_t length =
        SWITCHER_DATA::Set_ipCom(buf, m_unit.devClass, m_unit.devNum, CmdSetIp, m_ipBlock);
    if (length <= 0)
        return;
    // The frame goes to the old address; only then does the unit move.
    sendFrame(buf, length, m_unit.host, nullptr);
    bindUnit(UnitAddress::fromText(newIp, m_unit.devClass, m_unit.devNum));
}

void RVX3220_workdata::perform(const Call &c)
{
    switch (c.action) {
    case UnitAction::Programme:
        return SendCMDPGM(quint8(c.a));
    case UnitAction::Preview:
        return SendCMDPVW(quint8(c.a));
    case UnitAction::Cut:
        return SendCMDCUT();
    case UnitAction::Fader:
        return SwndCMDslider(quint8(c.a), quint8(c.b));
    case UnitAction::Transition:
        return SendCMDTRANSITIONS(quint8(c.a));
    case UnitAction::Format:
        return SendCMDPGM_OUT(c.a);
    case UnitAction::AudioMode:
        return c.a ? SendCMDMIX() : SendCMDAFV();
    case UnitAction::Source:
        return c.a == 1 ? SendCMDCH1(c.b) : SendCMDCH2(c.b);
    case UnitAction::Level:
        // The unit takes a channel's level together with the source the channel plays.
        return c.a == 1 ? SendCMDCH1_VOL(c.c, quint8(c.b)) : SendCMDCH2_VOL(c.c, quint8(c.b));
    case UnitAction::Pip:
        return SendCMDPIP(quint8(c.a));
    case UnitAction::PipSize:
        return SendCMDPIP_Border_Size(quint8(c.a));
    case UnitAction::PipPosition:
        return c.a ? SendCMDPIP_H_Position(quint16(c.b)) : SendCMDPIP_V_Position(quint16(c.b));
    case UnitAction::PipBorder:
        return SendCMDPIP_Border_Enable(quint8(c.a));
    case UnitAction::PipBorderColor:
        return SendCMDPIP_Border_Color(quint8(c.a));
    case UnitAction::PipBorderWidth:
        return SendCMDPIP_Border_Width(quint8(c.a));
    case UnitAction::Pop:
        return SendCMDPOP(quint8(c.a));
    case UnitAction::PopWindow:
        return SendCMDPOP_Window(quint8(c.a));
    case UnitAction::PopBorder:
        return SendCMDPOP_Border_Enable(quint8(c.a));
    case UnitAction::PopBorderColor:
        return SendCMDPOP_Border_Color(quint8(c.a));
    case UnitAction::PopBorderWidth:
        return SendCMDPOP_Border_Width(quint8(c.a));
    case UnitAction::PopPosition:
        return c.a ? SendCMDPOP_H_Position(quint16(c.b)) : SendCMDPOP_V_Position(quint16(c.b));
    case UnitAction::SetAddress: {
        QByteArray bytes = c.bytes[0];
        return SendCMD_IP(bytes, c.texts.value(0));
    }
    default:
        return;
    }
}
