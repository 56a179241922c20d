#include "pipsettingspane.h"

#include "SwitcherData/protocol.h"
#include "SwitcherData/unitcontrol.h"
#include "SwitcherData/unitstate.h"
#include "unitstateguard.h"

#include <QComboBox>
#include <QMessageBox>
#include <QSignalBlocker>
#include <QSpinBox>
#include <type_traits>

namespace {

constexpr int PositionStep = 10;
// Both positions until a size is chosen.
constexpr int StartMax = 960;

template <std::size_t N> QComboBox *makeList(QWidget *parent, const char *const (&items)[N])
{
    auto *list = new QComboBox(parent);
    for (const char *item : items)
        list->addItem(QString::fromLatin1(item));
    list->setCurrentIndex(-1);
    return list;
}

QSpinBox *makeSpin(QWidget *parent, int min, int max, int step)
{
    auto *spin = new QSpinBox(parent);
    spin->setRange(min, max);
    spin->setSingleStep(step);
    return spin;
}

} // namespace

PipSettingsPane::PipSettingsPane(QWidget *parent, UnitControl *unit, Echo echo, Position position)
    : QWidget(parent), m_unit(unit), m_echo(echo), m_position(position)
{
    m_size = makeList(this, PipTexts::SizeItems);
    m_hPos = makeSpin(this, 0, StartMax, PositionStep);
    m_vPos = makeSpin(this, 0, StartMax, PositionStep);
    m_borderEnable = makeList(this, PipTexts::BorderEnableItems);
    m_borderColor = makeList(this, PipTexts::BorderColorItems);
    m_borderWidth = makeSpin(this, Protocol::PipBorderWidthMin, Protocol::PipBorderWidthMax, 1);

    connect(m_size, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &PipSettingsPane::on_coboxIndexChanged_Size);
    connect(m_hPos, QOverload<int>::of(&QSpinBox::valueChanged), this,
            &PipSettingsPane::on_spboxValueChanged_Hposition);
    connect(m_vPos, QOverload<int>::of(&QSpinBox::valueChanged), this,
            &PipSettingsPane::on_spboxValueChanged_Vposition);
    connect(m_borderEnable, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &PipSettingsPane::on_coboxIndexChanged_BorderEnable);
    connect(m_borderColor, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &PipSettingsPane::on_coboxIndexChanged_BorderColor);
    connect(m_borderWidth, QOverload<int>::of(&QSpinBox::valueChanged), this,
            &PipSettingsPane::on_spboxValueChanged_BorderWidth);
}

void PipSettingsPane::applyRanges(int index)
{
    if (index < 0 || index >= Protocol::PipSizeCount)
        return;
    m_hPos->setRange(0, Protocol::PipHMax[index]);
    m_vPos->setRange(0, Protocol::PipVMax[index]);
}

void PipSettingsPane::on_coboxIndexChanged_Size(int index)
{
    if (index < 0)
        return;
    // A position outside the new range is clamped by its spin box, which then sends the
    // clamped value on its own before the size command leaves.
    applyRanges(index);
    m_unit->pipSize(index);
}

bool PipSettingsPane::positionMayGo()
{
    if (m_position == Position::Free || m_size->currentIndex() != -1)
        return true;
    if (!UnitStateGuard::active())
        QMessageBox::warning(this, QString::fromLatin1(PipTexts::WarningTitle),
                             QString::fromLatin1(PipTexts::ChooseSize));
    return false;
}

void PipSettingsPane::on_spboxValueChanged_Hposition(int value)
{
    if (positionMayGo())
        m_unit->pipPosition(true, value);
}

void PipSettingsPane::on_spboxValueChanged_Vposition(int value)
{
    if (positionMayGo())
        m_unit->pipPosition(false, value);
}

void PipSettingsPane::on_coboxIndexChanged_BorderEnable(int index)
{
    if (index >= 0)
        m_unit->pipBorder(index == 1);
}

void PipSettingsPane::on_coboxIndexChanged_BorderColor(int index)
{
    if (index >= 0)
        m_unit->pipBorderColor(index);
}

void PipSettingsPane::on_spboxValueChanged_BorderWidth(int value)
{
    m_unit->pipBorderWidth(value);
}

// With Echo::Send the control's change signal runs, as for an operator's change, and a value
// that differs from the shown one goes back to the unit once. With Echo::Quiet the control
// only shows it.
template <class Control, class Value> void PipSettingsPane::showState(Control *control, Value value)
{
    const QSignalBlocker quiet(m_echo == Echo::Quiet ? control : nullptr);
    if constexpr (std::is_same_v<Control, QComboBox>)
        control->setCurrentIndex(value);
    else
        control->setValue(value);
}

void PipSettingsPane::set_BorderEnable_Style(uint8_t b)
{
    if (b <= 1)
        showState(m_borderEnable, int(b));
}

void PipSettingsPane::set_BorderColor_Style(uint8_t c)
{
    if (c < Protocol::PipBorderColorCount)
        showState(m_borderColor, int(c));
}

void PipSettingsPane::set_BorderWidth_Style(uint8_t w)
{
    if (w >= Protocol::PipBorderWidthMin && w <= Protocol::PipBorderWidthMax)
        showState(m_borderWidth, int(w));
}

void PipSettingsPane::set_Size_Style(uint8_t s)
{
    if (s >= Protocol::PipSizeCount)
        return;
    if (m_echo == Echo::Send) {
        m_size->setCurrentIndex(s);
        return;
    }
    // Shown quietly, the size still bounds the positions, and their clamping stays quiet too.
    const QSignalBlocker quietSize(m_size);
    const QSignalBlocker quietH(m_hPos);
    const QSignalBlocker quietV(m_vPos);
    m_size->setCurrentIndex(s);
    applyRanges(s);
}

void PipSettingsPane::set_Hposition_Style(uint8_t hi, uint8_t lo)
{
    showState(m_hPos, (hi << 8) | lo);
}

void PipSettingsPane::set_Vposition_Style(uint8_t hi, uint8_t lo)
{
    showState(m_vPos, (hi << 8) | lo);
}

void PipSettingsPane::showReport(const UnitState &s)
{
    using F = UnitState::Field;
    if (s.has(F::PipBorder))
        set_BorderEnable_Style(uint8_t(s.value(F::PipBorder)));
    if (s.has(F::PipBorderColor))
        set_BorderColor_Style(uint8_t(s.pipBorderColor()));
    if (s.has(F::PipBorderWidth))
        set_BorderWidth_Style(uint8_t(s.pipBorderWidth()));
    if (s.has(F::PipSize))
        set_Size_Style(uint8_t(s.pipSize()));
    if (s.has(F::PipH))
        showState(m_hPos, s.pipH());
    if (s.has(F::PipV))
        showState(m_vPos, s.pipV());
}
