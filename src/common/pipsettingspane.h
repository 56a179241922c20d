#pragma once

#include <QWidget>
#include <cstdint>

class QComboBox;
class QSpinBox;
class UnitControl;
class UnitState;

// Fixed texts of every PIP settings pane.
namespace PipTexts {
inline constexpr char Size[] = "Size";
inline constexpr char HPosition[] = "H_Position";
inline constexpr char VPosition[] = "V_Position";
inline constexpr char BorderEnable[] = "Border_Enable";
inline constexpr char BorderColor[] = "Border_Color";
inline constexpr char BorderWidth[] = "Border_Width";
inline constexpr const char *SizeItems[] = {"Small", "Medium", "Large"};
inline constexpr const char *BorderEnableItems[] = {"OFF", "ON"};
inline constexpr const char *BorderColorItems[] = {"White", "Red", "Blue", "Green"};
inline constexpr char WarningTitle[] = "Warning";
inline constexpr char ChooseSize[] = "please choose Size";
} // namespace PipTexts

// The controls and rules of a picture-in-picture settings pane: size preset, H and V
// position, border on/off, colour and width, each change sent at once through the unit's
// UnitControl, whatever the link's family. The size preset
// bounds the positions so the inset stays inside a 1920 x 1080 picture. The pane lays out
// nothing: a panel's pane places and styles the controls, adds its captions, and chooses
//  - whether a state value that changes a control goes back to the unit as that control's
//    command (Echo::Send, the RVX3210 family) or is only shown (Echo::Quiet, the 8000 series);
//  - whether a position waits for a size to be chosen, warning "please choose Size" until
//    then (RVX3210 family, 8000 series), or goes out at once (RVX3220).
class PipSettingsPane : public QWidget
{
    Q_OBJECT
public:
    enum class Echo
    {
        Send,
        Quiet
    };
    enum class Position
    {
        NeedsSize,
        Free
    };

    PipSettingsPane(QWidget *parent, UnitControl *unit, Echo echo, Position position);

    QComboBox *sizeList() const { return m_size; }
    QSpinBox *hPosition() const { return m_hPos; }
    QSpinBox *vPosition() const { return m_vPos; }
    QComboBox *borderEnable() const { return m_borderEnable; }
    QComboBox *borderColor() const { return m_borderColor; }
    QSpinBox *borderWidth() const { return m_borderWidth; }

    // From the unit's state record. Values outside a control's items or range are ignored.
    void set_BorderEnable_Style(uint8_t b);
    void set_BorderColor_Style(uint8_t c);
    void set_BorderWidth_Style(uint8_t w);
    void set_Size_Style(uint8_t s);
    // Positions come high byte first in the state record; the commands send them low first.
    void set_Hposition_Style(uint8_t hi, uint8_t lo);
    void set_Vposition_Style(uint8_t hi, uint8_t lo);
    // The PIP fields of a unit's state, through the setters above in record order.
    void showReport(const UnitState &s);

public slots:
    void on_coboxIndexChanged_Size(int index);
    void on_spboxValueChanged_Hposition(int value);
    void on_spboxValueChanged_Vposition(int value);
    void on_coboxIndexChanged_BorderEnable(int index);
    void on_coboxIndexChanged_BorderColor(int index);
    void on_spboxValueChanged_BorderWidth(int value);

private:
    // Bounds the positions for size preset `index` (0-2; others leave them).
    void applyRanges(int index);
    bool positionMayGo();
    template <class Control, class Value> void showState(Control *control, Value value);

    UnitControl *m_unit;
    Echo m_echo;
    Position m_position;
    QComboBox *m_size = nullptr;
    QSpinBox *m_hPos = nullptr;
    QSpinBox *m_vPos = nullptr;
    QComboBox *m_borderEnable = nullptr;
    QComboBox *m_borderColor = nullptr;
    QSpinBox *m_borderWidth = nullptr;
};
