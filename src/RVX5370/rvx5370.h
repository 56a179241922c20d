#pragma once

#include "RVX8000/panel8000.h"

#include <QByteArray>
#include <QWidget>
#include <memory>

class F1QWidget;
class PIPGro;
class SetDialog;

namespace Ui {
class RVX5370;
}

// Front panel of one RVX5370 unit: four inputs on PGM and PVW, CUT, AUTO and the T-bar as on
// the RVX5310, with BAR, RTMP, its own POP key, one AFV/MIX key, a draggable PIP preview and
// two sub-widgets in one place, F1 (keys and the address) and SET (the settings keys, the
// serial and the address). The unit's state report relights it and feeds the preview and SET.
class RVX5370 : public Panel8000<QWidget>
{
    Q_OBJECT
public:
    explicit RVX5370(QWidget *parent = nullptr);
    ~RVX5370() override;

    PIPGro *pipBox() const { return m_pipBox; }
    SetDialog *setWidget() const { return m_set; }
    F1QWidget *f1Widget() const { return m_f1; }

    // Its own keys (the others are the frame's).
    void on_btn_bar_clicked();
    void on_btn_f1_clicked();
    void on_btn_set_clicked();

public slots:
    // The unit's state report: the record as the link signals it, decoded and shown.
    void m_on_toRead_5370Dtat(const QByteArray &data);
    void showUnitState(const UnitState &s) override;
    // PIP size 0-2: size label and preview box (the state's and SET's PIP_S).
    void setPIPSZ_Style(int size);
    // Rate 0-2: rate label and AUTO's run (the state's and SET's RATE).
    void setRATE_Style(int rate);

protected:
    void unitBound(const UnitAddress &unit) override;

private:
    void initKeys();
    void showSubWidget(QWidget *shown, QWidget *hidden);

    std::unique_ptr<Ui::RVX5370> ui;
    PIPGro *m_pipBox = nullptr;
    SetDialog *m_set = nullptr;
    F1QWidget *m_f1 = nullptr;
};
