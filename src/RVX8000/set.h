#pragma once

#include "keystrip.h"
#include "settingkeys.h"

#include <QByteArray>
#include <QString>
#include <memory>

class UnitControl;
class QTimer;

namespace Ui {
class Set;
}

// The RVX5350 panel's settings strip: front-panel keys that flash when pressed (PIP_SZ and
// RESET also tell the unit), the unit's serial number and address, and a running clock.
class Set : public KeyStrip
{
    Q_OBJECT
public:
    static constexpr int PipSizeCount = SettingKeys::PipSizeCount;
    static constexpr int ClockTickMs = 1000;

    Set(QWidget *parent, UnitControl *model);
    ~Set() override;

    // The keys and their lamps. They are plain members, not slots: the form's name-based hookup
    // would otherwise connect each key a second time next to the typed connections made here.
    // DISK, LEUEL, RATE+, RATE-, ADDR+ and ADDR- are the strip's (KeyStrip).
    void on_btn_fan_clicked();
    void on_btn_pip_sz_clicked();
    void on_btn_reset_clicked();
    void on_Style_btnPip_s(bool lit);
    void on_Style_btnFan(bool lit);
    void on_Style_Reset(bool lit);

    // The unit's serial, as its state reports it.
    void on_toRead_5370SMDtat(const QByteArray &sn);

    int pipSizeIndex() const { return m_keys.pipSize(); }
    bool pipSizeUnlocked() const { return m_keys.pipSizeUnlocked(); }
    bool clockRunning() const;

public slots:
    // The unit's PIP size (an index outside the cycle is ignored).
    void setPIP_S_V(int index);
    // PIP_SZ works only while PIP is on.
    void setPIP_size_unlock_falg_slots(bool unlocked);
    // The clock runs while the strip is shown.
    void setenablefalgSlots(bool enabled);
    void show_current_time();

signals:
    void setPIPSZ_Style(int index);

private:
    std::unique_ptr<Ui::Set> ui;
    SettingKeys m_keys;
    // Outside the Qt tree on purpose; the strip frees it.
    std::unique_ptr<QTimer> m_clock;
};
