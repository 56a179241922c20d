#pragma once

#include "SwitcherData/unitaddress.h"

#include <QByteArray>
#include <QString>
#include <QWidget>
#include <cstdint>
#include <memory>

class AudioChannels;
class AudioModeKey;
class F1QWidget;
class FrontPanel8000;
class InsetKeys;
class KeyBlink;
class PIPGro;
class QPushButton;
class RVX5ALL_workdata;
class SetDialog;
class UnitState;

namespace Ui {
class RVX5370;
}

// Front panel of one RVX5370 unit: four inputs on PGM and PVW, CUT, AUTO and the T-bar as on
// the RVX5310, with BAR, RTMP, its own POP key, one AFV/MIX key, a draggable PIP preview and
// two sub-widgets in one place, F1 (keys and the address) and SET (the settings keys, the
// serial and the address). The unit's state report relights it and feeds the preview and SET.
class RVX5370 : public QWidget
{
    Q_OBJECT
public:
    explicit RVX5370(QWidget *parent = nullptr);
    ~RVX5370() override;

    // Binds the unit and its HIS board, then asks for the unit's state.
    void DevTypeID(QString ip, uchar b4, uchar b5, QString hisIp, uchar h4, uchar h5);
    // Binds the unit's boards as the search found them, then asks for the unit's state.
    void bindUnit(const UnitAddress &unit, const UnitAddress &his);

    RVX5ALL_workdata *link() const { return m_link; }
    FrontPanel8000 *front() const { return m_front; }
    PIPGro *pipBox() const { return m_pipBox; }
    SetDialog *setWidget() const { return m_set; }
    F1QWidget *f1Widget() const { return m_f1; }
    bool ftbBlinking() const;

    void on_btn_rec_clicked();
    void on_btn_rtmp_clicked();
    void on_btn_ftb_clicked();
    void on_btn_still_clicked();
    void on_btn_bar_clicked();
    void on_btn_pause_clicked();
    void on_btn_ds_clicked();
    void on_btn_f1_clicked();
    void on_btn_ch1_clicked();
    void on_btn_set_clicked();
    void on_btn_mute_clicked();
    void on_btn_ch2_clicked();
    void set_audio_vol();

public slots:
    // The unit's state report: the record as the link signals it, decoded and shown.
    void m_on_toRead_5370Dtat(const QByteArray &data);
    void showUnitState(const UnitState &s);
    // PIP size 0-2: size label and preview box (the state's and SET's PIP_S).
    void setPIPSZ_Style(int size);
    // Rate 0-2: rate label and AUTO's run (the state's and SET's RATE).
    void setRATE_Style(int rate);

private:
    void initUpper();
    void initBelow();
    void showSubWidget(QWidget *shown, QWidget *hidden);

    std::unique_ptr<Ui::RVX5370> ui;
    RVX5ALL_workdata *m_link = nullptr;
    FrontPanel8000 *m_front = nullptr;
    PIPGro *m_pipBox = nullptr;
    SetDialog *m_set = nullptr;
    F1QWidget *m_f1 = nullptr;
    KeyBlink *m_ftbBlink = nullptr;
    InsetKeys *m_insets = nullptr;
    AudioModeKey *m_audioMode = nullptr;
    AudioChannels *m_audio = nullptr;
};
