#pragma once

#include <QWidget>

class QSlider;
class UnitControl;

// The T-bar of the RVX3210-family panels: one vertical fader from "A-BUS" to "B-BUS",
// 0-127. It only reports its position; the panel kit's TbarSequencer turns that into slider
// commands.
class QSlider_Right : public QWidget
{
    Q_OBJECT
public:
    QSlider_Right(QWidget *parent, UnitControl *link);

    QSlider *slider() const { return m_slider; }
    void setValue(int v);

signals:
    void on_slider_auto(int value);

private:
    UnitControl *m_link = nullptr;
    QSlider *m_slider = nullptr;
};
