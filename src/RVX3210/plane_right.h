#pragma once

#include <QWidget>

class QComboBox;
class QSpinBox;
class RVX3210_workdata;

// PIP settings pane of the RVX3210-family panels: size preset, position, border on/off,
// colour and width. Shown only while PIP is on.
class Plane_Right : public QWidget
{
    Q_OBJECT
public:
    Plane_Right(QWidget *parent, RVX3210_workdata *link);

    void set_BorderEnable_Style(uint8_t b);
    void set_BorderColor_Style(uint8_t c);
    void set_BorderWidth_Style(uint8_t w);
    void set_Size_Style(uint8_t s);
    // Positions come high byte first in the state record.
    void set_Hposition_Style(uint8_t hi, uint8_t lo);
    void set_Vposition_Style(uint8_t hi, uint8_t lo);

    QComboBox *sizeList() const { return m_size; }
    QSpinBox *hPosition() const { return m_hPos; }
    QSpinBox *vPosition() const { return m_vPos; }
    QComboBox *borderEnable() const { return m_borderEnable; }
    QComboBox *borderColor() const { return m_borderColor; }
    QSpinBox *borderWidth() const { return m_borderWidth; }

public slots:
    void on_coboxIndexChanged_Size(int index);
    void on_spboxValueChanged_HPosition(int value);
    void on_spboxValueChanged_VPosition(int value);
    void on_coboxIndexChanged_BorderEnable(int index);
    void on_coboxIndexChanged_BorderColor(int index);
    void on_spboxValueChanged_BorderWidth(int value);

private:
    bool sizeChosen();

    RVX3210_workdata *m_link = nullptr;
    QComboBox *m_size = nullptr;
    QSpinBox *m_hPos = nullptr;
    QSpinBox *m_vPos = nullptr;
    QComboBox *m_borderEnable = nullptr;
    QComboBox *m_borderColor = nullptr;
    QSpinBox *m_borderWidth = nullptr;
};
