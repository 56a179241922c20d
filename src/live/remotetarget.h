#pragma once

#include <QString>
#include <QStringList>
#include <optional>

// What a remote drives: the open panel. Every call acts through the panel's own keys, so a
// remote command sends the same datagrams, lights the same lamps and waits the same waits as
// the operator's click.
//
// Keys go by stable names: "cut", "auto", "pgm1".."pgmN", "pvw1".."pvwN", "ftb", "mix", "fade",
// "wipe", "pip", "pop", "still", "mute", "rec", "stream", and whatever other keys the panel has
// (lower case, as the key reads). A panel lists only the keys it has.
class RemoteTarget
{
public:
    virtual ~RemoteTarget() = default;

    virtual QString modelName() const = 0;
    virtual QString unitAddress() const = 0; // dotted IPv4 text
    virtual int inputCount() const = 0;      // places in the PGM and PVW rows
    virtual QStringList keyNames() const = 0;
    virtual bool hasKey(const QString &name) const { return keyNames().contains(name); }
    // Clicks the key; false when the panel has no such key or refuses the click.
    virtual bool pressKey(const QString &name) = 0;
    // The key's lamp, or nothing for a key that has none.
    virtual std::optional<bool> keyLit(const QString &name) const = 0;
    // Moves the T-bar to `f` (0 = top, 1 = bottom of its travel).
    virtual bool setFader(double f) = 0;
    // Asks the unit for its state; false when the family cannot be asked.
    virtual bool requestState() = 0;
};
