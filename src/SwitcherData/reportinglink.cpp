#include "reportinglink.h"

#include "framecodec.h"
#include "protocol.h"
#include "workdata.h"

#include <QDebug>
#include <cstring>

namespace Cmd = Protocol::Cmd;

namespace {

// Log labels, one per sender.
const char *const LabelReadState = "点击DS按钮senbuf的数据";
const char *const LabelPgm = "点击PGM通道senbuf的数据";
const char *const LabelPvw = "点击PVW通道senbuf的数据";
const char *const LabelSlider = "点击视频推杆senbuf的数据";
const char *const LabelCut = "点击CUT切换senbuf的数据";
const char *const LabelAuto = "点击AUTO切换senbuf的数据";
const char *const LabelFtb = "FTB senbuf的数据";
const char *const LabelPip = "PIP senbuf的数据";
const char *const LabelStream = "点击RTMP按钮senbuf的数据";
const char *const LabelTransitions = "TRANSITONS设置 senbuf的数据";
const char *const LabelSetWipe = "SET_WIPE senbuf的数据";
const char *const LabelPipBorderEnable = "PIP_Border_Enable senbuf的数据";
const char *const LabelPipBorderColor = "PIP_Border_Color senbuf的数据";
const char *const LabelPipBorderWidth = "PIP_Border_Width senbuf的数据";
const char *const LabelPipHPosition = "PIP_H_Position senbuf的数据";
const char *const LabelPipVPosition = "PIP_V_Position senbuf的数据";
const char *const LabelPipBorderSize = "PIP_Border_Size senbuf的数据";
const char *const LabelF1 = "F1 分辨率设置 senbuf的数据";
const char *const LabelRate = "点击RATE切换特效senbuf的数据";
const char *const LabelRec = "点击REC按钮senbuf的数据";
const char *const LabelLevels = "CH3_vol senbuf的数据";
const char *const LabelCh1 = "选择CH1下拉列表 senbuf的数据";
const char *const LabelCh2 = "选择CH2下拉列表 senbuf的数据";
// Pause and rotate log the same label; the copy is deliberate.
const char *const LabelPause = "点击暂停按钮senbuf的数据";
const char *const LabelMix = "点击MXI senbuf的数据";
const char *const LabelAfv = "点击AFV senbuf的数据";
const char *const LabelStill = "STILL senbuf的数据";
const char *const LabelCh1Vol = "CH1_vol senbuf的数据";
const char *const LabelCh2Vol = "CH2_vol senbuf的数据";
const char *const LabelF2 = "F2 senbuf的数据";
const char *const LabelF3 = "F3 senbuf的数据";
const char *const LabelF7 = "F7 senbuf的数据";
const char *const LabelSetIp = "SetHis_IP senbuf的数据";
const char *const LabelReadHisIp = "ReadHis_IP senbuf的数据";
const char *const LabelSetHisIp = "设置设备上His板IP、网关、掩码、senbuf的数据";
const char *const LabelSetHisDns = "设置设备上His板DNS senbuf的数据";
const char *const LabelReadUrl = "读取设备上His板URL信息 senbuf的数据";
const char *const LabelSetUrl = "设置设备上His板URL信息 senbuf的数据";
const char *const LabelUrlPiece = "切割后的数据2";

// The transition keys' codes of the units that report their state (the RVX3220's differ).
constexpr uint8_t CmdMix = 0x8D;
constexpr uint8_t CmdFade = 0x8E;
constexpr uint8_t CmdSetWipe = 0x8F;
constexpr uint8_t ChildRvx3410 = 0x27;
// Sent as the unit expects them after the DNS address; their meaning is the HIS board's.
constexpr uint8_t DnsTail[] = {0x02, 0x50, 0x3B, 0x8C};

using FrameCodec::writeHead;
using FrameCodec::writeTail;

bool isHisBoard(const QByteArray &frame)
{
    const uint8_t cls = FrameCodec::byteAt(frame, 4);
    return (cls == 0xE0 || cls == 0xE5) && FrameCodec::byteAt(frame, 5) == 0xFF;
}

void fillFour(uint8_t *dst, const QByteArray &src)
{
    for (int i = 0; i < 4; ++i)
        dst[i] = FrameCodec::byteAt(src, i);
}

} // namespace

