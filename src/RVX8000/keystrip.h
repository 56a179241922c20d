#pragma once

#include <QString>
#include <QWidget>

class QLabel;
class QPushButton;

// What the RVX5370's F1 strip and the RVX5350's settings strip share: six keys that only flash
// when pressed (they tell the unit nothing) and the unit's address.
class KeyStrip : public QWidget
{
    Q_OBJECT
public:
    static constexpr int KeyWaitMs = 200;

    // Keys and lamps: plain members, not slots, so the form's name-based hookup does not
    // connect a key a second time beside the typed connections.
    void on_btn_disk_clicked() { flash(m_keys.disk); }
    void on_btn_leuel_clicked() { flash(m_keys.leuel); }
    void on_btn_rate_add_clicked() { flash(m_keys.rateAdd); }
    void on_btn_rate_sub_clicked() { flash(m_keys.rateSub); }
    void on_btn_addr_add_clicked() { flash(m_keys.addrAdd); }
    void on_btn_addr_sub_clicked() { flash(m_keys.addrSub); }
    void my_Style_btnDisk(bool lit) { lamp(m_keys.disk, lit); }
    void my_Style_btnLeuel(bool lit) { lamp(m_keys.leuel, lit); }
    void my_Style_btnRateADD(bool lit) { lamp(m_keys.rateAdd, lit); }
    void my_Style_btnRateSUB(bool lit) { lamp(m_keys.rateSub, lit); }
    void my_Style_btnAddrADD(bool lit) { lamp(m_keys.addrAdd, lit); }
    void my_Style_btnAddrSUB(bool lit) { lamp(m_keys.addrSub, lit); }

    static void lamp(QPushButton *key, bool lit);

public slots:
    // "IP:" and the unit's address.
    void getDevIP(QString ip);

protected:
    struct Keys
    {
        QPushButton *disk;
        QPushButton *leuel;
        QPushButton *rateAdd;
        QPushButton *rateSub;
        QPushButton *addrAdd;
        QPushButton *addrSub;
        QLabel *address;
    };

    using QWidget::QWidget;
    // Unlights and wires the keys of a built form.
    void initStrip(const Keys &keys);
    // Light, wait, unlight; a strip freed during the wait is left alone.
    void flash(QPushButton *key, int waitMs = KeyWaitMs);

private:
    Keys m_keys{};
};
