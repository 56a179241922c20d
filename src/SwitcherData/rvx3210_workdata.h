#pragma once

#include "reportinglink.h"

#include <QByteArray>
#include <QLoggingCategory>
#include <QString>
#include <cstdint>

Q_DECLARE_LOGGING_CATEGORY(lc3210)

// Link object of one RVX3210 (or RVX3410) unit. Everything but its own codes (rate 0xB1, its
// wipe patterns, the output format sent as the list index) and the RVX3410's menu and test
// frames is the shared reporting link.
class RVX3210_workdata : public ReportingLink
{
    Q_OBJECT
public:
    explicit RVX3210_workdata(QObject *parent = nullptr);

    // Only the RVX3410 has a menu; the test frame goes out as typed.
    void SendCMDMenu(uint8_t a, uint8_t b);
    void SendCMDTest(QByteArray raw);

    // Audio source byte for a CH1/CH2 combo index (0-6); 0 outside the table.
    static uint8_t audioSourceCode(int index);

protected:
    void perform(const Call &call) override;
};
