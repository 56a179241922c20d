#pragma once

#include "RVX8000/panel8000.h"

#include <QByteArray>
#include <QWidget>
#include <memory>

class PIPGro5350;
class QButtonGroup;
class Set;

namespace Ui {
class RVX5350;
}

// Front panel of the two-input RVX5350: one of two inputs on air (no preview row, no CUT),
// AUTO and the T-bar that take the other input on air, RESO and RATE keys that step through
// their values, a blinking STILL, a large draggable PIP preview and the SET strip with the
// unit's serial, address and a running clock.
class RVX5350 : public Panel8000<QWidget>
{
    Q_OBJECT
public:
    explicit RVX5350(QWidget *parent = nullptr);
    ~RVX5350() override;

    PIPGro5350 *pipBox() const { return m_pipBox; }
    Set *setWidget() const { return m_set; }
    // The input on air (1 or 2; 0 before the unit or the operator said).
    int inputOnAir() const { return m_onAir; }

    // Its own keys (the others are the frame's).
    void on_btn_reso_clicked();
    void on_btn_rate_clicked();
    void on_btn_micvol_clicked();
    void on_btn_set_clicked();
    // Puts input 1 or 2 on air: its box is outlined red, the other white.
    void setInput(int input);
    // A transition went through: the other input is on air now.
    void in1_in2_style();

public slots:
    // The unit's state report: the record as the link signals it, decoded and shown.
    void m_on_toRead_5370Dtat(const QByteArray &data);
    void showUnitState(const UnitState &s) override;
    // PIP size 0-2: size label and preview box (the state's and SET's PIP_SZ).
    void setPIPSZ_Style(int size);

protected:
    void unitBound(const UnitAddress &unit) override;

private:
    void initKeys();
    void showInput(int input);
    void setRate(int rate);
    void setResolution(int index);

    std::unique_ptr<Ui::RVX5350> ui;
    PIPGro5350 *m_pipBox = nullptr;
    Set *m_set = nullptr;
    QButtonGroup *m_inputs = nullptr;
    int m_onAir = 0;
    int m_resolution = 0;
    int m_rate = 0;
};
