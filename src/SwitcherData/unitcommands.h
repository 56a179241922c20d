#pragma once

#include "unitmodel.h"

#include <QString>
#include <QStringList>
#include <functional>

class UnitControl;

// One operator action by name, checked against a family before anything is sent: the same
// action the family's panel sends for that key or list.
class CommandCall
{
public:
    enum class Verdict
    {
        Ok,
        Unknown,  // no command of that name in any family
        BadUsage, // malformed arguments, or arguments no family takes
        NotHere,  // the family lacks the command or the argument
    };

    // Checks `name args` for `family`. With Ok, run() sends it.
    static CommandCall check(const QString &name, const QStringList &args, Family family);
    // The same for one line of words as kovactl takes them after the address ("pgm 3", "cut"),
    // as MQTT and the hub's remote receive them.
    static CommandCall checkLine(const QString &line, Family family);
    // Checks and runs one line for `unit` (its family decides): an empty text when it went
    // out, else why nothing was sent. `hisKnown` tells whether the unit's HIS board has been
    // found, which the commands for that board need.
    static QString runLine(UnitControl &unit, const QString &line, bool hisKnown);
    // Checks `name args` against every family: Ok when at least one takes it, so a call that
    // no unit could take is refused before anything goes on the wire.
    static CommandCall checkAnyFamily(const QString &name, const QStringList &args);

    Verdict verdict() const { return m_verdict; }
    QString message() const { return m_message; }
    // The command goes to the HIS board, whose address the search must have found.
    bool needsHisBoard() const { return m_needsHis; }
    // Sends it through the unit's link; false when the link refused it after all.
    bool run(UnitControl &unit) const;

    // One line per command: "name ARGS  - what it does [families]", for --help and the manual.
    static QStringList listing();

private:
    friend struct CallBuilder;
    Verdict m_verdict = Verdict::Unknown;
    QString m_message;
    bool m_needsHis = false;
    std::function<bool(UnitControl &)> m_action;
};
