#pragma once

#include "SwitcherData/unitaddress.h"

#include <QDialog>
#include <cstdint>

class AUDIO;
class Devlog;
class PGM;
class PIP;
class POP;
class PVW;
class QLabel;
class QPushButton;
class QSlider;
class QTimer;
class RVX3220_workdata;
class UnitControl;
class Transitions;

// Front panel of one RVX3220 unit. The unit never reports its state, so every lamp here
// follows the operator's own actions, the swap of the two buses after a transition included.
class RVX3220UI : public QDialog
{
    Q_OBJECT
public:
    explicit RVX3220UI(QWidget *parent = nullptr);

    void DevTypeID(QString ip, quint8 classByte, quint8 numberByte);
    // The unit has no HIS board: only the main board is bound.
    void bindUnit(const UnitAddress &unit, const UnitAddress &his = UnitAddress());

    RVX3220_workdata *link() const { return m_link; }
    AUDIO *audio() const { return m_audio; }
    Transitions *transitions() const { return m_transitions; }
    PGM *pgm() const { return m_pgm; }
    PVW *pvw() const { return m_pvw; }
    PIP *pip() const { return m_pip; }
    POP *pop() const { return m_pop; }
    Devlog *titleBar() const { return m_titleBar; }
    QSlider *tbar() const { return m_tbar; }
    QPushButton *cutButton() const { return m_cut; }
    QPushButton *autoButton() const { return m_auto; }
    QPushButton *pipButton() const { return m_pipBtn; }
    QPushButton *popButton() const { return m_popBtn; }
    QPushButton *settingsButton() const { return m_settings; }
    QPushButton *returnButton() const { return m_return; }
    QLabel *divider() const { return m_divider; }
    QTimer *cutTimer() const { return m_cutTimer; }

    void btnCutStyle(bool lit);
    void btnAutoStyle(bool lit);
    void btnPIPStyle(bool lit);
    void btnPOPStyle(bool lit);
    // Display only: what was on preview is now on program and the other way round.
    void setPGM_PVWCH();

public slots:
    void setBtncut();
    void setTimercut();
    void setBtnAUTO();
    void setBtnPIP();
    void setBtnPOP();
    void setBtnip();
    void setslider0(int v);
    void setslider1(int v);

protected:
    void done(int result) override;

private:
    void init();
    void initUI1();
    void initUI2();
    // PIP and POP share the right-hand column: `on` is the pressed key's flag, `otherOn` the
    // other kind's.
    void switchInset(bool &on, bool &otherOn, QWidget *pane, QWidget *otherPane,
                     bool (UnitControl::*send)(bool), void (RVX3220UI::*lamp)(bool));
    void setRightUIshow();
    void setRightUIclos();

    AUDIO *m_audio = nullptr;
    Transitions *m_transitions = nullptr;
    PGM *m_pgm = nullptr;
    PVW *m_pvw = nullptr;
    Devlog *m_titleBar = nullptr;
    PIP *m_pip = nullptr;
    POP *m_pop = nullptr;
    QLabel *m_modelLabel = nullptr;
    QLabel *m_version = nullptr;
    QLabel *m_divider = nullptr;
    QSlider *m_tbar = nullptr;
    QPushButton *m_pipBtn = nullptr;
    QPushButton *m_popBtn = nullptr;
    QPushButton *m_cut = nullptr;
    QPushButton *m_auto = nullptr;
    QPushButton *m_settings = nullptr;
    QPushButton *m_return = nullptr;
    RVX3220_workdata *m_link = nullptr;
    QTimer *m_cutTimer = nullptr;
    bool m_reachedMax = false;
    bool m_reachedMin = false;
    bool m_strokeBack = false;
    bool m_pipOn = false;
    bool m_popOn = false;
};
