#pragma once

#include "unitmodel.h"

#include <QByteArray>
#include <QHostAddress>
#include <QString>
#include <QStringList>

// The operator's actions on one unit, the same for every family: a caller presses "cut" or
// "programme 3" without knowing which code, target or range the unit's family uses. Each call
// sends what the family's panel sends for that key or list; a family that lacks the action, or
// a value outside what its panel offers, sends nothing and returns false.
class UnitControl
{
public:
    // The transition keys by id: MIX, FADE, then the four wipe directions.
    enum class Effect
    {
        Mix = 1,
        Fade,
        WipeUp,
        WipeDown,
        WipeLeft,
        WipeRight
    };
    enum class MenuKey
    {
        Up,
        Down,
        Enter
    };

    explicit UnitControl(Family family) : m_traits(&familyTraits(family)) {}
    virtual ~UnitControl() = default;

    // The RVX3410 speaks through the RVX3210 family's link, every 8000-series unit through the
    // RVX5ALL one; the family (the panel opened) decides which actions and ranges apply.
    void setFamily(Family family) { m_traits = &familyTraits(family); }
    const FamilyTraits &traits() const { return *m_traits; }
    bool can(UnitAction action) const { return m_traits->actions.has(action); }

    bool readState();
    bool programme(int input); // 1..inputs, or the bars (Protocol::BarInput) where the family has them
    bool preview(int input);
    bool cut();
    bool autoTransition();
    bool fader(int stroke, int travel); // stroke 0 or 1, travel as the family's T-bar gives it
    bool transition(Effect effect);
    bool rate(int key); // 1..Protocol::RateKeys
    bool ftb();
    bool still();
    bool format(int index); // position in Protocol::OutputFormats
    bool audioMode(bool mix);
    bool source(int channel, int index); // channel 1 or 2, position in the family's source list
    // The RVX3220 takes the channel's source with its level; the others ignore `sourceIndex`.
    bool level(int channel, int percent, int sourceIndex = -1);
    // The panels' audio faders: ch1 and ch2 0-127, ch3 always 0, the master as the family has it.
    bool levels(int ch1, int ch2, int ch3, int master);
    bool pip(bool on);
    bool pipSize(int index);
    bool pipPosition(bool horizontal, int pixels);
    bool pipBorder(bool on);
    bool pipBorderColor(int index);
    bool pipBorderWidth(int width);
    bool pop(bool on);
    bool popWindow(int window);
    bool popBorder(bool on);
    bool popBorderColor(int index);
    bool popBorderWidth(int width);
    bool popPosition(bool horizontal, int pixels);
    bool f2();
    bool mute();
    bool f7();
    bool bar(bool on);
    bool rec(bool on);
    bool pause();
    bool stream(bool on);
    bool rotate();
    // The arrows send their press and their release; the menu key its press alone.
    bool menu(MenuKey key, bool press);
    bool reset();
    // New addresses go out as typed; later commands follow the main board's new address.
    bool setAddress(const QString &ip);
    bool hisAddress(const QString &ip, const QString &mask, const QString &gateway);
    bool hisDns(const QString &dns);
    // The network page's reads: the HIS board's addresses, one streaming URL slot.
    bool readHis();
    bool readUrl(int slot);
    // Name and URL as the unit stores them; either may be empty.
    bool url(int slot, const QByteArray &name, const QByteArray &url);

    // 1..inputs, or the bars where the family has them.
    bool validInput(int input) const;

protected:
    // One checked action with its values, for the family to put on the wire.
    struct Call
    {
        Call(UnitAction act, int va = 0, int vb = 0, int vc = 0, int vd = 0)
            : action(act), a(va), b(vb), c(vc), d(vd)
        {}
        UnitAction action;
        int a;
        int b;
        int c;
        int d;
        QByteArray bytes[3];
        QStringList texts;
    };
    virtual void perform(const Call &call) = 0;

private:
    bool run(bool valid, const Call &call);

    const FamilyTraits *m_traits;
};
