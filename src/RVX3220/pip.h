#pragma once

#include <QWidget>

class QComboBox;
class QSpinBox;
class RVX3220_workdata;

// Right-hand column for picture-in-picture: inset position, size and border.
class PIP : public QWidget
{
    Q_OBJECT
public:
    PIP(QWidget *parent, RVX3220_workdata *model);

    QSpinBox *hPosition() const { return m_h; }
    QSpinBox *vPosition() const { return m_v; }
    QComboBox *sizeList() const { return m_size; }
    QComboBox *borderEnable() const { return m_borderEnable; }
    QSpinBox *borderWidth() const { return m_borderWidth; }
    QComboBox *borderColour() const { return m_borderColour; }

public slots:
    void setSpboxHPosition(int v);
    void setSpboxVPosition(int v);
    void setCoboxSize(int i);
    void setCoboxBorder_Enable(int i);
    void setSpboxBorder_Width(int v);
    void setCoboxBorder_Color(int i);

private:
    RVX3220_workdata *m_model;
    QSpinBox *m_h;
    QSpinBox *m_v;
    QComboBox *m_size;
    QComboBox *m_borderEnable;
    QSpinBox *m_borderWidth;
    QComboBox *m_borderColour;
};
