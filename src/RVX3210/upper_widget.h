#pragma once

#include "common/lampkey.h"

#include <QWidget>

class QPushButton;
class QTimer;
class UnitControl;

// Top row of the RVX3210 panel's central column: FTB, F1 (output format), F2, F3, F7,
// read-state, close and return.
class Upper_Widget : public QWidget
{
    Q_OBJECT
public:
    Upper_Widget(QWidget *parent, UnitControl *link);

    void set_FTB_Style(uint8_t s);
    void set_F1_Style(uint8_t code);
    void set_F3_Style(uint8_t s);

    bool ftbOn() const { return m_ftbOn; }
    bool ftbPhase() const { return m_ftbPhase; }
    bool f3On() const;
    bool f7On() const;
    int outputFormatIndex() const { return m_outIndex; }
    const QTimer *blinkTimer() const { return m_blink; }

    QPushButton *btnFTB() const { return m_btnFTB; }
    QPushButton *btnF1() const { return m_btnF1; }
    QPushButton *btnF2() const { return m_btnF2; }
    LampKey *btnF3() const { return m_btnF3; }
    LampKey *btnF7() const { return m_btnF7; }
    QPushButton *btnRead() const { return m_btnRead; }
    // Null in a row that has no close key (the RVX3410's).
    QPushButton *btnClose() const { return m_btnClose; }
    QPushButton *btnReturn() const { return m_btnReturn; }

signals:
    void on_Singnals_returnloginwin();

public slots:
    void on_btnclicked_FTB();
    void on_btnclicked_F1();
    void on_btnclicked_F2();
    void on_btnclicked_F3();
    void on_btnclicked_F7();
    virtual void on_btnclicked_Read3210data();
    void on_btnclicked_close();
    void on_btnclicked_retrun();
    void on_timerour_FTB();
    void on_coboxIndexChanged_PGMOUT(int index);

    void on_Style_btnFTB(bool on);
    void on_Style_btnF1(bool on);
    void on_Style_btnF2(bool on);
    void on_Style_btnF3(bool on);
    void on_Style_btnF7(bool on);

protected:
    // For a row laid out by a derived class: the shared keys are made and wired, there is no
    // close key and no layout.
    struct KeysOnly
    {
    };
    Upper_Widget(QWidget *parent, UnitControl *link, KeysOnly);

    UnitControl *link() const { return m_link; }
    QTimer *ftbBlinkTimer() const { return m_blink; }
    QPushButton *makeKey(const char *style);
    LampKey *makeLampKey(const char *lit, const char *unlit);

private:
    UnitControl *m_link = nullptr;
    QPushButton *m_btnFTB = nullptr;
    QPushButton *m_btnF1 = nullptr;
    QPushButton *m_btnF2 = nullptr;
    LampKey *m_btnF3 = nullptr;
    LampKey *m_btnF7 = nullptr;
    QPushButton *m_btnRead = nullptr;
    QPushButton *m_btnClose = nullptr;
    QPushButton *m_btnReturn = nullptr;
    QTimer *m_blink = nullptr;
    bool m_ftbOn = false;
    bool m_ftbPhase = false;
    int m_outIndex = -1;
};
