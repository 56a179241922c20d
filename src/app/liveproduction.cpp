#include "liveproduction.h"

#include "RVX3220/busrow.h"
#include "RVX3220/pgm.h"
#include "RVX3220/pvw.h"
#include "RVX3220/rvx3220ui.h"
#include "SwitcherData/reportinglink.h"
#include "SwitcherData/statefields.h"
#include "SwitcherData/unitcommands.h"
#include "SwitcherData/unitlink.h"
#include "SwitcherData/workdata.h"
#include "common/noreplymark.h"
#include "common/panelkeys.h"
#include "live/mqttclient.h"
#include "live/mqttstation.h"
#include "live/oscfields.h"
#include "live/tsltally.h"
#include "panelremote.h"
#include "remotekeys.h"

#include <QAbstractSlider>
#include <QEvent>
#include <QHostAddress>
#include <QJsonObject>
#include <QLoggingCategory>
#include <QWidget>
#include <algorithm>
#include <cstring>

Q_LOGGING_CATEGORY(lcLive, "kova.live")

// One open unit as the live features serve it.
struct LiveProduction::Unit
{
    int number = 1;
    QString id;
    QPointer<QWidget> panel;
    QPointer<UnitLink> link;
    std::unique_ptr<PanelRemote> remote;
    QPointer<NoReplyMark> mark;
    QList<QMetaObject::Connection> connections;
    UnitState state;
    // A unit that reports no state (the RVX3220): the buses as its panel shows them.
    int shownPgm = 0;
    int shownPvw = 0;
    bool answering = true;
    bool hasPreview = false;
    // False once its family turned down a state request: it is not polled again.
    bool followed = true;
};

LiveProduction::LiveProduction(const LiveOptions &options, QObject *parent)
    : QObject(parent), m_options(options)
{
    m_follow.setInterval(m_options.followMs);
    connect(&m_follow, &QTimer::timeout, this, &LiveProduction::followAll);
}

LiveProduction::~LiveProduction()
{
    // A clean end: "offline" now, not the broker's will later.
    if (m_station)
        m_station->stop();
    if (m_osc)
        m_osc->setTarget(nullptr);
    for (const auto &u : m_units)
        for (const QMetaObject::Connection &c : qAsConst(u->connections))
            disconnect(c);
}

QString LiveProduction::unitId(const QString &address)
{
    QString id = address;
    return id.replace(QLatin1Char('.'), QLatin1Char('-'));
}

bool LiveProduction::isActive() const
{
    return m_options.oscPort != 0 || !m_options.tslTargets.isEmpty() || m_options.followMs > 0 ||
           !m_options.mqttUrl.isEmpty();
}

TslTally *LiveProduction::tally() const
{
    return tallyOf(m_focused ? m_focused->number : 1);
}

TslTally *LiveProduction::tallyOf(int number) const
{
    return m_tallies.value(number);
}

bool LiveProduction::start(QString *error)
{
    if (m_options.oscPort) {
        m_osc = new OscRemote(this);
        if (!m_osc->listen(QHostAddress(m_options.oscBind), m_options.oscPort, error))
            return false;
        m_osc->setWholeState(wholeState(nullptr));
        qCInfo(lcLive) << "OSC remote on" << m_options.oscBind << m_options.oscPort;
    }
    if (!m_options.tslTargets.isEmpty()) {
        QList<TslTarget> targets;
        for (const QString &text : m_options.tslTargets) {
            if (const std::optional<TslTarget> t = TslTarget::fromText(text))
                targets << *t;
        }
        auto *first = new TslTally(this);
        first->setTargets(targets);
        m_tallies.insert(1, first);
    }
    return m_options.mqttUrl.isEmpty() || startMqtt(error);
}

bool LiveProduction::startMqtt(QString *error)
{
    QString why;
    std::optional<MqttEndpoint> endpoint = MqttEndpoint::fromUrl(m_options.mqttUrl, &why);
    if (endpoint) {
        endpoint->caFile = m_options.mqttCa;
        if (!mqttPassword(m_options.mqttPasswordFile, &endpoint->password, &why))
            endpoint.reset();
    }
    m_station = new MqttStation(m_options.stationName(), this);
    if (!endpoint || !m_station->start(*endpoint, &why)) {
        if (error)
            *error = QStringLiteral("MQTT: %1").arg(why);
        return false;
    }
    connect(m_station, &MqttStation::command, this, &LiveProduction::runCommand);
    qCInfo(lcLive) << "MQTT station" << m_options.stationName() << "on" << endpoint->host << endpoint->port;
    return true;
}

