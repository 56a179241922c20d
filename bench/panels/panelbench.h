#pragma once

#include <QByteArray>
#include <QString>
#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

class QAbstractButton;
class QPushButton;
class QWidget;
class ReportingLink;

// What the benchmark needs of one panel: the panel itself, bound to a unit, its link, the
// keys it clicks, how the unit reports its state to it and how a lit PGM key looks. Everything
// else (the stand-in unit, the clocks, the runs and the CPU figures) is shared.
class PanelRig
{
public:
    virtual ~PanelRig() = default;

    virtual QWidget *panel() = 0;
    // The link that reports the unit's state; null for a panel whose unit reports none.
    virtual ReportingLink *link() = 0;
    virtual bool reportsState() const { return true; }
    // Binds the unit A5 FF and its HIS board E0 FF and asks for the unit's state.
    virtual void bind(const QString &unitIp, const QString &hisIp) = 0;
    // The state record this unit sends: PGM `pgm`, PVW 2, transition rate `rate`, the rest at
    // rest, and no byte equal to the reply's separator.
    virtual QByteArray stateRecord(uint8_t pgm, uint8_t rate) const = 0;
    // The two inputs a moving reply or key press puts on air in turn (two keys restyle).
    virtual std::pair<int, int> movingInputs() const { return {3, 4}; }
    virtual bool pgmLit(int input) const = 0;
    // How long the bound panel is left alone before the runs (the RVX3410 asks for the state
    // once more a while after it opens).
    virtual int settleMs() const { return 200; }
    virtual QAbstractButton *pgmKey(int input) const = 0;
    // Null where the panel has no such key.
    virtual QPushButton *cutKey() const = 0;
    virtual QPushButton *ftbKey() const = 0;
    virtual QPushButton *autoKey() const = 0;
};

// The panels the benchmark knows, by the name given on the command line.
std::unique_ptr<PanelRig> makeRig(const QString &name);

// Loopback: the stand-in unit is a socket of this process (run inside tests/netns-run.sh).
// `restyleOnly` runs only the paths that restyle keys, without the CPU figures.
int runLoopback(PanelRig &rig, bool restyleOnly);
// Across the lab's veth pair: the stand-in unit is a copy of this program in the unit
// namespace (run as the command of lab/lab.sh).
int runLab(PanelRig &rig);
// That copy.
int runUnit(const char *mainIp, const char *hisIp, const char *operatorIp);

// Qt's own cost of what a moving reply asks of a panel, with no panel around it: two bare keys
// in a plain window, one put out and the other lit, by the very sheets a panel swaps. No
// panel can restyle its two keys faster than this while its lamps are new style sheets.
struct SheetPair
{
    const char *what;
    QString unlit;
    QString lit;
};
int runFloor(const std::vector<SheetPair> &pairs);
