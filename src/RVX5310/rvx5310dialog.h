#pragma once

#include "RVX8000/panel8000.h"

#include <QByteArray>
#include <QDialog>
#include <memory>

class PIP_Body;
class QButtonGroup;
class Resobody;

namespace Ui {
class RVX5310Dialog;
}

// Front panel of one RVX5310 unit: four inputs and the bars on PGM and PVW, CUT, AUTO and the
// T-bar, MIX/FADE/WIPE, FTB, PIP and POP (F2), streaming (F1), REC, PAUSE, STILL, mute, RESET,
// AFV and MIX with the two audio sources and levels, and DS to read the unit's state. The PIP
// settings show while PIP is on; RESO hides and shows the output format list. The unit's
// state report relights it all.
class RVX5310Dialog : public Panel8000<QDialog>
{
    Q_OBJECT
public:
    explicit RVX5310Dialog(QWidget *parent = nullptr);
    ~RVX5310Dialog() override;

    PIP_Body *pipBody() const { return m_pip; }
    Resobody *resoBody() const { return m_reso; }

    // Its own keys (the others are the frame's; F1 is its streaming key).
    void on_btn_reset_clicked();
    void on_btn_reso_clicked(bool checked);
    void on_btn_f3_clicked(bool checked);
    void on_btn_f4_clicked(bool checked);
    void on_btnGrp_Rate_clicked(int id);
    // The unit's state report: the record as the link signals it, decoded and shown.
    void on_toRead_5370Dtat(const QByteArray &data);
    void showUnitState(const UnitState &s) override;

private:
    void initPIP();
    void initRESO();
    void initUpper();
    void initPGM_PVWCH();
    void showRate(int rate);

    std::unique_ptr<Ui::RVX5310Dialog> ui;
    PIP_Body *m_pip = nullptr;
    Resobody *m_reso = nullptr;
    QButtonGroup *m_rateKeys = nullptr;
};
