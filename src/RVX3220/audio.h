#pragma once

#include <QWidget>

class QButtonGroup;
class QComboBox;
class QLabel;
class QSpinBox;
class UnitControl;

// Audio pane: a source and a volume per channel, the audio mode and the output format.
class AUDIO : public QWidget
{
    Q_OBJECT
public:
    AUDIO(QWidget *parent, UnitControl *link);

    QComboBox *ch1Source() const { return m_ch1; }
    QComboBox *ch2Source() const { return m_ch2; }
    QSpinBox *ch1Volume() const { return m_ch1Vol; }
    QSpinBox *ch2Volume() const { return m_ch2Vol; }
    QComboBox *pgmOut() const { return m_pgmOut; }
    QButtonGroup *modeGroup() const { return m_modeGroup; }
    QLabel *modeCaption() const { return m_mode; }

    void setStyle(int id);

public slots:
    void setboxch1(int index);
    void setboxch2(int index);
    void setboxch1_vol(int v);
    void setboxch2_vol(int v);
    void setboxPGM_OUT(int index);
    void on_btnGrp_clicked(int id);

private:
    void warnNoSource();

    UnitControl *m_link;
    QComboBox *m_ch1;
    QComboBox *m_ch2;
    QSpinBox *m_ch1Vol;
    QSpinBox *m_ch2Vol;
    QComboBox *m_pgmOut;
    QButtonGroup *m_modeGroup;
    QLabel *m_mode;
    int m_ch1Index = -1;
    int m_ch2Index = -1;
};
