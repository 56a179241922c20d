#include "rvx3210_workdata.h"

#include "protocol.h"

#include <QtGlobal>

Q_LOGGING_CATEGORY(lc3210, "kova.rvx3210", QtInfoMsg)

namespace {
constexpr ReportingLink::Family Rvx3210Family{0xB1, Protocol::WipePatterns3210, false, false,
                                              StateLayout::Rvx3210};
}

RVX3210_workdata::RVX3210_workdata(QObject *parent) : ReportingLink(Rvx3210Family, lc3210, parent) {}

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
    sendFrame(reinterpret_cast<const uint8_t *>(raw.constData()), uint16_t(qMin(raw.size(), 0xFFFF)), m_devIP,
              "点击确定按钮senbuf的数据");
}
