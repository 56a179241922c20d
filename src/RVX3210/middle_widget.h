#pragma once

#include "common/lampkey.h"

#include <QWidget>

class QButtonGroup;
class QComboBox;
class QHBoxLayout;
class QLayout;
class QPushButton;
class QSpinBox;
class UnitControl;

// Middle row of the RVX3210 panel's central column: audio mode, sources and volumes of the
// two channels, the six transition keys, PIP and STILL.
class Middle_widget : public QWidget
{
    Q_OBJECT
public:
    Middle_widget(QWidget *parent, UnitControl *link);

    void set_AFVorMIX_Style(uint8_t m);
    void set_CH1_Style(uint8_t code);
    void set_CH2_Style(uint8_t code);
    void set_CH1VOL_Style(uint8_t v);
    void set_CH2VOL_Style(uint8_t v);
    void set_Trans_Style(uint8_t type, uint8_t wipe);
    void set_Wipe_Style(uint8_t wipe);
    void set_PIP_Style(uint8_t s);
    void set_Stll_Style(uint8_t s);

    // List index of a source code reported by the unit, -1 for an unknown code.
    static int sourceIndex(uint8_t code);

    bool pipOn() const;
    bool stillOn() const;
    QPushButton *btnAFV() const { return m_btnAFV; }
    QPushButton *btnMIX() const { return m_btnMIX; }
    LampKey *btnPIP() const { return m_btnPIP; }
    LampKey *btnSTILL() const { return m_btnSTILL; }
    QComboBox *ch1Source() const { return m_ch1; }
    QComboBox *ch2Source() const { return m_ch2; }
    QSpinBox *ch1Volume() const { return m_ch1Vol; }
    QSpinBox *ch2Volume() const { return m_ch2Vol; }
    QButtonGroup *transitions() const { return m_trans; }

signals:
    void on_Singnale_btnPIP(bool on);

public slots:
    void on_btnclicked_AFV();
    void on_btnclicked_MIX();
    void on_Coboxch1_IndexChanged(int index);
    void on_Coboxch2_IndexChanged(int index);
    void on_SpinBoxch1_valueChanged(int value);
    void on_SpinBoxch2_valueChanged(int value);
    void on_btnGrp_clicked(int id);
    void on_btnclicked_PIP();
    void on_btnclicked_STILL();

protected:
    UnitControl *link() const { return m_link; }
    // A further section at the right end of the row.
    void addSection(QLayout *section, int stretch);
    QPushButton *makeKey(const char *style, int size);

private:
    // Lights transition key `lit` (1-6; others light none) and darkens the rest.
    void showTransition(int lit);
    void lightTransition(int id);
    void warnNoSource();
    LampKey *makeLampKey(const char *lit, const char *unlit);

    UnitControl *m_link = nullptr;
    QHBoxLayout *m_row = nullptr;
    QPushButton *m_btnAFV = nullptr;
    QPushButton *m_btnMIX = nullptr;
    QComboBox *m_ch1 = nullptr;
    QComboBox *m_ch2 = nullptr;
    QSpinBox *m_ch1Vol = nullptr;
    QSpinBox *m_ch2Vol = nullptr;
    QButtonGroup *m_trans = nullptr;
    LampKey *m_btnPIP = nullptr;
    LampKey *m_btnSTILL = nullptr;
    int m_ch1Index = -1;
    int m_ch2Index = -1;
};
