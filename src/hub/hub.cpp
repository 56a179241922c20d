#include "hub.h"

#include "SwitcherData/unitlink.h"
#include "SwitcherData/workdata.h"
#include "hublog.h"
#include "hubunit.h"
#include "live/mqttclient.h"
#include "live/mqttstation.h"
#include "live/tsltally.h"

#include <QHostAddress>
#include <algorithm>

Q_LOGGING_CATEGORY(lcHub, "kova.hub", QtInfoMsg)

namespace {
// How often the search's table is looked at while replies may still come in (the HIS boards'
// replies announce nothing).
constexpr int TableTickMs = 250;
} // namespace

struct Hub::Held
{
    std::unique_ptr<HubUnit> unit;
    std::unique_ptr<TslTally> tally;
    int arrival = 0; // the order --all found it in
};

Hub::Hub(const HubOptions &options, QObject *parent) : QObject(parent), m_options(options)
{
    m_searchTimer.setSingleShot(true);
    connect(&m_searchTimer, &QTimer::timeout, this, &Hub::search);
    connect(&m_follow, &QTimer::timeout, this, &Hub::followAll);
}

Hub::~Hub()
{
    // The remote holds plain pointers to the units' targets.
    if (m_osc)
        for (const auto &h : m_units)
            m_osc->setUnitTarget(h->unit->id(), nullptr);
}

bool Hub::start(QString *error)
{
    if (m_options.live.oscPort) {
        m_osc = new OscRemote(this);
        if (!m_osc->listen(QHostAddress(m_options.live.oscBind), m_options.live.oscPort, error))
            return false;
        qCInfo(lcHub) << "OSC remote on" << m_options.live.oscBind << m_options.live.oscPort;
    }
    if (!m_options.live.mqttUrl.isEmpty()) {
        std::optional<MqttEndpoint> endpoint = MqttEndpoint::fromUrl(m_options.live.mqttUrl, error);
        if (!endpoint)
            return false;
        endpoint->caFile = m_options.live.mqttCa;
        if (!mqttPassword(m_options.live.mqttPasswordFile, &endpoint->password, error))
            return false;
        const QString station = m_options.live.stationName();
        m_station = new MqttStation(station, this);
        connect(m_station, &MqttStation::command, this, &Hub::command);
        if (!m_station->start(*endpoint, error))
            return false;
        qCInfo(lcHub) << "MQTT station" << station << "on" << endpoint->host << endpoint->port;
    }
    m_search = new SWITCHER_DATA(this);
    connect(m_search, &SWITCHER_DATA::sigend_datapack, this, &Hub::readTable);
    auto *tick = new QTimer(this);
    connect(tick, &QTimer::timeout, this, &Hub::readTable);
    tick->start(TableTickMs);
    m_follow.setInterval(m_options.live.followMs);
    announce();
    search();
    return true;
}

void Hub::stop()
{
    m_follow.stop();
    m_searchTimer.stop();
    if (m_station)
        m_station->stop();
}

void Hub::reconfigure(const HubOptions &options)
{
    const QStringList fixed = m_options.restartKeysChanged(options);
    if (!fixed.isEmpty())
        qCWarning(lcHub) << "changed, taken at the next start:" << fixed.join(QStringLiteral(", "));
    HubOptions next = options;
    next.live.oscPort = m_options.live.oscPort;
    next.live.oscBind = m_options.live.oscBind;
    next.live.mqttUrl = m_options.live.mqttUrl;
    next.live.mqttCa = m_options.live.mqttCa;
    next.live.mqttPasswordFile = m_options.live.mqttPasswordFile;
    next.live.station = m_options.live.station;
    m_options = next;

    for (size_t i = m_units.size(); i-- > 0;)
        if (!wanted(m_units[i]->unit->unitAddress()))
            drop(m_units[i].get());
    renumber();
    for (const auto &h : m_units)
        placeTally(h.get());
    m_follow.setInterval(m_options.live.followMs);
    if (m_options.live.followMs <= 0)
        m_follow.stop();
    else if (!m_units.empty() && !m_follow.isActive())
        m_follow.start();
    announce();
    qCInfo(lcHub) << "options read again:" << m_options.units.size() << "units named"
                  << (m_options.all ? "and all found" : "") << "; follow" << m_options.live.followMs << "ms";
    search();
}

bool Hub::wanted(const QString &address) const
{
    return m_options.all || m_options.units.contains(address);
}

void Hub::search()
{
    m_search->setSearcheQuipment();
    bool missing = false;
    for (const QString &address : qAsConst(m_options.units))
        missing = missing || !find(HubUnit::idOf(address));
    m_searchTimer.start(missing ? MissingSearchMs : SearchEveryMs);
}

void Hub::readTable()
{
    bool added = false;
    for (int i = 0; i < m_search->DevInfo_DATA_IDX(); ++i) {
        const DevInfo_DATA &rec = m_search->devices()[i];
        const QString address = SWITCHER_DATA::dottedIp(rec.ip);
        if (Held *held = find(HubUnit::idOf(address))) {
            held->unit->updateRecord(rec);
        } else if (rec.ip && wanted(address)) {
            take(rec);
            added = true;
        }
    }
    if (added) {
        renumber();
        announce();
    }
}

Hub::Held *Hub::find(const QString &id) const
{
    for (const auto &h : m_units)
        if (h->unit->id() == id)
            return h.get();
    return nullptr;
}

