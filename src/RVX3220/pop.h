#pragma once

#include <QWidget>

class QComboBox;
class QPushButton;
class QSpinBox;
class UnitControl;

// Right-hand column for picture-out-of-picture (split screen): the window the settings
// apply to, its position and its border.
class POP : public QWidget
{
    Q_OBJECT
public:
    POP(QWidget *parent, UnitControl *link);

    QPushButton *windowButton() const { return m_window; }
    QPushButton *borderButton() const { return m_border; }
    QSpinBox *hPosition() const { return m_h; }
    QSpinBox *vPosition() const { return m_v; }
    QSpinBox *borderWidth() const { return m_borderWidth; }
    QComboBox *borderColor() const { return m_borderColor; }

    bool POP_WindowMode() const { return m_windowTwo; }

public slots:
    void setlwindowindex();
    void setSpboxHPosition(int v);
    void setSpboxVPosition(int v);
    void setbtnBorder_Enable();
    void setSpboxBorder_Width(int v);
    void setCoboxBorder_Color(int i);

private:
    // True when a window has been chosen; otherwise warns and the position is not sent.
    bool windowChosen();

    UnitControl *m_link;
    QPushButton *m_window;
    QSpinBox *m_h;
    QSpinBox *m_v;
    QPushButton *m_border;
    QSpinBox *m_borderWidth;
    QComboBox *m_borderColor;
    bool m_windowSelected = false;
    bool m_windowTwo = false;
    bool m_borderOn = false;
};