ReportingLink::ReportingLink(const FamilyCodes &codes, Family family, LogCategory log, QObject *parent)
    : UnitLink(family, log, parent), m_family(codes)
{
    // Receivers may queue them or spy on them.
    qRegisterMetaType<UnitState>();
    qRegisterMetaType<HisAddresses>();
    qRegisterMetaType<StreamUrl>();
}

void ReportingLink::sendHis(const char *label, uint8_t cmd, std::initializer_list<uint8_t> data)
{
    sendBuilt(label, m_his, cmd, data);
}

void ReportingLink::get_DevTypeID(QString ip, uint8_t a, uint8_t b)
{
    bindUnit(UnitAddress::fromText(ip, a, b));
}

void ReportingLink::get_HISTypeID(QString ip, uint8_t a, uint8_t b)
{
    bindHis(UnitAddress::fromText(ip, a, b));
}

void ReportingLink::takeHisAddresses(const HisAddresses &a)
{
    // An address the reply stops short of stays as the link knew it.
    get_HIS_INFO(a.ip.isNull() ? m_his.text() : a.ip, a.subnet.isNull() ? m_hisSubnet : a.subnet,
                 a.gateway.isNull() ? m_hisGateway : a.gateway, a.dns.isNull() ? m_hisDNS : a.dns);
    emit hisAddressesReported(a);
}

void ReportingLink::get_HIS_INFO(QString ip, QString subnet, QString gateway, QString dns)
{
    bindHis(UnitAddress::fromText(ip, m_his.devClass, m_his.devNum));
    m_hisSubnet = subnet;
    m_hisGateway = gateway;
    m_hisDNS = dns;
}

void ReportingLink::ShowCurrentSendData(QByteArray frame)
{
    emit showCurrentData(frame);
}

// ---- sending ----

void ReportingLink::SendCMDRead3210state()
{
    sendMain(LabelReadState, Protocol::CmdReadState);
}
void ReportingLink::SendCDMPGMCH(uint8_t ch)
{
    sendMain(LabelPgm, Cmd::Pgm, {ch});
}
void ReportingLink::SendCMDPVWCH(uint8_t ch)
{
    sendMain(LabelPvw, Cmd::Pvw, {ch});
}
void ReportingLink::SwndCMDslider(uint8_t a, uint8_t b)
{
    sendMain(LabelSlider, Cmd::Tbar, {a, b});
}
void ReportingLink::SendCMDCUT()
{
    sendMain(LabelCut, Cmd::Cut);
}
void ReportingLink::SendCMDAUTO()
{
    sendMain(LabelAuto, Cmd::Auto);
}
void ReportingLink::SendCMDFTB()
{
    sendMain(LabelFtb, Cmd::Ftb);
}
void ReportingLink::SendCMDPIP(uint8_t on)
{
    sendMain(LabelPip, Cmd::Pip, {on});
}
void ReportingLink::SendCMDSTREAM(int v)
{
    sendMain(LabelStream, Cmd::Stream, {uint8_t(v & 0xFF)});
}

void ReportingLink::SendCMDTRANSITIONS(uint8_t t)
{
    if (t == 1) {
        sendMain(LabelTransitions, CmdMix);
    } else if (t == 2) {
        sendMain(LabelTransitions, CmdFade);
    } else if (t >= 3 && t <= 6) {
        SET_WIPE();
        sendMain(LabelTransitions, Cmd::WipePattern, {m_family.wipePatterns[t - 3]});
    }
}