void Hub::take(const DevInfo_DATA &record)
{
    auto held = std::make_unique<Held>();
    Held *h = held.get();
    h->arrival = ++m_arrivals;
    h->unit = std::make_unique<HubUnit>(record, 0);
    HubUnit *unit = h->unit.get();
    m_units.push_back(std::move(held));
    qCInfo(lcHub) << "holding" << unit->modelName() << "at" << unit->unitAddress() << "as" << unit->id();
    if (!unit->link()->isBound())
        qCWarning(lcHub) << "UDP port" << UnitLink::Port << "is held by another program: unit" << unit->id()
                         << "cannot be reached";

    connect(unit, &HubUnit::stateChanged, this,
            [this, h](const OscFields &changed) { showState(h, changed); });
    connect(unit, &HubUnit::answeringChanged, this,
            [this, h](bool answering) { setAnswering(h, answering); });
    if (m_osc) {
        m_osc->setUnitTarget(unit->id(), unit);
        m_osc->setUnitState(unit->id(), unit->oscState());
    }
    if (m_station) {
        m_station->setLink(unit->id(), unit->answering());
        m_station->setState(unit->id(), unit->stateObject());
    }
    if (m_options.live.followMs > 0) {
        unit->follow();
        if (!m_follow.isActive())
            m_follow.start();
    }
}

void Hub::drop(Held *held)
{
    qCInfo(lcHub) << "no longer holding" << held->unit->id();
    if (m_osc)
        m_osc->setUnitTarget(held->unit->id(), nullptr);
    if (m_station)
        m_station->setLink(held->unit->id(), false);
    if (held->tally) {
        held->tally->setTally(0, 0);
        held->tally->setLive(false);
    }
    const auto at =
        std::find_if(m_units.begin(), m_units.end(), [held](const auto &h) { return h.get() == held; });
    m_units.erase(at);
}

void Hub::renumber()
{
    const auto rank = [this](const Held *h) {
        const int listed = int(m_options.units.indexOf(h->unit->unitAddress()));
        return listed >= 0 ? std::make_pair(0, listed) : std::make_pair(1, h->arrival);
    };
    std::sort(m_units.begin(), m_units.end(),
              [&rank](const auto &a, const auto &b) { return rank(a.get()) < rank(b.get()); });
    for (size_t i = 0; i < m_units.size(); ++i) {
        Held *h = m_units[i].get();
        const bool moved = h->unit->number() != int(i) + 1;
        h->unit->setNumber(int(i) + 1);
        if (moved || !h->tally)
            placeTally(h);
    }
}

void Hub::placeTally(Held *held)
{
    if (m_options.live.tslTargets.isEmpty()) {
        held->tally.reset();
        return;
    }
    QList<TslTarget> targets;
    for (const QString &text : qAsConst(m_options.live.tslTargets))
        if (const std::optional<TslTarget> t = TslTarget::fromText(text))
            targets << *t;
    if (!held->tally) {
        held->tally = std::make_unique<TslTally>();
        held->tally->setInputs(held->unit->inputLabels());
    }
    const int number = held->unit->number();
    held->tally->setPlace(number - 1,
                          m_options.live.tslOffsets.value(held->unit->unitAddress(), (number - 1) * 100));
    held->tally->setTargets(targets);
    updateTally(held);
}

void Hub::updateTally(Held *held)
{
    if (!held->tally)
        return;
    const HubUnit *unit = held->unit.get();
    const bool live = unit->answering();
    const bool hasPreview = unit->link()->can(UnitAction::Preview);
    held->tally->setTally(live ? unit->programme() : 0, live && hasPreview ? unit->preview() : 0);
    held->tally->setLive(live);
}

void Hub::showState(Held *held, const OscFields &changed)
{
    HubUnit *unit = held->unit.get();
    if (m_osc) {
        m_osc->setUnitState(unit->id(), unit->oscState());
        m_osc->publishUnit(unit->id(), changed);
    }
    if (m_station)
        m_station->setState(unit->id(), unit->stateObject());
    updateTally(held);
}

void Hub::setAnswering(Held *held, bool answering)
{
    HubUnit *unit = held->unit.get();
    if (answering)
        qCInfo(lcHub) << "unit" << unit->id() << "answers again";
    else
        qCWarning(lcHub) << "unit" << unit->id() << "does not answer";
    if (m_osc) {
        m_osc->setUnitState(unit->id(), unit->oscState());
        m_osc->publishUnit(unit->id(), {{QStringLiteral("link"), answering ? 1 : 0}});
    }
    if (m_station) {
        m_station->setLink(unit->id(), answering);
        if (answering)
            m_station->setState(unit->id(), unit->stateObject());
    }
    updateTally(held);
}

void Hub::followAll()
{
    bool any = false;
    for (const auto &h : m_units)
        any = h->unit->follow() || any;
    if (!any)
        m_follow.stop();
}

void Hub::announce()
{
    if (m_osc) {
        QVector<OscRemote::UnitEntry> entries;
        for (const auto &h : m_units)
            entries.append({h->unit->number(), h->unit->id(), h->unit->modelName()});
        m_osc->setUnits(entries);
    }
    if (m_station) {
        QVector<MqttStation::Unit> units;
        for (const auto &h : m_units)
            units.append({h->unit->id(), h->unit->modelName(), h->unit->unitAddress(), h->unit->name()});
        m_station->setUnits(units);
    }
}

void Hub::command(const QString &id, const QString &text)
{
    Held *held = find(id);
    const QString reason = held ? held->unit->run(text) : QStringLiteral("no such unit");
    if (reason.isEmpty())
        return;
    qCInfo(lcHub) << "command for" << id << "refused:" << text << "-" << reason;
    if (m_station)
        m_station->refuse(id, text, reason);
}