QString LiveProduction::searchedName(const QString &address, bool *hisKnown) const
{
    const quint32 ip = QHostAddress(address).toIPv4Address();
    if (m_search) {
        for (int i = 0; i < m_search->DevInfo_DATA_IDX(); ++i) {
            const DevInfo_DATA &rec = m_search->devices()[i];
            if (rec.ip != ip)
                continue;
            if (hisKnown)
                *hisKnown = rec.ip2 != 0;
            return QString::fromLatin1(rec.name, int(strnlen(rec.name, sizeof rec.name))).trimmed();
        }
    }
    if (hisKnown)
        *hisKnown = false;
    return QString();
}

// A command from the broker, in kovactl's words. Checked first, so a refused one sends nothing;
// a command that is one of the panel's keys presses that key, as the OSC remote does, so the
// panel lights as for a click; the rest go to the unit's link.
void LiveProduction::runCommand(const QString &id, const QString &text)
{
    const auto at =
        std::find_if(m_units.begin(), m_units.end(), [&id](const auto &u) { return u->id == id; });
    Unit *unit = at == m_units.end() ? nullptr : at->get();
    if (!unit || !unit->link) {
        m_station->refuse(id, text, QStringLiteral("no unit %1 is open here").arg(id));
        return;
    }
    const CommandCall call = CommandCall::checkLine(text, unit->link->traits().family);
    if (call.verdict() != CommandCall::Verdict::Ok) {
        m_station->refuse(id, text, call.message());
        return;
    }
    const QStringList words = text.simplified().toLower().split(QLatin1Char(' '));
    QString key;
    if (words.size() == 1)
        key = words.first(); // cut, auto, ftb, still, f2, f3, f7, ...
    else if (words.size() == 2 &&
             (words.first() == QLatin1String("pgm") || words.first() == QLatin1String("pvw") ||
              words.first() == QLatin1String("rate")))
        key = words.first() + words.at(1);
    else if (words.size() == 2 && words.first() == QLatin1String("transition"))
        key = words.at(1);
    if (!key.isEmpty() && unit->remote && unit->remote->hasKey(key)) {
        if (!unit->remote->pressKey(key))
            m_station->refuse(id, text, QStringLiteral("the panel refused it"));
        return;
    }
    bool hisKnown = false;
    searchedName(unit->link->unit().text(), &hisKnown);
    const QString why = CommandCall::runLine(*unit->link, text, hisKnown);
    if (!why.isEmpty())
        m_station->refuse(id, text, why);
}

