#pragma once

#include "reportinglink.h"

#include <QLoggingCategory>
#include <cstdint>

Q_DECLARE_LOGGING_CATEGORY(lc5all)

// The URL slot record of the 8000 series: laid out as the RVX3210 family's.
using ST_RTMP_URL_RVX5ALL = ST_RTMP_URL;

// Link object of one 8000-series unit (RVX5310, RVX5370, RVX5350, RVX5120). It shares the
// reporting link with the RVX3210 family; its own are the rate code 0xA5, the wipe patterns,
// the output format sent as its code, the POP, bar and reset commands and the RVX5350's
// shorter source list. Which model it talks to is the panel's business: it starts as the
// RVX5310's, and the other panels set their family.
class RVX5ALL_workdata : public ReportingLink
{
    Q_OBJECT
public:
    explicit RVX5ALL_workdata(QObject *parent = nullptr);

    void SendCMDPOP(uint8_t v);
    void SendCMDPOP_Window(uint8_t v);
    void SendCMDPOP_Border_Enable(uint8_t v);
    void SendCMDPOP_Border_Color(uint8_t v);
    void SendCMDPOP_Border_Width(uint8_t v);
    void SendCMDPOP_H_Position(uint16_t p);
    void SendCMDPOP_V_Position(uint16_t p);
    void SendCMDPGMBAR(int v);
    void SendCMDPVWBAR(int v);
    void SendCMDRESET();
    // The RVX5350's CH1/CH2 lists hold four sources; a position outside them sends nothing.
    void SendCMDCH1_for5350(int index);
    void SendCMDCH2_for5350(int index);

protected:
    void perform(const Call &call) override;
};
