#include "plane_right.h"

#include "common/unitstateguard.h"
#include "rvx3210_workdata.h"
#include "rvx3210styles.h"

#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QMessageBox>
#include <QSpinBox>

namespace S = Rvx3210Styles;

namespace {

// Position limits per size preset (Small, Medium, Large).
constexpr int HMax[] = {1440, 1280, 960};
constexpr int VMax[] = {810, 720, 540};

} // namespace

Plane_Right::Plane_Right(QWidget *parent, RVX3210_workdata *link) : QWidget(parent), m_link(link)
{
    setAttribute(Qt::WA_StyledBackground);
    setStyleSheet(QString::fromLatin1(S::PipPane));

    auto makeList = [this](const auto &items) {
        auto *list = new QComboBox(this);
        list->setMinimumSize(80, 24);
        list->setStyleSheet(QString::fromLatin1(S::Inputs));
        for (const char *item : items)
            list->addItem(QString::fromLatin1(item));
        list->setCurrentIndex(-1);
        return list;
    };
    auto makeSpin = [this](int min, int max, int step) {
        auto *spin = new QSpinBox(this);
        spin->setMinimumSize(80, 24);
        spin->setStyleSheet(QString::fromLatin1(S::Inputs));
        spin->setRange(min, max);
        spin->setSingleStep(step);
        return spin;
    };
    m_size = makeList(S::SizeItems);
    m_hPos = makeSpin(0, 960, 10);
    m_vPos = makeSpin(0, 960, 10);
    m_borderEnable = makeList(S::BorderEnableItems);
    m_borderColor = makeList(S::BorderColorItems);
    m_borderWidth = makeSpin(2, 7, 1);

    auto *grid = new QGridLayout(this);
    grid->setContentsMargins(12, 12, 12, 12);
    grid->setVerticalSpacing(14);
    const std::pair<const char *, QWidget *> rows[] = {
        {S::SizeLabel, m_size},
        {S::HPositionLabel, m_hPos},
        {S::VPositionLabel, m_vPos},
        {S::BorderEnableLabel, m_borderEnable},
        {S::BorderColorLabel, m_borderColor},
        {S::BorderWidthLabel, m_borderWidth},
    };
    int r = 0;
    for (const auto &[text, control] : rows) {
        auto *label = new QLabel(QString::fromLatin1(text), this);
        label->setMinimumSize(80, 24);
        label->setStyleSheet(QString::fromLatin1(S::Caption));
        grid->addWidget(label, r, 0);
        grid->addWidget(control, r, 1);
        ++r;
    }
    grid->setRowStretch(r, 1);

    connect(m_size, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &Plane_Right::on_coboxIndexChanged_Size);
    connect(m_hPos, QOverload<int>::of(&QSpinBox::valueChanged), this,
            &Plane_Right::on_spboxValueChanged_HPosition);
    connect(m_vPos, QOverload<int>::of(&QSpinBox::valueChanged), this,
            &Plane_Right::on_spboxValueChanged_VPosition);
    connect(m_borderEnable, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &Plane_Right::on_coboxIndexChanged_BorderEnable);
    connect(m_borderColor, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &Plane_Right::on_coboxIndexChanged_BorderColor);
    connect(m_borderWidth, QOverload<int>::of(&QSpinBox::valueChanged), this,
            &Plane_Right::on_spboxValueChanged_BorderWidth);
}

void Plane_Right::on_coboxIndexChanged_Size(int index)
{
    if (index < 0 || index > 2)
        return;
    // A position outside the new range is clamped by its spin box, which then sends the
    // clamped value on its own before the size command leaves.
    m_hPos->setRange(0, HMax[index]);
    m_vPos->setRange(0, VMax[index]);
    m_link->SendCMDPIP_Border_Size(uint8_t(index));
}

bool Plane_Right::sizeChosen()
{
    if (m_size->currentIndex() != -1)
        return true;
    if (!UnitStateGuard::active())
        QMessageBox::warning(this, QString::fromLatin1(S::WarningTitle), QString::fromLatin1(S::ChooseSize));
    return false;
}

void Plane_Right::on_spboxValueChanged_HPosition(int value)
{
    if (sizeChosen())
        m_link->SendCMDPIP_H_Position(uint16_t(value));
}

void Plane_Right::on_spboxValueChanged_VPosition(int value)
{
    if (sizeChosen())
        m_link->SendCMDPIP_V_Position(uint16_t(value));
}

void Plane_Right::on_coboxIndexChanged_BorderEnable(int index)
{
    if (index >= 0)
        m_link->SendCMDPIP_Border_Enable(uint8_t(index));
}

void Plane_Right::on_coboxIndexChanged_BorderColor(int index)
{
    if (index >= 0)
        m_link->SendCMDPIP_Border_Color(uint8_t(index));
}

void Plane_Right::on_spboxValueChanged_BorderWidth(int value)
{
    m_link->SendCMDPIP_Border_Width(uint8_t(value));
}

// The setters leave the change signals on: a state value that differs from the shown one
// goes back to the unit once, as an operator change would.
void Plane_Right::set_BorderEnable_Style(uint8_t b)
{
    if (b <= 1)
        m_borderEnable->setCurrentIndex(b);
}

void Plane_Right::set_BorderColor_Style(uint8_t c)
{
    if (c <= 3)
        m_borderColor->setCurrentIndex(c);
}

void Plane_Right::set_BorderWidth_Style(uint8_t w)
{
    if (w >= 2 && w <= 7)
        m_borderWidth->setValue(w);
}

void Plane_Right::set_Size_Style(uint8_t s)
{
    if (s <= 2)
        m_size->setCurrentIndex(s);
}

void Plane_Right::set_Hposition_Style(uint8_t hi, uint8_t lo)
{
    m_hPos->setValue((hi << 8) | lo);
}

void Plane_Right::set_Vposition_Style(uint8_t hi, uint8_t lo)
{
    m_vPos->setValue((hi << 8) | lo);
}
