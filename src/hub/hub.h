#pragma once

#include "huboptions.h"
#include "live/oscremote.h"

#include <QHash>
#include <QObject>
#include <QTimer>
#include <memory>
#include <vector>

class HubUnit;
class MqttStation;
class SWITCHER_DATA;
class TslTally;
struct DevInfo_DATA;

// kova-hub: the links to the units it is told to hold, followed and watched, served by OSC
// (each unit under /kova/unit/ID/...), by tally (one screen per unit) and by MQTT (a station's
// topics). Nothing here needs a display.
//
// Units are numbered from 1: those named by --unit in their order, then those --all finds, in
// the order the search found them. A unit's number gives its tally screen (number - 1) and its
// display index offset ((number - 1) * 100 unless --tsl-offset names one).
class Hub : public QObject
{
    Q_OBJECT
public:
    static constexpr int SearchEveryMs = 30000;
    // A unit named by --unit and not found yet is looked for this often instead.
    static constexpr int MissingSearchMs = 5000;

    explicit Hub(const HubOptions &options, QObject *parent = nullptr);
    ~Hub() override;

    // Opens the OSC port and connects to the broker as the options ask, and starts the first
    // search; false, with the reason, when a socket or the broker settings cannot work.
    bool start(QString *error);
    // New options (the file read again): the units, the follow interval and the tally are
    // taken at once; the OSC and broker settings keep their first values until a restart.
    void reconfigure(const HubOptions &options);
    // Tells the broker the station is going offline and lets go of it.
    void stop();

    const HubOptions &options() const { return m_options; }
    OscRemote *osc() const { return m_osc; }
    int unitCount() const { return int(m_units.size()); }

private:
    struct Held;

    void search();
    void readTable();
    bool wanted(const QString &address) const;
    void take(const DevInfo_DATA &record);
    void drop(Held *held);
    void renumber();
    void placeTally(Held *held);
    void showState(Held *held, const OscFields &changed);
    void setAnswering(Held *held, bool answering);
    void updateTally(Held *held);
    void followAll();
    void announce();
    void command(const QString &id, const QString &text);
    Held *find(const QString &id) const;

    HubOptions m_options;
    SWITCHER_DATA *m_search = nullptr;
    QTimer m_searchTimer;
    QTimer m_follow;
    OscRemote *m_osc = nullptr;
    MqttStation *m_station = nullptr;
    std::vector<std::unique_ptr<Held>> m_units;
    int m_arrivals = 0;
};
