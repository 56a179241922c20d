#pragma once

#include <QObject>

class LampKey;
class UnitControl;

// The inset keys of the 8000-series panels: PIP, KEY (not on the RVX5350) and POP (F2 on the
// RVX5310). A press flips its own key, lit green while on, and puts out the other keys' lamps;
// PIP and POP tell the unit, KEY only lights. On the RVX5310 the others stay on beneath their
// dark lamps, so PIP, F2, PIP ends with PIP off. Where POP is exclusive (RVX5370, RVX5350), POP
// and the others end each other, so PIP, POP, PIP turns PIP on again.
class InsetKeys : public QObject
{
    Q_OBJECT
public:
    enum class Pop
    {
        Beside,
        Exclusive
    };

    // `key` may be null.
    InsetKeys(LampKey *pip, LampKey *key, LampKey *pop, Pop popRule, UnitControl *link, QObject *parent);

    // Set while an inset covers the picture: the state of the key pressed last.
    bool overlay() const { return m_overlay; }
    bool pipOn() const;
    // The unit's PIP byte, taken as a press of PIP to that state that tells the unit nothing;
    // off while PIP is already off changes nothing.
    void showPip(bool on);

signals:
    void overlayChanged(bool on);
    void pipChanged(bool on);

private:
    void press(LampKey *pressed);
    void settle(LampKey *pressed, bool on);

    LampKey *m_pip;
    LampKey *m_key;
    LampKey *m_pop;
    Pop m_popRule;
    UnitControl *m_link;
    bool m_overlay = false;
};
