#pragma once

#include "settingkeys.h"

#include <QByteArray>
#include <QDialog>
#include <QString>
#include <memory>

class UnitControl;

namespace Ui {
class SetDialog;
}

// The RVX5370 panel's settings window: a row of front-panel keys that flash when pressed. RESO,
// RATE and PIP_S step through their cycles, tell the unit and announce the new value to the
// panel; the window also shows the unit's serial number and address. The panel feeds it the
// unit's present values so a press continues from them.
class SetDialog : public QDialog
{
    Q_OBJECT
public:
    static constexpr int ResoCount = 7;
    static constexpr int RateCount = 3;
    static constexpr int PipSizeCount = SettingKeys::PipSizeCount;

    SetDialog(QWidget *parent, UnitControl *model);
    ~SetDialog() override;

    // "SN:" and each non-zero byte of the serial in lower-case hex, each followed by a blank.
    static QString serialText(const QByteArray &sn) { return SettingKeys::serialText(sn); }

    // The keys and their lamps. They are plain members, not slots: the form's name-based hookup
    // would otherwise connect each key a second time next to the typed connections made here.
    void on_btn_reso_clicked();
    void on_btn_micvol_clicked();
    void on_btn_fan_clicked();
    void on_btn_rate_clicked();
    void on_btn_key_clicked();
    void on_btn_pip_s_clicked();
    void on_btn_l_1_clicked();
    void on_btn_l_2_clicked();
    void on_btn_reset_clicked();
    void on_Style_btnReso(bool lit);
    void on_Style_btnMicVol(bool lit);
    void on_Style_btnFan(bool lit);
    void on_Style_btnRate(bool lit);
    void on_Style_btnPip_s(bool lit);
    void on_Style_btnKey(bool lit);
    void on_Style_btnL_1(bool lit);
    void on_Style_btnL_2(bool lit);
    void on_Style_Reset(bool lit);

    // The unit's serial, as its state reports it.
    void on_toRead_5370SMDtat(const QByteArray &sn);

    int resoIndex() const { return m_reso; }
    int rateIndex() const { return m_rate; }
    int pipSizeIndex() const { return m_keys.pipSize(); }
    bool pipSizeUnlocked() const { return m_keys.pipSizeUnlocked(); }

public slots:
    // The unit's present values (an index outside its cycle is ignored).
    void setRESO_V(int index);
    void setRARE_V(int index);
    void setPIP_S_V(int index);
    // PIP_S works only while PIP is on.
    void setPIP_size_unlock_falg_slots(bool unlocked);
    void getDevIP(QString ip);

signals:
    void setPIPSZ_Style(int index);
    // Carries the new rate index from RATE, and the new format's code from RESO.
    void setRATE_Style(int value);
    void setRESO_Style(int index);

private:
    std::unique_ptr<Ui::SetDialog> ui;
    SettingKeys m_keys;
    int m_reso = 0;
    int m_rate = 0;
};
