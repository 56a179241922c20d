#include "below_widget.h"

#include "SwitcherData/unitcontrol.h"
#include "common/keyflash.h"
#include "common/keysheet.h"
#include "rvx3210styles.h"

#include <QButtonGroup>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QTimer>

namespace S = Rvx3210Styles;

namespace {

constexpr int BusIds[] = {1, 2, 3, 4, 9};

} // namespace

Below_Widget::Below_Widget(QWidget *parent, UnitControl *link) : QWidget(parent), m_link(link)
{
    setAttribute(Qt::WA_StyledBackground);
    setStyleSheet(QString::fromLatin1(S::RowBackground));

    m_grpPGM = new QButtonGroup(this);
    m_grpPVW = new QButtonGroup(this);
    m_grpRate = new QButtonGroup(this);
    auto *grid = new QGridLayout;
    grid->setSpacing(8);
    auto head = [this](const char *text) {
        auto *label = new QLabel(QString::fromLatin1(text), this);
        label->setStyleSheet(QString::fromLatin1(S::SectionHead));
        return label;
    };
    grid->addWidget(head(S::PgmHead), 0, 0);
    grid->addWidget(head(S::PvwHead), 1, 0);
    for (int i = 0; i < 5; ++i) {
        m_grpPGM->addButton(makeKey(KeySheet::image(S::PgmWhite[i], S::BaseRed), 70, 55), BusIds[i]);
        m_grpPVW->addButton(makeKey(KeySheet::image(S::PgmWhite[i], S::BaseGreen), 70, 55), BusIds[i]);
        grid->addWidget(m_grpPGM->button(BusIds[i]), 0, i + 1);
        grid->addWidget(m_grpPVW->button(BusIds[i]), 1, i + 1);
    }

    auto *rates = new QHBoxLayout;
    for (int r = 0; r < 3; ++r) {
        m_grpRate->addButton(makeKey(KeySheet::image(S::RateWhite[r], S::BaseGrey), 70, 45), r);
        rates->addWidget(m_grpRate->button(r));
    }
    rates->addStretch(1);
    grid->addLayout(rates, 2, 1, 1, 5);

    m_btnCut = makeKey(KeySheet::image(S::CutOff, S::BaseRed), 90, 70);
    m_btnAuto = makeKey(KeySheet::image(S::AutoOff, S::BaseRed), 90, 70);
    auto *keys = new QVBoxLayout;
    keys->addWidget(m_btnCut);
    keys->addWidget(m_btnAuto);
    keys->addStretch(1);

    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(10, 6, 10, 6);
    row->setSpacing(24);
    row->addLayout(grid);
    row->addStretch(1);
    row->addLayout(keys);

    m_cutTimer = new QTimer(this);

    connect(m_grpPGM, &QButtonGroup::idClicked, this, [this](int id) { on_btnGrp_PGM_clicked(uint8_t(id)); });
    connect(m_grpPVW, &QButtonGroup::idClicked, this, [this](int id) { on_btnGrp_PVW_clicked(uint8_t(id)); });
    connect(m_grpRate, &QButtonGroup::idClicked, this,
            [this](int id) { on_btnGrp_Rate_clicked(uint8_t(id)); });
    connect(m_btnCut, &QPushButton::clicked, this, &Below_Widget::on_btnCut_clicked);
    connect(m_btnAuto, &QPushButton::clicked, this, &Below_Widget::on_btnAuto_clicked);
}

QPushButton *Below_Widget::makeKey(const QString &style, int w, int h)
{
    auto *key = new QPushButton(this);
    key->setMinimumSize(w, h);
    key->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    key->setFocusPolicy(Qt::NoFocus);
    key->setStyleSheet(style);
    return key;
}

void Below_Widget::on_btnGrp_PGM_clicked(uint8_t idx)
{
    set_PGMCH_Style(idx);
    m_link->programme(idx);
}

void Below_Widget::on_btnGrp_PVW_clicked(uint8_t idx)
{
    set_PVWCH_Style(idx);
    m_link->preview(idx);
}

void Below_Widget::on_btnGrp_Rate_clicked(uint8_t idx)
{
    set_Rate_Style(idx);
    // The keys count from 0 here, the rate keys of UnitControl from 1.
    m_link->rate(idx + 1);
}

void Below_Widget::set_PGMCH_Style(uint8_t ch)
{
    for (int i = 0; i < 5; ++i) {
        const bool lit = BusIds[i] == ch;
        setKeySheet(m_grpPGM->button(BusIds[i]),
                    KeySheet::image(lit ? S::PgmRed[i] : S::PgmWhite[i], S::BaseRed));
    }
    // Kept even when no key matches, so a later swap carries the unit's value on.
    m_pgm = ch;
}

void Below_Widget::set_PVWCH_Style(uint8_t ch)
{
    for (int i = 0; i < 5; ++i) {
        const bool lit = BusIds[i] == ch;
        setKeySheet(m_grpPVW->button(BusIds[i]),
                    KeySheet::image(lit ? S::PvwGreen[i] : S::PgmWhite[i], S::BaseGreen));
    }
    m_pvw = ch;
}

void Below_Widget::set_Rate_Style(uint8_t r)
{
    for (int i = 0; i < 3; ++i)
        setKeySheet(m_grpRate->button(i),
                    KeySheet::image(i == r ? S::RateGreen[i] : S::RateWhite[i], S::BaseGrey));
}

void Below_Widget::on_Style_btnCut(bool on)
{
    setKeySheet(m_btnCut, KeySheet::image(on ? S::CutOn : S::CutOff, S::BaseRed));
}

void Below_Widget::on_Style_btnAuto(bool on)
{
    setKeySheet(m_btnAuto, KeySheet::image(on ? S::AutoOn : S::AutoOff, S::BaseRed));
}

void Below_Widget::swapBusLights()
{
    const uint8_t pgm = m_pgm;
    const uint8_t pvw = m_pvw;
    set_PGMCH_Style(pvw);
    set_PVWCH_Style(pgm);
}

void Below_Widget::on_btnCut_clicked()
{
    on_Style_btnCut(true);
    m_link->cut();
    if (!m_pip)
        swapBusLights();
    m_cutTimer->start(S::CutLightMs);
    // A unique connection stands for the reconnect on every click: the slot is idempotent.
    connect(m_cutTimer, &QTimer::timeout, this, &Below_Widget::on_Time_cut, Qt::UniqueConnection);
}

void Below_Widget::on_Time_cut()
{
    on_Style_btnCut(false);
    m_cutTimer->stop();
}

void Below_Widget::on_btnAuto_clicked()
{
    // The buses swap when the unit's transition is over; the PIP flag is read then, as a
    // click during the wait may have changed it.
    flashKey(
        this, S::AutoWaitMs, [this](bool lit) { on_Style_btnAuto(lit); },
        [this] { m_link->autoTransition(); },
        [this] {
            if (!m_pip)
                swapBusLights();
        });
}