void ReportingLink::SET_WIPE()
{
    sendMain(LabelSetWipe, CmdSetWipe);
}
void ReportingLink::SendCMDPIP_Border_Enable(uint8_t v)
{
    sendMain(LabelPipBorderEnable, Cmd::PipBorderEnable, {v});
}
void ReportingLink::SendCMDPIP_Border_Color(uint8_t v)
{
    sendMain(LabelPipBorderColor, Cmd::PipBorderColor, {v});
}
void ReportingLink::SendCMDPIP_Border_Width(uint8_t v)
{
    sendMain(LabelPipBorderWidth, Cmd::PipBorderWidth, {v});
}

// Positions go out low byte first, although the state record reports them high byte first.
void ReportingLink::SendCMDPIP_H_Position(uint16_t v)
{
    sendMain(LabelPipHPosition, Cmd::PipH, {FrameCodec::lowByte(v), FrameCodec::highByte(v)});
}

void ReportingLink::SendCMDPIP_V_Position(uint16_t v)
{
    sendMain(LabelPipVPosition, Cmd::PipV, {FrameCodec::lowByte(v), FrameCodec::highByte(v)});
}

void ReportingLink::SendCMDPIP_Border_Size(uint8_t v)
{
    sendMain(LabelPipBorderSize, Cmd::PipSize, {v});
}
void ReportingLink::SendCMDF1(int index)
{
    if (!m_family.formatByTable) {
        sendMain(LabelF1, Cmd::Format, {uint8_t(index & 0xFF)});
        return;
    }
    // Callers pass list positions only; one outside the table sends nothing rather than a
    // byte read from beyond it.
    const int code = Protocol::outputFormatCode(index);
    if (code >= 0)
        sendMain(LabelF1, Cmd::Format, {uint8_t(code)});
}
void ReportingLink::SendCMDRATE(uint8_t r)
{
    sendMain(LabelRate, m_family.rateCode, {r});
}
void ReportingLink::SendCMDREC(int v)
{
    sendMain(LabelRec, Cmd::Rec, {uint8_t(v & 0xFF)});
}

void ReportingLink::SendCMDLeftSliderVOL(uint8_t ch1, uint8_t ch2, uint8_t ch3, uint8_t master)
{
    sendMain(LabelLevels, Cmd::Levels, {ch1, ch2, ch3, master});
}

// A list position outside the source table sends source 0, as the lists never offer one.
void ReportingLink::SendCMDCH1(int index)
{
    sendMain(LabelCh1, Cmd::Ch1Source, {uint8_t(qMax(0, Protocol::audioSourceCode(index)))});
}
void ReportingLink::SendCMDCH2(int index)
{
    sendMain(LabelCh2, Cmd::Ch2Source, {uint8_t(qMax(0, Protocol::audioSourceCode(index)))});
}
void ReportingLink::SendCMDPAUSE()
{
    sendMain(LabelPause, Cmd::Pause);
}
void ReportingLink::SendCMDMIX()
{
    sendMain(LabelMix, Cmd::AudioMix);
}
void ReportingLink::SendCMDAFV()
{
    sendMain(LabelAfv, Cmd::AudioAfv);
}
void ReportingLink::SendCMDSTILL()
{
    sendMain(LabelStill, Cmd::Still);
}
void ReportingLink::SendCMDCH1_VOL(uint8_t v)
{
    sendMain(LabelCh1Vol, Cmd::Ch1Level, {v});
}
void ReportingLink::SendCMDCH2_VOL(uint8_t v)
{
    sendMain(LabelCh2Vol, Cmd::Ch2Level, {v});
}
void ReportingLink::SendCMDF2()
{
    sendMain(LabelF2, Cmd::F2);
}
void ReportingLink::SendCMDF3()
{
    sendMain(LabelF3, Cmd::F3);
}
void ReportingLink::SendCMDROTATE()
{
    sendMain(LabelPause, Cmd::Rotate);
}
void ReportingLink::SendCMDF7()
{
    sendMain(LabelF7, Cmd::F7);
}
void ReportingLink::SendCMD_SetIP(const QByteArray &ip, QString ipText)
{
    std::memset(&m_devIpRec, 0, sizeof(m_devIpRec));
    fillFour(m_devIpRec.ip, ip);
    uint8_t buf[128] = {};
    const uint16_t len =
        SWITCHER_DATA::Set_ipCom(buf, m_unit.devClass, m_unit.devNum, Protocol::CmdSetAddress, m_devIpRec);
    sendFrame(buf, len, m_unit.host, LabelSetIp);
    // Only now: the frame itself must still reach the old address.
    bindUnit(UnitAddress::fromText(ipText, m_unit.devClass, m_unit.devNum));
}

