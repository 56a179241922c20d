#include "rvx_3410_upper_widget.h"

#include "SwitcherData/unitcontrol.h"
#include "rvx3410styles.h"

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QTimer>

namespace S = Rvx3210Styles;
namespace S4 = Rvx3410Styles;

namespace {

// What the unit is doing with its recording.
enum RecordingState : uint8_t
{
    Idle = 0,
    Recording = 1,
    Paused = 2,
    RecordingOther = 3, // recording, with the FTB key blinking
};

} // namespace

RVX_3410_Upper_Widget::RVX_3410_Upper_Widget(QWidget *parent, UnitControl *link)
    : Upper_Widget(parent, link, KeysOnly{})
{
    m_btnF4 = makeLampKey(S4::F4On, S4::F4Off);
    m_btnF5 = makeLampKey(S4::F5On, S4::F5Off);
    m_btnF6 = makeLampKey(S4::F6On, S4::F6Off);
    m_btnF8 = makeLampKey(S4::F8On, S4::F8Off);

    // Nothing starts the REC blink: a recording with code 3 blinks FTB instead, and the
    // other codes only stop it.
    m_recBlink = new QTimer(this);
    m_recBlink->setInterval(S4::RecBlinkMs);
    connect(m_recBlink, &QTimer::timeout, this, &RVX_3410_Upper_Widget::on_timerour_REC);

    m_readTimer = new QTimer(this);
    m_readTimer->setSingleShot(true);
    connect(m_readTimer, &QTimer::timeout, this, &RVX_3410_Upper_Widget::on_timerour_DS);
    m_readTimer->start(S4::DelayedReadMs);

    layOutRow();

    connect(m_btnF4, &QPushButton::clicked, this, &RVX_3410_Upper_Widget::on_btnclicked_F4);
    connect(m_btnF5, &QPushButton::clicked, this, &RVX_3410_Upper_Widget::on_btnclicked_F5);
    connect(m_btnF6, &QPushButton::clicked, this, &RVX_3410_Upper_Widget::on_btnclicked_F6);
    connect(m_btnF8, &QPushButton::clicked, this, &RVX_3410_Upper_Widget::on_btnclicked_F8);
}

void RVX_3410_Upper_Widget::layOutRow()
{
    // No close key here, and captions under the function keys.
    auto caption = [this](const char *text) {
        auto *label = new QLabel(QString::fromLatin1(text), this);
        label->setAlignment(Qt::AlignCenter);
        label->setStyleSheet(QString::fromLatin1(S::Caption));
        return label;
    };
    struct Column
    {
        QPushButton *key;
        const char *caption;
    };
    const Column columns[] = {{btnFTB(), nullptr},    {btnF1(), S4::LabelF1}, {btnF2(), S4::LabelF2},
                              {btnF3(), S4::LabelF3}, {m_btnF4, S4::LabelF4}, {m_btnF5, S4::LabelF5},
                              {m_btnF6, S4::LabelF6}, {btnF7(), nullptr},     {m_btnF8, S4::LabelF8}};

    auto *grid = new QGridLayout(this);
    grid->setContentsMargins(10, 4, 10, 2);
    grid->setHorizontalSpacing(8);
    grid->setVerticalSpacing(2);
    int col = 0;
    for (const Column &c : columns) {
        grid->addWidget(c.key, 0, col, Qt::AlignCenter);
        if (c.caption)
            grid->addWidget(caption(c.caption), 1, col, Qt::AlignHCenter | Qt::AlignTop);
        ++col;
    }
    grid->setColumnStretch(col++, 1);
    grid->addWidget(btnRead(), 0, col++, Qt::AlignCenter);
    grid->addWidget(btnReturn(), 0, col, Qt::AlignCenter);
}

void RVX_3410_Upper_Widget::on_btnclicked_F4()
{
    if (m_btnF4->toggle()) {
        link()->rec(true);
        return;
    }
    // Stopping the recording ends a pause as well.
    m_btnF5->setLit(false);
    link()->rec(false);
}

void RVX_3410_Upper_Widget::on_btnclicked_F5()
{
    if (!m_btnF4->isLit())
        return;
    m_btnF5->toggle();
    link()->pause();
}

void RVX_3410_Upper_Widget::on_btnclicked_F6()
{
    link()->stream(m_btnF6->toggle());
}

void RVX_3410_Upper_Widget::on_btnclicked_F8()
{
    m_btnF8->toggle();
    link()->rotate();
}

void RVX_3410_Upper_Widget::on_btnclicked_Read3210data()
{
    m_readTimer->stop();
    Upper_Widget::on_btnclicked_Read3210data();
}

void RVX_3410_Upper_Widget::on_timerour_REC()
{
    on_Style_btnF4(m_recPhase);
    m_recPhase = !m_recPhase;
}

void RVX_3410_Upper_Widget::on_timerour_DS()
{
    link()->readState();
}

void RVX_3410_Upper_Widget::set_Style_btnF4(int recording)
{
    switch (recording) {
    case Idle:
        m_btnF4->setLit(false);
        m_btnF5->setLit(false);
        m_recBlink->stop();
        break;
    case Recording:
        m_btnF4->setLit(true);
        m_btnF5->setLit(false);
        m_recBlink->stop();
        break;
    case Paused:
        m_btnF4->setLit(true);
        m_btnF5->setLit(true);
        m_recBlink->stop();
        break;
    case RecordingOther:
        // It is the FTB key that blinks then, not REC; operators know it that way.
        m_btnF4->setLitUnshown(true);
        m_btnF5->setLit(false);
        ftbBlinkTimer()->start(S::FtbBlinkMs);
        break;
    }
}

void RVX_3410_Upper_Widget::set_Style_btnF6(bool streaming)
{
    m_btnF6->setLit(streaming);
}

void RVX_3410_Upper_Widget::set_Style_btnF8(bool rotated)
{
    m_btnF8->setLit(rotated);
}

void RVX_3410_Upper_Widget::on_Style_btnF4(bool on)
{
    m_btnF4->showLamp(on);
}

void RVX_3410_Upper_Widget::on_Style_btnF5(bool on)
{
    m_btnF5->showLamp(on);
}

void RVX_3410_Upper_Widget::on_Style_btnF6(bool on)
{
    m_btnF6->showLamp(on);
}

void RVX_3410_Upper_Widget::on_Style_btnF8(bool on)
{
    m_btnF8->showLamp(on);
}
