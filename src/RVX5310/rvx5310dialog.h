#pragma once

#include "SwitcherData/unitaddress.h"

#include <QByteArray>
#include <QDialog>
#include <QString>
#include <cstdint>
#include <memory>

class AudioChannels;
class AudioModeKey;
class FrontPanel8000;
class InsetKeys;
class KeyBlink;
class PIP_Body;
class QButtonGroup;
class RVX5ALL_workdata;
class Resobody;
class UnitState;

namespace Ui {
class RVX5310Dialog;
}

// Front panel of one RVX5310 unit: four inputs and the bars on PGM and PVW, CUT, AUTO and the
// T-bar, MIX/FADE/WIPE, FTB, PIP and POP (F2), streaming (F1), REC, PAUSE, STILL, mute, RESET,
// AFV and MIX with the two audio sources and levels, and DS to read the unit's state. The PIP
// settings show while PIP is on; RESO hides and shows the output format list. The unit's
// state report relights it all.
class RVX5310Dialog : public QDialog
{
    Q_OBJECT
public:
    explicit RVX5310Dialog(QWidget *parent = nullptr);
    ~RVX5310Dialog() override;

    // Binds the unit and its HIS board, then asks for the unit's state.
    void DevTypeID(QString ip, uchar b4, uchar b5, QString hisIp, uchar h4, uchar h5);
    // Binds the unit's boards as the search found them, then asks for the unit's state.
    void bindUnit(const UnitAddress &unit, const UnitAddress &his);

    RVX5ALL_workdata *link() const { return m_link; }
    FrontPanel8000 *front() const { return m_front; }
    PIP_Body *pipBody() const { return m_pip; }
    Resobody *resoBody() const { return m_reso; }
    bool ftbBlinking() const;

    // The keys: plain members, not slots, so the form's name-based hookup does not connect a
    // key a second time beside the typed connections.
    void on_btn_f1_clicked();
    void on_btn_ftb_clicked();
    void on_btn_rec_clicked();
    void on_btn_pause_clicked();
    void on_btn_still_clicked();
    void on_btn_mute_clicked();
    void on_btn_reset_clicked();
    void on_btn_ds_clicked();
    void on_btn_ch1_clicked();
    void on_btn_ch2_clicked();
    void on_btn_reso_clicked(bool checked);
    void on_btn_f3_clicked(bool checked);
    void on_btn_f4_clicked(bool checked);
    void on_btnGrp_Rate_clicked(int id);
    void set_audio_vol();
    // The unit's state report: the record as the link signals it, decoded and shown.
    void on_toRead_5370Dtat(const QByteArray &data);
    void showUnitState(const UnitState &s);

private:
    void initPIP();
    void initRESO();
    void initUpper();
    void initMiddle();
    void initPGM_PVWCH();
    void init_Toggle_key();
    void showRate(int rate);

    std::unique_ptr<Ui::RVX5310Dialog> ui;
    RVX5ALL_workdata *m_link = nullptr;
    PIP_Body *m_pip = nullptr;
    Resobody *m_reso = nullptr;
    FrontPanel8000 *m_front = nullptr;
    InsetKeys *m_insets = nullptr;
    AudioModeKey *m_audioMode = nullptr;
    AudioChannels *m_audio = nullptr;
    KeyBlink *m_ftbBlink = nullptr;
    QButtonGroup *m_rateKeys = nullptr;
};
