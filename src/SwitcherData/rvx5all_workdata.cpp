#include "rvx5all_workdata.h"

#include "protocol.h"

Q_LOGGING_CATEGORY(lc5all, "kova.rvx5all", QtInfoMsg)

namespace {
constexpr ReportingLink::Family Rvx5AllFamily{0xA5, Protocol::WipePatterns5All, true, true,
                                              StateLayout::Series8000};

const char *const LabelPop = "点击POP按钮senbuf的数据";
const char *const LabelBar = "点击bar按钮senbuf的数据";
const char *const LabelReset = "点击复位按钮senbuf的数据";
// Both RVX5350 source commands log the CH1 label; the copy is deliberate.
const char *const LabelCh5350 = "选择CH1下拉列表 senbuf的数据";
} // namespace

RVX5ALL_workdata::RVX5ALL_workdata(QObject *parent) : ReportingLink(Rvx5AllFamily, lc5all, parent) {}

void RVX5ALL_workdata::SendCMDPOP(uint8_t v)
{
    sendMain(LabelPop, 0xA7, {v});
}

// The POP inset commands write no log line.
void RVX5ALL_workdata::SendCMDPOP_Window(uint8_t v)
{
    sendMain(nullptr, 0xA8, {v});
}
void RVX5ALL_workdata::SendCMDPOP_Border_Enable(uint8_t v)
{
    sendMain(nullptr, 0xA9, {v});
}
void RVX5ALL_workdata::SendCMDPOP_Border_Color(uint8_t v)
{
    sendMain(nullptr, 0xAA, {v});
}
void RVX5ALL_workdata::SendCMDPOP_Border_Width(uint8_t v)
{
    sendMain(nullptr, 0xAB, {v});
}
void RVX5ALL_workdata::SendCMDPOP_H_Position(uint16_t p)
{
    sendMain(nullptr, 0xAC, {QLOBYTE(p), QHIBYTE(p)});
}
void RVX5ALL_workdata::SendCMDPOP_V_Position(uint16_t p)
{
    sendMain(nullptr, 0xAD, {QLOBYTE(p), QHIBYTE(p)});
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
        sendMain(LabelCh5350, 0xB9, {uint8_t(code)});
}
void RVX5ALL_workdata::SendCMDCH2_for5350(int index)
{
    const int code = Protocol::audioSource5350Code(index);
    if (code >= 0)
        sendMain(LabelCh5350, 0xBA, {uint8_t(code)});
}