void ReportingLink::SendCMD_Read_His_IP()
{
    const SET_DEV_IP zero{};
    uint8_t buf[128] = {};
    sendFrame(buf, SWITCHER_DATA::Set_ipCom(buf, m_his.devClass, m_his.devNum, Protocol::CmdHisAddress, zero),
              m_his.host, LabelReadHisIp);
}

void ReportingLink::SendCMD_Set_HIS_IP(const QByteArray &ip, const QByteArray &b, const QByteArray &c,
                                       QStringList texts)
{
    std::memset(&m_hisIpRec, 0, sizeof(m_hisIpRec));
    fillFour(m_hisIpRec.ip, ip);
    fillFour(m_hisIpRec.mask, b);
    fillFour(m_hisIpRec.gateway, c);
    uint8_t buf[128] = {};
    sendFrame(
        buf, SWITCHER_DATA::Set_ipCom(buf, m_his.devClass, m_his.devNum, Protocol::CmdSetAddress, m_hisIpRec),
        m_his.host, LabelSetHisIp);
    bindHis(UnitAddress::fromText(texts.value(0), m_his.devClass, m_his.devNum));
    m_hisSubnet = texts.value(1);
    m_hisGateway = texts.value(2);
}

void ReportingLink::SendCMD_Set_HIS_DNS(const QByteArray &dns, QString dnsText)
{
    uint8_t buf[128] = {};
    sendFrame(buf, CreateMcuUdpDataBuf_ipDns(buf, m_his.devClass, m_his.devNum, dns), m_his.host,
              LabelSetHisDns);
    m_hisDNS = dnsText;
}

void ReportingLink::SendCMD_Read_Url(int index)
{
    sendHis(LabelReadUrl, Protocol::CmdReadUrl, {uint8_t(index & 0xFF)});
}

void ReportingLink::SendCMD_Set_Url(int index, const QByteArray &otherName, const QByteArray &url)
{
    ST_RTMP_URL rec;
    std::memset(&rec, 0, sizeof(rec));
    rec.index = uint8_t(index & 0xFF);
    // The panel keeps name and URL within their fields; clip anyway rather than overrun.
    const int nameLen = qMin(otherName.size(), int(sizeof(rec.name)));
    const int urlLen = qMin(url.size(), int(sizeof(rec.url)));
    rec.nameLen = uint8_t(nameLen);
    std::memcpy(rec.name, otherName.constData(), size_t(nameLen));
    rec.urlLen[0] = FrameCodec::lowByte(uint16_t(urlLen));
    rec.urlLen[1] = FrameCodec::highByte(uint16_t(urlLen));
    std::memcpy(rec.url, url.constData(), size_t(urlLen));
    uint8_t buf[1024] = {};
    sendFrame(buf, CreateMcuUdpDataBuf_url(buf, m_his.devClass, m_his.devNum, rec), m_his.host, LabelSetUrl);
}

uint16_t ReportingLink::CreateMcuUdpDataBuf_ipDns(uint8_t *buf, uint8_t devClass, uint8_t devNum,
                                                  const QByteArray &dns)
{
    writeHead(buf, DnsFrameSize, devClass, devNum, Protocol::CmdHisDns);
    // The frame has room for four address bytes; callers pass exactly four.
    fillFour(buf + 17, dns);
    std::memcpy(buf + 21, DnsTail, sizeof(DnsTail));
    return writeTail(buf, 25);
}

