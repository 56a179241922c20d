#include "rvx3210_workdata.h"

#include "protocol.h"

#include <QtGlobal>

Q_LOGGING_CATEGORY(lc3210, "kova.rvx3210", QtInfoMsg)

namespace {
constexpr ReportingLink::FamilyCodes Rvx3210Codes{0xB1, Protocol::WipePatterns3210, false, false};
}

RVX3210_workdata::RVX3210_workdata(QObject *parent)
    : ReportingLink(Rvx3210Codes, Family::Rvx3210, lc3210, parent)
{}

uint8_t RVX3210_workdata::audioSourceCode(int index)
{
    return uint8_t(qMax(0, Protocol::audioSourceCode(index)));
}

void RVX3210_workdata::SendCMDMenu(uint8_t a, uint8_t b)
{
    sendMain("点击菜单按钮senbuf的数据", 0xD9, {a, b});
}

void RVX3210_workdata::SendCMDTest(QByteArray raw)
{
    sendFrame(reinterpret_cast<const uint8_t *>(raw.constData()), uint16_t(qMin(raw.size(), 0xFFFF)),
              m_unit.host, "点击确定按钮senbuf的数据");
}

void RVX3210_workdata::perform(const Call &c)
{
    switch (c.action) {
    case UnitAction::Level:
        return c.a == 1 ? SendCMDCH1_VOL(uint8_t(c.b)) : SendCMDCH2_VOL(uint8_t(c.b));
    case UnitAction::Menu:
        return SendCMDMenu(uint8_t(c.a), uint8_t(c.b));
    default:
        return ReportingLink::perform(c);
    }
}
