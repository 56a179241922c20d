#pragma once

#include <QDialog>
#include <QPoint>
#include <QString>
#include <cstdint>

class Below_Widget;
class Plane_Botton;
class Plane_Right;
class Plane_Top;
class QSlider_Left;
class QSlider_Right;
class QSplitter;
class RVX3210_workdata;
class RVX_3410_Middle_widget;
class RVX_3410_Upper_Widget;
class TbarSequencer;

// Control panel of one RVX3410 unit. The unit speaks the RVX3210 command set and sends the
// RVX3210 state record with three bytes more (26-28), so the panel is the RVX3210 panel's
// frame, T-bar sequencing and fan-out with the RVX3410's own upper and middle rows.
class RVX3410UI : public QDialog
{
    Q_OBJECT
public:
    explicit RVX3410UI(QWidget *parent = nullptr);

    void DevTypeID(QString devIp, uint8_t a, uint8_t b, QString hisIp, uint8_t c, uint8_t d);

    RVX3210_workdata *link() const { return m_link; }
    Plane_Top *titleBar() const { return m_top; }
    RVX_3410_Upper_Widget *upperRow() const { return m_upper; }
    RVX_3410_Middle_widget *middleRow() const { return m_middle; }
    Below_Widget *lowerRow() const { return m_below; }
    Plane_Right *pipPane() const { return m_pip; }
    QSlider_Left *audioSliders() const { return m_left; }
    QSlider_Right *tbar() const { return m_tbar; }
    Plane_Botton *networkPage() const { return m_bottom; }
    TbarSequencer *tbarSequencer() const { return m_seq; }
    QPoint centrePosition() const { return {m_centreLeft, m_centreTop}; }

signals:
    void ExitSignals();

public slots:
    void on_toRead_3210Dtat(const QByteArray &data);
    void setslider0(int v);
    void setslider1(int v);
    void btnAuto_and_slider();
    void set_audio_vol();
    void setPGM_PVWCH();
    void on_Middle_Singnale_btnPIP(bool on);
    void on_Topwidge_Singnale_btnwinmax(bool) {}

private:
    void init3210ui_1();
    void init3210ui_2();

    RVX3210_workdata *m_link = nullptr;
    Plane_Top *m_top = nullptr;
    RVX_3410_Upper_Widget *m_upper = nullptr;
    RVX_3410_Middle_widget *m_middle = nullptr;
    Below_Widget *m_below = nullptr;
    Plane_Right *m_pip = nullptr;
    QSlider_Left *m_left = nullptr;
    QSlider_Right *m_tbar = nullptr;
    Plane_Botton *m_bottom = nullptr;
    QSplitter *m_splitter = nullptr;
    QWidget *m_centre = nullptr;
    TbarSequencer *m_seq = nullptr;
    int m_centreLeft = 0;
    int m_centreTop = 0;
};