void LiveProduction::panelOpened(QWidget *panel, UnitLink *link, PanelKind kind, uint8_t childType,
                                 int number)
{
    if (!isActive() || !panel || !link)
        return;
    // A unit of the same number (one panel at a time: the panel before) is gone.
    for (const auto &u : m_units)
        if (u->number == number || u->panel == panel) {
            unitGone(u.get());
            break;
        }
    nameRemoteKeys(kind, panel);
    auto owned = std::make_unique<Unit>();
    Unit *unit = owned.get();
    unit->number = number;
    m_units.push_back(std::move(owned));
    std::sort(m_units.begin(), m_units.end(),
              [](const auto &a, const auto &b) { return a->number < b->number; });
    unit->id = unitId(link->unit().text());
    unit->panel = panel;
    unit->link = link;
    unit->remote = std::make_unique<PanelRemote>(panel, link, UnitModels::modelName(childType));
    const PanelKeys *keys = PanelKeys::of(panel);
    unit->hasPreview = keys && keys->key(QStringLiteral("pvw1"));
    panel->installEventFilter(this);
    // Hidden first where a panel is left; gone at once where a panel is simply deleted.
    unit->connections << connect(panel, &QObject::destroyed, this, [this, unit] { unitGone(unit); });

    if (auto *reporting = qobject_cast<ReportingLink *>(link)) {
        unit->connections << connect(reporting, &ReportingLink::stateReported, this,
                                     [this, unit](const UnitState &state) { showState(unit, state); });
        unit->connections << connect(reporting->watch(), &LinkWatch::answeringChanged, this,
                                     [this, unit](bool answering) { setAnswering(unit, answering); });
        unit->mark = new NoReplyMark(panel);
        unit->answering = reporting->watch()->isAnswering();
        unit->mark->setAnswering(unit->answering);
    }
    if (kind == PanelKind::Rvx3220) {
        // Its unit reports nothing: tally and subscribers follow the buses the panel shows.
        auto *p = static_cast<RVX3220UI *>(panel);
        unit->connections << connect(p->pgm(), &BusRow::litChanged, this,
                                     [this, unit](quint8 input) { showBuses(unit, input, unit->shownPvw); });
        unit->connections << connect(p->pvw(), &BusRow::litChanged, this,
                                     [this, unit](quint8 input) { showBuses(unit, unit->shownPgm, input); });
        unit->shownPgm = p->pgm()->litInput();
        unit->shownPvw = p->pvw()->litInput();
    }
    if (keys && keys->fader())
        unit->connections << connect(keys->fader(), &QAbstractSlider::valueChanged, this,
                                     [this, unit] { publishFader(unit); });

    if (!m_tallies.isEmpty()) {
        TslTally *tally = m_tallies.value(number);
        if (!tally) {
            tally = new TslTally(this);
            tally->setTargets(m_tallies.first()->targets());
            m_tallies.insert(number, tally);
        }
        const QString address = link->unit().text();
        tally->setPlace(number - 1, m_options.tslOffsets.value(address, (number - 1) * 100));
        tally->setInputs(unit->remote->inputLabels());
    }
    if (m_osc) {
        m_osc->setUnitTarget(unit->id, unit->remote.get());
        m_osc->setUnitState(unit->id, wholeState(unit));
        m_osc->publishUnit(unit->id, wholeState(unit));
    }
    if (m_station) {
        m_station->setLink(unit->id, unit->answering);
        if (!unit->state.fields().none())
            m_station->setState(unit->id, stateJson(unit->state));
    }
    announceUnits();
    // A panel just opened has the operator's attention.
    focus(unit);
    updateTally(unit);
    if (m_options.followMs > 0 && !m_follow.isActive())
        m_follow.start();
}

LiveProduction::Unit *LiveProduction::unitOf(const QObject *panel) const
{
    for (const auto &u : m_units)
        if (u->panel == panel)
            return u.get();
    return nullptr;
}

void LiveProduction::unitGone(Unit *unit)
{
    for (const QMetaObject::Connection &c : qAsConst(unit->connections))
        disconnect(c);
    unit->connections.clear();
    if (unit->panel)
        unit->panel->removeEventFilter(this);
    delete unit->mark;
    if (m_osc)
        m_osc->setUnitTarget(unit->id, nullptr);
    if (TslTally *tally = m_tallies.value(unit->number)) {
        // Dark, with the labels still sent, as with no panel open.
        tally->setTally(0, 0);
        tally->setLive(false);
    }
    const bool wasFocused = m_focused == unit;
    const auto at =
        std::find_if(m_units.begin(), m_units.end(), [unit](const auto &u) { return u.get() == unit; });
    std::unique_ptr<Unit> gone = std::move(*at);
    m_units.erase(at);
    if (wasFocused) {
        m_focused = nullptr;
        if (m_osc) {
            m_osc->setTarget(nullptr);
            m_osc->setWholeState(wholeState(nullptr));
            m_osc->publish({{QStringLiteral("link"), 0}});
        }
        // The unit opened last of those left has the operator's attention now.
        if (!m_units.empty())
            focus(m_units.back().get());
    }
    announceUnits();
    if (m_units.empty())
        m_follow.stop();
}

void LiveProduction::focus(Unit *unit)
{
    if (m_focused == unit)
        return;
    m_focused = unit;
    if (m_osc) {
        m_osc->setTarget(unit->remote.get());
        m_osc->setWholeState(wholeState(unit));
        m_osc->publish(wholeState(unit));
    }
}

void LiveProduction::announceUnits()
{
    QVector<OscRemote::UnitEntry> units;
    QVector<MqttStation::Unit> held;
    for (const auto &u : m_units) {
        units.append({u->number, u->id, u->remote->modelName()});
        const QString address = u->remote->unitAddress();
        held.append({u->id, u->remote->modelName(), address, searchedName(address, nullptr)});
    }
    if (m_osc)
        m_osc->setUnits(units);
    if (m_station)
        m_station->setUnits(held);
}

