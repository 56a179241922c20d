#include "pip.h"

#include "SwitcherData/rvx3220_workdata.h"
#include "panewidgets.h"
#include "rvx3220styles.h"

#include <QComboBox>
#include <QGroupBox>
#include <QSpinBox>

namespace {

// Largest top-left corner that keeps an inset of each size inside a 1920 x 1080 picture
// (insets of 480 x 270, 640 x 360 and 960 x 540).
struct Range
{
    int h;
    int v;
};
constexpr Range SizeRanges[3] = {{1440, 810}, {1280, 720}, {960, 540}};

} // namespace

PIP::PIP(QWidget *parent, RVX3220_workdata *model) : QWidget(parent), m_model(model)
{
    using namespace PaneWidgets;
    QGroupBox *box = frame(RVX3220Styles::PipTitle, this);
    caption(QStringLiteral("H Position"), box, 0);
    // Until a size is chosen the ranges are those of the large inset.
    m_h = spinBox(box, 0, 0, SizeRanges[2].h, 10);
    caption(QStringLiteral("V Position"), box, 1);
    m_v = spinBox(box, 1, 0, SizeRanges[2].v, 10);
    caption(QStringLiteral("Size"), box, 2);
    m_size = list(box, 2, RVX3220Styles::PipSizes, 3);
    caption(QStringLiteral("Border Enable"), box, 3);
    m_borderEnable = list(box, 3, RVX3220Styles::BorderEnable, 2);
    caption(QStringLiteral("Border Width"), box, 4);
    m_borderWidth = spinBox(box, 4, 2, 7);
    caption(QStringLiteral("Border Color"), box, 5);
    m_borderColour = list(box, 5, RVX3220Styles::BorderColours, 4);

    connect(m_h, qOverload<int>(&QSpinBox::valueChanged), this, &PIP::setSpboxHPosition);
    connect(m_v, qOverload<int>(&QSpinBox::valueChanged), this, &PIP::setSpboxVPosition);
    connect(m_size, qOverload<int>(&QComboBox::currentIndexChanged), this, &PIP::setCoboxSize);
    connect(m_borderEnable, qOverload<int>(&QComboBox::currentIndexChanged), this,
            &PIP::setCoboxBorder_Enable);
    connect(m_borderWidth, qOverload<int>(&QSpinBox::valueChanged), this, &PIP::setSpboxBorder_Width);
    connect(m_borderColour, qOverload<int>(&QComboBox::currentIndexChanged), this,
            &PIP::setCoboxBorder_Color);
}

void PIP::setSpboxHPosition(int v)
{
    m_model->SendCMDPIP_H_Position(quint16(v));
}

void PIP::setSpboxVPosition(int v)
{
    m_model->SendCMDPIP_V_Position(quint16(v));
}

void PIP::setCoboxSize(int i)
{
    if (i >= 0 && i < 3) {
        m_h->setRange(0, SizeRanges[i].h);
        m_v->setRange(0, SizeRanges[i].v);
    }
    m_model->SendCMDPIP_Border_Size(quint8(i));
}

void PIP::setCoboxBorder_Enable(int i)
{
    m_model->SendCMDPIP_Border_Enable(quint8(i));
}

void PIP::setSpboxBorder_Width(int v)
{
    m_model->SendCMDPIP_Border_Width(quint8(v));
}

void PIP::setCoboxBorder_Color(int i)
{
    m_model->SendCMDPIP_Border_Color(quint8(i));
}
