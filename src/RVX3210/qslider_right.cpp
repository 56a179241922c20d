#include "qslider_right.h"

#include "SwitcherData/protocol.h"
#include "rvx3210styles.h"

#include <QLabel>
#include <QSlider>
#include <QVBoxLayout>

namespace S = Rvx3210Styles;

QSlider_Right::QSlider_Right(QWidget *parent, UnitControl *link) : QWidget(parent), m_link(link)
{
    setAttribute(Qt::WA_StyledBackground);
    setStyleSheet(QString::fromLatin1(S::FaderPane));
    // One fader needs no more room than this; the PIP pane gets the rest when it opens.
    setMaximumWidth(180);

    m_slider = new QSlider(Qt::Vertical, this);
    m_slider->setRange(0, Protocol::TbarMax);
    m_slider->setSingleStep(5);
    m_slider->setStyleSheet(QString::fromLatin1(S::Fader));
    // Pulled down from A towards B, as on the unit's own T-bar.
    m_slider->setInvertedAppearance(true);

    auto caption = [this](const char *text) {
        auto *label = new QLabel(QString::fromLatin1(text), this);
        label->setAlignment(Qt::AlignCenter);
        label->setStyleSheet(QString::fromLatin1(S::FaderCaption));
        return label;
    };
    auto *col = new QVBoxLayout(this);
    col->setContentsMargins(0, 6, 0, 6);
    col->addWidget(caption(S::TbarTop));
    col->addWidget(m_slider, 1, Qt::AlignHCenter);
    col->addWidget(caption(S::TbarBottom));

    connect(m_slider, &QSlider::valueChanged, this, &QSlider_Right::on_slider_auto);
}

void QSlider_Right::setValue(int v)
{
    m_slider->setValue(v);
}