uint16_t ReportingLink::CreateMcuUdpDataBuf_url(uint8_t *buf, uint8_t devClass, uint8_t devNum,
                                                const ST_RTMP_URL &rec)
{
    writeHead(buf, UrlFrameSize, devClass, devNum, Protocol::CmdSetUrl);
    buf[17] = 0;
    std::memcpy(buf + 18, reinterpret_cast<const uint8_t *>(&rec) + 1, sizeof(rec) - 1);
    return writeTail(buf, 18 + int(sizeof(rec)) - 1);
}

// ---- receiving ----

void ReportingLink::datagramArrived(const QByteArray &datagram, int length)
{
    m_inPass = true;
    Receive3210Data(datagram, length);
}

void ReportingLink::passEnded()
{
    m_inPass = false;
    if (!m_stateHeld)
        return;
    m_stateHeld = false;
    showState(m_heldHas5370 ? &m_held5370 : nullptr, m_heldRecord);
}

void ReportingLink::showState(const QByteArray *piece5370, const QByteArray &record)
{
    m_watch.replied();
    if (m_inPass) {
        m_stateHeld = true;
        m_heldHas5370 = piece5370 != nullptr;
        m_held5370 = piece5370 ? *piece5370 : QByteArray();
        m_heldRecord = record;
        return;
    }
    // A copy: a receiver that waits in an event loop may see the next state shown meanwhile.
    const UnitState state = UnitState::decode(stateLayout(), record, piece5370 ? *piece5370 : QByteArray());
    m_unitState = state;
    if (piece5370)
        emit on_signals_5370Data(*piece5370);
    emit on_signals_3210Data(record);
    emit stateReported(state);
}

void ReportingLink::frameSent(const QByteArray &frame)
{
    ShowCurrentSendData(frame);
    // A released link sends nothing, so it has asked nothing.
    if (m_endpoint)
        m_watch.sent(frame);
}

void ReportingLink::Receive3210Data(const QByteArray &datagram, int length)
{
    // A stalled buffer never decodes again, so what arrives after the stall is not kept:
    // the link holds at most what it held when it stalled.
    if (m_recvBuf.size() >= StallSize)
        return;
    m_recvBuf.append(datagram.constData(), qBound(0, length, datagram.size()));
    // Once the buffer has reached the stall size it is never cleared again: from then on
    // nothing more is decoded. The unit's firmware tooling relies on the same behaviour.
    if (m_recvBuf.size() < FrameCodec::MinFrame || m_recvBuf.size() >= StallSize)
        return;
    QByteArray frame;
    if (FrameCodec::joinFrames(m_recvBuf, &frame) == FrameCodec::Scan::Incomplete)
        return;
    if (FrameCodec::checksumOk(frame))
        AnalysisData(frame);
    m_recvBuf.clear();
}

void ReportingLink::AnalysisData(const QByteArray &frame)
{
    using FrameCodec::byteAt;
    const bool mainBoard = byteAt(frame, 4) == 0xA5 && byteAt(frame, 5) == 0xFF;
    const uint8_t cmd = byteAt(frame, 16);

    if (mainBoard && byteAt(frame, 14) == ChildRvx3410)
        emit on_signals_3410Data(frame);

    if (mainBoard && cmd == Protocol::CmdReadState) {
        const QList<QByteArray> pieces = frame.split(Protocol::StateSeparator);
        if (pieces.size() < 3)
            return;
        if (pieces.at(2).isEmpty()) {
            // Long form: the record sits in piece 17. Exactly 17 pieces means it is absent.
            if (pieces.size() < 17 || (pieces.size() == 17 && m_family.dropPiecelessLongReply))
                return;
            showState(&pieces.at(1), pieces.value(17));
        } else {
            showState(nullptr, pieces.at(2));
        }
    }

    if (!isHisBoard(frame) || byteAt(frame, 17) != 0x00)
        return;

    if (cmd == Protocol::CmdReadUrl) {
        const QList<QByteArray> pieces = frame.split(char(Protocol::CmdReadUrl));
        if (pieces.size() >= 2) {
            emit on_signals_3210HIS_URL_Data(pieces.at(1));
            qCDebug(m_log).noquote() << QString::fromUtf8(LabelUrlPiece) << pieces.at(1).toHex(' ');
            emit streamUrlReported(StreamUrl::decode(pieces.at(1)));
        }
    }
    if (cmd == Protocol::CmdHisAddress) {
        const QList<QByteArray> pieces = frame.split(char(Protocol::CmdHisAddress));
        if (pieces.size() >= 2) {
            emit on_signals_3210HISData(pieces.at(1));
            takeHisAddresses(HisAddresses::decode(pieces.at(1)));
        }
    }
}

