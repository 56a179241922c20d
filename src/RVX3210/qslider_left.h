#pragma once

#include <QWidget>

class QLabel;
class QSlider;
class UnitControl;

// Audio level faders of the RVX3210-family panels: channel 1, channel 2 and master. It only
// announces changes; the panel turns each into one level command.
class QSlider_Left : public QWidget
{
    Q_OBJECT
public:
    QSlider_Left(QWidget *parent, UnitControl *link);

    uint8_t get_Slider_ch1_valueChanged();
    uint8_t get_Slider_ch2_valueChanged();
    uint8_t get_Slider_master_valueChanged();
    void set_Slider1_valueChanged(uint8_t v);
    void set_Slider2_valueChanged(uint8_t v);
    void set_Slider3_valueChanged(uint8_t v);

    QSlider *sliderCh1() const { return m_ch1; }
    QSlider *sliderCh2() const { return m_ch2; }
    QSlider *sliderMaster() const { return m_master; }

signals:
    void on_slider_ch1_vol(uint8_t v);
    void on_slider_ch2_vol(uint8_t v);
    void on_slider_mastre_vol(uint8_t v);
    void on_slider_max();
    void on_slider_min();

public slots:
    void set_slider_max() {}
    void set_slider_min() {}

private:
    void initLeftSlider();

    UnitControl *m_link = nullptr;
    QSlider *m_ch1 = nullptr;
    QSlider *m_ch2 = nullptr;
    QSlider *m_master = nullptr;
    QLabel *m_capCh1 = nullptr;
    QLabel *m_capCh2 = nullptr;
    QLabel *m_capMaster = nullptr;
};
