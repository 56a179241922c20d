#pragma once

#include <QWidget>

class QButtonGroup;
class QPushButton;
class QTimer;
class UnitControl;

// Bottom row of the RVX3210 panel's central column (shared with the RVX3410 panel): the PGM
// and PVW bus rows, the rate keys, CUT and AUTO.
class Below_Widget : public QWidget
{
    Q_OBJECT
public:
    Below_Widget(QWidget *parent, UnitControl *link);

    void set_PGMCH_Style(uint8_t ch);
    void set_PVWCH_Style(uint8_t ch);
    void set_Rate_Style(uint8_t r);
    void on_Style_btnCut(bool on);
    void on_Style_btnAuto(bool on);

    uint8_t BtnPGMstate() const { return m_pgm; }
    uint8_t BtnPVWstate() const { return m_pvw; }
    // Written by the panel when PIP is switched: while set, CUT and AUTO leave the buses lit
    // as they are.
    void setPipFlag(bool on) { m_pip = on; }
    bool pipFlag() const { return m_pip; }
    // PGM shows the PVW selection and PVW the PGM selection (display only, no command).
    void swapBusLights();

    QButtonGroup *pgmGroup() const { return m_grpPGM; }
    QButtonGroup *pvwGroup() const { return m_grpPVW; }
    QButtonGroup *rateGroup() const { return m_grpRate; }
    QPushButton *btnCut() const { return m_btnCut; }
    QPushButton *btnAuto() const { return m_btnAuto; }
    const QTimer *cutTimer() const { return m_cutTimer; }

signals:
    void on_get_slider_vol();
    void on_slider_auto_vol(uint8_t value);

public slots:
    void on_btnGrp_PGM_clicked(uint8_t idx);
    void on_btnGrp_PVW_clicked(uint8_t idx);
    void on_btnGrp_Rate_clicked(uint8_t idx);
    void on_btnCut_clicked();
    void on_btnAuto_clicked();
    void on_Time_cut();

private:
    QPushButton *makeKey(const QString &style, int w, int h);

    UnitControl *m_link = nullptr;
    QButtonGroup *m_grpPGM = nullptr;
    QButtonGroup *m_grpPVW = nullptr;
    QButtonGroup *m_grpRate = nullptr;
    QPushButton *m_btnCut = nullptr;
    QPushButton *m_btnAuto = nullptr;
    QTimer *m_cutTimer = nullptr;
    uint8_t m_pgm = 0;
    uint8_t m_pvw = 0;
    bool m_pip = false;
};
