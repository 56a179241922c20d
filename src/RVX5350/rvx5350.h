#pragma once

#include "SwitcherData/unitaddress.h"

#include <QByteArray>
#include <QString>
#include <QWidget>
#include <cstdint>
#include <memory>

class AudioChannels;
class AudioModeKey;
class FrontPanel8000;
class InsetKeys;
class KeyBlink;
class PIPGro5350;
class QButtonGroup;
class QPushButton;
class RVX5ALL_workdata;
class Set;
class UnitState;

namespace Ui {
class RVX5350;
}

// Front panel of the two-input RVX5350: one of two inputs on air (no preview row, no CUT),
// AUTO and the T-bar that take the other input on air, RESO and RATE keys that step through
// their values, a blinking STILL, a large draggable PIP preview and the SET strip with the
// unit's serial, address and a running clock.
class RVX5350 : public QWidget
{
    Q_OBJECT
public:
    explicit RVX5350(QWidget *parent = nullptr);
    ~RVX5350() override;

    // Binds the unit and its HIS board, then asks for the unit's state.
    void DevTypeID(QString ip, uchar b4, uchar b5, QString hisIp, uchar h4, uchar h5);
    // Binds the unit's boards as the search found them, then asks for the unit's state.
    void bindUnit(const UnitAddress &unit, const UnitAddress &his);

    RVX5ALL_workdata *link() const { return m_link; }
    FrontPanel8000 *front() const { return m_front; }
    PIPGro5350 *pipBox() const { return m_pipBox; }
    Set *setWidget() const { return m_set; }
    // The input on air (1 or 2; 0 before the unit or the operator said).
    int inputOnAir() const { return m_onAir; }
    bool stillBlinking() const;

    void on_btn_ds_clicked();
    void on_btn_ch1_clicked();
    void on_btn_mute_clicked();
    void on_btn_ch2_clicked();
    void on_btn_reso_clicked();
    void on_btn_rate_clicked();
    void on_btn_rec_clicked();
    void on_btn_micvol_clicked();
    void on_btn_still_clicked();
    void on_btn_set_clicked();
    void on_btn_rtmp_clicked();
    void set_audio_vol();
    // Puts input 1 or 2 on air: its box is outlined red, the other white.
    void setInput(int input);
    // A transition went through: the other input is on air now.
    void in1_in2_style();

public slots:
    // The unit's state report: the record as the link signals it, decoded and shown.
    void m_on_toRead_5370Dtat(const QByteArray &data);
    void showUnitState(const UnitState &s);
    // PIP size 0-2: size label and preview box (the state's and SET's PIP_SZ).
    void setPIPSZ_Style(int size);

private:
    void initUpper();
    void initRight();
    void showInput(int input);
    void setRate(int rate);
    void setResolution(int index);

    std::unique_ptr<Ui::RVX5350> ui;
    RVX5ALL_workdata *m_link = nullptr;
    FrontPanel8000 *m_front = nullptr;
    PIPGro5350 *m_pipBox = nullptr;
    Set *m_set = nullptr;
    KeyBlink *m_stillBlink = nullptr;
    QButtonGroup *m_inputs = nullptr;
    InsetKeys *m_insets = nullptr;
    AudioModeKey *m_audioMode = nullptr;
    AudioChannels *m_audio = nullptr;
    int m_onAir = 0;
    int m_resolution = 0;
    int m_rate = 0;
};