void ReportingLink::perform(const Call &c)
{
    switch (c.action) {
    case UnitAction::ReadState:
        return SendCMDRead3210state();
    case UnitAction::Programme:
        return SendCDMPGMCH(uint8_t(c.a));
    case UnitAction::Preview:
        return SendCMDPVWCH(uint8_t(c.a));
    case UnitAction::Cut:
        return SendCMDCUT();
    case UnitAction::Auto:
        return SendCMDAUTO();
    case UnitAction::Fader:
        return SwndCMDslider(uint8_t(c.a), uint8_t(c.b));
    case UnitAction::Transition:
        return SendCMDTRANSITIONS(uint8_t(c.a));
    case UnitAction::Rate:
        // The rate keys count from 1, the unit from 0.
        return SendCMDRATE(uint8_t(c.a - 1));
    case UnitAction::Ftb:
        return SendCMDFTB();
    case UnitAction::Still:
        return SendCMDSTILL();
    case UnitAction::Format:
        return SendCMDF1(c.a);
    case UnitAction::AudioMode:
        return c.a ? SendCMDMIX() : SendCMDAFV();
    case UnitAction::Source:
        return c.a == 1 ? SendCMDCH1(c.b) : SendCMDCH2(c.b);
    case UnitAction::Levels:
        return SendCMDLeftSliderVOL(uint8_t(c.a), uint8_t(c.b), uint8_t(c.c), uint8_t(c.d));
    case UnitAction::Pip:
        return SendCMDPIP(uint8_t(c.a));
    case UnitAction::PipSize:
        return SendCMDPIP_Border_Size(uint8_t(c.a));
    case UnitAction::PipPosition:
        return c.a ? SendCMDPIP_H_Position(uint16_t(c.b)) : SendCMDPIP_V_Position(uint16_t(c.b));
    case UnitAction::PipBorder:
        return SendCMDPIP_Border_Enable(uint8_t(c.a));
    case UnitAction::PipBorderColor:
        return SendCMDPIP_Border_Color(uint8_t(c.a));
    case UnitAction::PipBorderWidth:
        return SendCMDPIP_Border_Width(uint8_t(c.a));
    case UnitAction::F2:
        return SendCMDF2();
    case UnitAction::Mute:
        return SendCMDF3();
    case UnitAction::F7:
        return SendCMDF7();
    case UnitAction::Rec:
        return SendCMDREC(c.a);
    case UnitAction::Pause:
        return SendCMDPAUSE();
    case UnitAction::Stream:
        return SendCMDSTREAM(c.a);
    case UnitAction::Rotate:
        return SendCMDROTATE();
    case UnitAction::SetAddress:
        return SendCMD_SetIP(c.bytes[0], c.texts.value(0));
    case UnitAction::HisAddress:
        return SendCMD_Set_HIS_IP(c.bytes[0], c.bytes[1], c.bytes[2], c.texts);
    case UnitAction::HisDns:
        return SendCMD_Set_HIS_DNS(c.bytes[0], c.texts.value(0));
    case UnitAction::ReadHis:
        return SendCMD_Read_His_IP();
    case UnitAction::ReadUrl:
        return SendCMD_Read_Url(c.a);
    case UnitAction::Url:
        return SendCMD_Set_Url(c.a, c.bytes[0], c.bytes[1]);
    default:
        // The rest is a single family's own (see its link).
        return;
    }
}
