#pragma once

#include "SwitcherData/protocol.h"

#include <QByteArray>
#include <QString>
#include <functional>
#include <initializer_list>

class ElidedLabel;
class QLabel;
class QPushButton;
class QWidget;
class UnitControl;

// What the RVX5350's settings strip and the RVX5370's settings window have in common: keys whose
// green lamp flashes while they are pressed, keys that step a value round its cycle and tell the
// unit, the PIP size key that is dead while PIP is off, RESET, and the serial and address
// labels. Each of the two keeps its own named keys and is a thin layer over this.
class SettingKeys
{
public:
    static constexpr int KeyWaitMs = 200;
    static constexpr int FanWaitMs = 600;
    static constexpr int PipSizeCount = Protocol::PipSizeCount;

    // `owner` holds the keys; a press that frees it during the wait sends nothing.
    SettingKeys(QWidget *owner, UnitControl *model);

    UnitControl *link() const { return m_link; }

    static void lamp(QPushButton *key, bool lit);
    static void unlight(std::initializer_list<QPushButton *> keys);

    // Light, wait, unlight.
    void flash(QPushButton *key, int waitMs = KeyWaitMs) const;
    // Light, wait, move `index` one step round its cycle of `count`, hand the new index to
    // `act`, unlight.
    void step(QPushButton *key, int &index, int count, const std::function<void(int)> &act) const;
    // While locked the key is dead: it does not even flash. Otherwise a step of the size
    // cycle, announced and sent to the unit.
    void pressPipSize(QPushButton *key, const std::function<void(int)> &announce);
    void pressReset(QPushButton *key) const;

    // An index outside its cycle leaves `index` as it was.
    static void take(int &index, int count, int value);

    void setPipSize(int index) { take(m_pipSize, PipSizeCount, index); }
    int pipSize() const { return m_pipSize; }
    void setPipSizeUnlocked(bool unlocked) { m_pipSizeUnlocked = unlocked; }
    bool pipSizeUnlocked() const { return m_pipSizeUnlocked; }

    // "SN:" and each non-zero byte of the serial in lower-case hex, each followed by a blank.
    static QString serialText(const QByteArray &sn);
    // A long reply leaves room for a serial of about a thousand bytes, far more than the strip
    // can show: the label shows what fits and holds the whole serial in its tooltip.
    static void showSerial(ElidedLabel *label, const QByteArray &sn);
    static void showAddress(QLabel *label, const QString &ip);

private:
    QWidget *m_owner;
    UnitControl *m_link;
    int m_pipSize = 2;
    bool m_pipSizeUnlocked = false;
};
