#include "qslider_left.h"

#include "SwitcherData/protocol.h"
#include "rvx3210log.h"
#include "rvx3210styles.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QSlider>
#include <QVBoxLayout>

namespace S = Rvx3210Styles;

QSlider_Left::QSlider_Left(QWidget *parent, UnitControl *link) : QWidget(parent), m_link(link)
{
    setAttribute(Qt::WA_StyledBackground);
    setStyleSheet(QString::fromLatin1(S::FaderPane));
    initLeftSlider();
    connect(this, &QSlider_Left::on_slider_max, this, &QSlider_Left::set_slider_max);
    connect(this, &QSlider_Left::on_slider_min, this, &QSlider_Left::set_slider_min);
}

void QSlider_Left::initLeftSlider()
{
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    auto column = [this, row](QSlider *&slider, QLabel *&cap, const char *text) {
        slider = new QSlider(Qt::Vertical, this);
        slider->setRange(0, Protocol::AudioLevelMax);
        slider->setSingleStep(2);
        slider->setTickInterval(20);
        slider->setStyleSheet(QString::fromLatin1(S::Fader));
        cap = new QLabel(QString::fromLatin1(text), this);
        cap->setAlignment(Qt::AlignCenter);
        cap->setStyleSheet(QString::fromLatin1(S::FaderCaption));
        auto *col = new QVBoxLayout;
        col->setContentsMargins(0, 0, 0, 0);
        col->addWidget(slider, 1, Qt::AlignHCenter);
        col->addWidget(cap);
        row->addLayout(col);
    };
    column(m_ch1, m_capCh1, S::FaderCh1);
    column(m_ch2, m_capCh2, S::FaderCh2);
    column(m_master, m_capMaster, S::FaderMaster);

    connect(m_ch1, &QSlider::valueChanged, this, [this](int v) { emit on_slider_ch1_vol(uint8_t(v)); });
    connect(m_ch2, &QSlider::valueChanged, this, [this](int v) { emit on_slider_ch2_vol(uint8_t(v)); });
    connect(m_master, &QSlider::valueChanged, this, [this](int v) { emit on_slider_mastre_vol(uint8_t(v)); });
}

uint8_t QSlider_Left::get_Slider_ch1_valueChanged()
{
    const uint8_t v = uint8_t(m_ch1->value());
    qCDebug(lcRvx3210) << "slider_auto1滑动条被关联的当前值为=" << v;
    return v;
}

uint8_t QSlider_Left::get_Slider_ch2_valueChanged()
{
    const uint8_t v = uint8_t(m_ch2->value());
    qCDebug(lcRvx3210) << "slider_auto2滑动条被关联的当前值为=" << v;
    return v;
}

uint8_t QSlider_Left::get_Slider_master_valueChanged()
{
    const uint8_t v = uint8_t(m_master->value());
    qCDebug(lcRvx3210) << "slider_mastre滑动条被关联的当前值为=" << v;
    return v;
}

void QSlider_Left::set_Slider1_valueChanged(uint8_t v)
{
    m_ch1->setValue(v);
}

void QSlider_Left::set_Slider2_valueChanged(uint8_t v)
{
    m_ch2->setValue(v);
}

void QSlider_Left::set_Slider3_valueChanged(uint8_t v)
{
    m_master->setValue(v);
}