void LiveProduction::followAll()
{
    bool any = false;
    for (const auto &u : m_units) {
        // A family that cannot be asked for its state is not polled.
        if (u->followed && u->link)
            u->followed = u->link->readState();
        any = any || u->followed;
    }
    if (!any)
        m_follow.stop();
}

bool LiveProduction::eventFilter(QObject *watched, QEvent *event)
{
    if (Unit *unit = unitOf(watched)) {
        // A panel left is hidden or closed by the program; one the window system hides
        // (minimised) is still open.
        if ((event->type() == QEvent::Hide && !event->spontaneous()) || event->type() == QEvent::Close)
            unitGone(unit);
        else if (event->type() == QEvent::WindowActivate)
            focus(unit);
    }
    return QObject::eventFilter(watched, event);
}

void LiveProduction::publish(Unit *unit, const OscFields &changed)
{
    if (!m_osc || changed.isEmpty())
        return;
    m_osc->publishUnit(unit->id, changed);
    if (unit == m_focused)
        m_osc->publish(changed);
}

void LiveProduction::showState(Unit *unit, const UnitState &state)
{
    const UnitState::FieldSet changed = state.changedFrom(unit->state);
    unit->state = state;
    if (m_osc) {
        m_osc->setUnitState(unit->id, wholeState(unit));
        if (unit == m_focused)
            m_osc->setWholeState(wholeState(unit));
        if (changed.any())
            publish(unit, fields(state, changed));
        if (unit == m_focused)
            m_osc->stateArrived();
    }
    if (m_station)
        m_station->setState(unit->id, stateJson(state));
    updateTally(unit);
}

void LiveProduction::setAnswering(Unit *unit, bool answering)
{
    unit->answering = answering;
    if (unit->mark)
        unit->mark->setAnswering(answering);
    if (m_osc) {
        if (unit == m_focused)
            m_osc->setWholeState(wholeState(unit));
        publish(unit, {{QStringLiteral("link"), answering ? 1 : 0}});
    }
    if (m_station)
        m_station->setLink(unit->id, answering);
    updateTally(unit);
}

void LiveProduction::showBuses(Unit *unit, int pgm, int pvw)
{
    OscFields changed;
    if (pgm != unit->shownPgm)
        changed.append({QStringLiteral("pgm"), pgm});
    if (pvw != unit->shownPvw)
        changed.append({QStringLiteral("pvw"), pvw});
    unit->shownPgm = pgm;
    unit->shownPvw = pvw;
    publish(unit, changed);
    // A unit that reports nothing is, on the broker, what its panel shows.
    if (m_station && !changed.isEmpty())
        m_station->setState(unit->id,
                            QJsonObject{{QStringLiteral("pgm"), pgm}, {QStringLiteral("pvw"), pvw}});
    updateTally(unit);
}

void LiveProduction::publishFader(Unit *unit)
{
    if (unit->remote)
        publish(unit, {{QStringLiteral("fader"), unit->remote->faderPosition()}});
}

void LiveProduction::updateTally(Unit *unit)
{
    TslTally *tally = m_tallies.value(unit->number);
    if (!tally)
        return;
    const bool live = unit->panel && unit->answering;
    const int pgm = unit->state.has(UnitState::Pgm) ? unit->state.pgm() : unit->shownPgm;
    const int pvw = unit->state.has(UnitState::Pvw) ? unit->state.pvw() : unit->shownPvw;
    tally->setTally(live ? pgm : 0, live && unit->hasPreview ? pvw : 0);
    tally->setLive(live);
}

OscFields LiveProduction::fields(const UnitState &state, UnitState::FieldSet which) const
{
    return oscStateFields(state, which);
}

OscFields LiveProduction::wholeState(const Unit *unit) const
{
    OscFields out;
    const PanelRemote *remote = unit ? unit->remote.get() : nullptr;
    out.append({QStringLiteral("model"), remote ? remote->modelName() : QString()});
    out.append({QStringLiteral("unit"), remote ? remote->unitAddress() : QString()});
    out.append({QStringLiteral("link"), unit && unit->panel && unit->answering ? 1 : 0});
    if (!unit)
        return out;
    if (remote->faderPosition() >= 0)
        out.append({QStringLiteral("fader"), remote->faderPosition()});
    if (unit->shownPgm || unit->shownPvw)
        out.append({{QStringLiteral("pgm"), unit->shownPgm}, {QStringLiteral("pvw"), unit->shownPvw}});
    return out + fields(unit->state, unit->state.fields());
}
