#include "rvx5all_workdata.h"

#include "framecodec.h"
#include "protocol.h"

Q_LOGGING_CATEGORY(lc5all, "kova.rvx5all", QtInfoMsg)

namespace Cmd = Protocol::Cmd;

namespace {
constexpr ReportingLink::FamilyCodes Rvx5AllCodes{0xA5, Protocol::WipePatterns5All, true, true};

const char *const LabelPop = "点击POP按钮senbuf的数据";
const char *const LabelBar = "点击bar按钮senbuf的数据";
const char *const LabelReset = "点击复位按钮senbuf的数据";
// Both RVX5350 source commands log the CH1 label; the copy is deliberate.
const char *const LabelCh5350 = "选择CH1下拉列表 senbuf的数据";
} // namespace

RVX5ALL_workdata::RVX5ALL_workdata(QObject *parent)
    : ReportingLink(Rvx5AllCodes, Family::Rvx5310, lc5all, parent)
{}

void RVX5ALL_workdata::SendCMDPOP(uint8_t v)
{
    sendMain(LabelPop, Cmd::Pop, {v});
}

// The POP inset commands write no log line.
void RVX5ALL_workdata::SendCMDPOP_Window(uint8_t v)
{
    sendMain(nullptr, Cmd::PopWindow, {v});
}
void RVX5ALL_workdata::SendCMDPOP_Border_Enable(uint8_t v)
{
    sendMain(nullptr, Cmd::PopBorderEnable, {v});
}
void RVX5ALL_workdata::SendCMDPOP_Border_Color(uint8_t v)
{
    sendMain(nullptr, Cmd::PopBorderColor, {v});
}
void RVX5ALL_workdata::SendCMDPOP_Border_Width(uint8_t v)
{
    sendMain(nullptr, Cmd::PopBorderWidth, {v});
}
void RVX5ALL_workdata::SendCMDPOP_H_Position(uint16_t p)
{
    sendMain(nullptr, Cmd::PopH, {FrameCodec::lowByte(p), FrameCodec::highByte(p)});
}
void RVX5ALL_workdata::SendCMDPOP_V_Position(uint16_t p)
{
    sendMain(nullptr, Cmd::PopV, {FrameCodec::lowByte(p), FrameCodec::highByte(p)});
}

void RVX5ALL_workdata::SendCMDPGMBAR(int v)
{
    sendMain(LabelBar, 0xD7, {uint8_t(v & 0xFF)});
}
void RVX5ALL_workdata::SendCMDPVWBAR(int v)
{
    sendMain(LabelBar, 0xD8, {uint8_t(v & 0xFF)});
}
void RVX5ALL_workdata::SendCMDRESET()
{
    sendMain(LabelReset, 0x0B);
}

void RVX5ALL_workdata::SendCMDCH1_for5350(int index)
{
    const int code = Protocol::audioSource5350Code(index);
    if (code >= 0)
        sendMain(LabelCh5350, Cmd::Ch1Source, {uint8_t(code)});
}
void RVX5ALL_workdata::SendCMDCH2_for5350(int index)
{
    const int code = Protocol::audioSource5350Code(index);
    if (code >= 0)
        sendMain(LabelCh5350, Cmd::Ch2Source, {uint8_t(code)});
}

void RVX5ALL_workdata::perform(const Call &c)
{
    switch (c.action) {
    case UnitAction::Pop:
        return SendCMDPOP(uint8_t(c.a));
    case UnitAction::Bar:
        // The RVX5370's BAR key: the bars to both buses, programme first.
        SendCMDPGMBAR(c.a);
        return SendCMDPVWBAR(c.a);
    case UnitAction::Reset:
        return SendCMDRESET();
    case UnitAction::Source:
        if (traits().family == Family::Rvx5350)
            return c.a == 1 ? SendCMDCH1_for5350(c.b) : SendCMDCH2_for5350(c.b);
        return ReportingLink::perform(c);
    default:
        return ReportingLink::perform(c);
    }
}
