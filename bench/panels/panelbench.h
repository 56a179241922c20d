#pragma once

#include <QByteArray>
#include <QString>
#include <cstdint>
#include <memory>

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
    virtual ReportingLink *link() = 0;
    // Binds the unit A5 FF and its HIS board E0 FF and asks for the unit's state.
    virtual void bind(const QString &unitIp, const QString &hisIp) = 0;
    // The state record this unit sends: PGM `pgm`, PVW 2, transition rate `rate`, the rest at
    // rest, and no byte equal to the reply's separator.
    virtual QByteArray stateRecord(uint8_t pgm, uint8_t rate) const = 0;
    virtual bool pgmLit(int input) const = 0;
    virtual QPushButton *cutKey() const = 0;
    virtual QPushButton *ftbKey() const = 0;
    virtual QPushButton *autoKey() const = 0;
};

// The panels the benchmark knows, by the name given on the command line.
std::unique_ptr<PanelRig> makeRig(const QString &name);

// Loopback: the stand-in unit is a socket of this process (run inside tests/netns-run.sh).
int runLoopback(PanelRig &rig);
// Across the lab's veth pair: the stand-in unit is a copy of this program in the unit
// namespace (run as the command of lab/lab.sh).
int runLab(PanelRig &rig);
// That copy.
int runUnit(const char *mainIp, const char *hisIp, const char *operatorIp);
