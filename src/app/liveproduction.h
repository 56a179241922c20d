#pragma once

#include "SwitcherData/unitmodel.h"
#include "SwitcherData/unitstate.h"
#include "live/liveoptions.h"
#include "live/oscremote.h"

#include <QMap>
#include <QObject>
#include <QPointer>
#include <QTimer>
#include <memory>
#include <vector>

class MqttStation;
class NoReplyMark;
class SWITCHER_DATA;
class PanelRemote;
class TslTally;
class UnitLink;
class QWidget;

// KOVA in a live production: the OSC remote, the tally, MQTT, the followed state and the link
// watch of every open panel, each as the options turn it on. With every option off it makes nothing:
// no socket, no timer, no mark, so the program sends and shows what it does without it.
//
// Each open unit is served on its own: its own tally (screen and index offset from its
// number), its own OSC address space (/kova/unit/ID/...), its own watch and mark. The panel
// that had the focus last is also served as before on the unprefixed /kova/... addresses.
class LiveProduction : public QObject
{
    Q_OBJECT
public:
    explicit LiveProduction(const LiveOptions &options, QObject *parent = nullptr);
    ~LiveProduction() override;

    // Opens what the options ask for; false, with the reason, when the OSC port cannot be had.
    bool start(QString *error);
    bool isActive() const;

    // A panel of `kind` was opened on `link` for the unit of that child type, as open unit
    // `number` (from 1).
    void panelOpened(QWidget *panel, UnitLink *link, PanelKind kind, uint8_t childType, int number = 1);

    // The search whose table names the units on MQTT and tells whether their HIS board answered.
    void setSearch(const SWITCHER_DATA *search) { m_search = search; }

    OscRemote *osc() const { return m_osc; }
    MqttStation *station() const { return m_station; }
    // The tally of the focused unit (the only one when one panel is open), or nullptr.
    TslTally *tally() const;
    TslTally *tallyOf(int number) const;
    int unitCount() const { return int(m_units.size()); }

    // A unit's ID on the remote: its main-board address with dashes for dots.
    static QString unitId(const QString &address);

private:
    struct Unit;

    void unitGone(Unit *unit);
    void focus(Unit *unit);
    void showState(Unit *unit, const UnitState &state);
    void setAnswering(Unit *unit, bool answering);
    void publishFader(Unit *unit);
    void showBuses(Unit *unit, int pgm, int pvw);
    void updateTally(Unit *unit);
    void publish(Unit *unit, const OscFields &changed);
    void announceUnits();
    bool startMqtt(QString *error);
    void runCommand(const QString &id, const QString &text);
    QString searchedName(const QString &address, bool *hisKnown) const;
    void followAll();
    Unit *unitOf(const QObject *panel) const;
    OscFields fields(const UnitState &state, UnitState::FieldSet which) const;
    OscFields wholeState(const Unit *unit) const;
    bool eventFilter(QObject *watched, QEvent *event) override;

    LiveOptions m_options;
    OscRemote *m_osc = nullptr;
    MqttStation *m_station = nullptr;
    const SWITCHER_DATA *m_search = nullptr;
    // Each unit number's tally, made when a unit first has that number and kept after, so a
    // panel left and another opened go on with the same tally, as with one panel at a time.
    QMap<int, TslTally *> m_tallies;
    QTimer m_follow;
    std::vector<std::unique_ptr<Unit>> m_units;
    Unit *m_focused = nullptr;
};
