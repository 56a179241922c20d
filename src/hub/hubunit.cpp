#include "hubunit.h"

#include "SwitcherData/reportinglink.h"
#include "SwitcherData/statefields.h"
#include "SwitcherData/unitaddress.h"
#include "SwitcherData/unitcommands.h"
#include "SwitcherData/unitlink.h"
#include "SwitcherData/unitlinks.h"
#include "hublog.h"
#include "live/oscfields.h"

#include <QStringList>
#include <cmath>
#include <cstring>

namespace {

const char *const Effects[] = {"mix", "fade", "wipe-up", "wipe-down", "wipe-left", "wipe-right"};
const char *const Directions[] = {"up", "down", "left", "right"};
// Keys that send their own word as a command.
const char *const PlainKeys[] = {"cut", "auto", "ftb", "still", "f2", "f3", "f7", "rotate", "pause"};
// Keys that switch something on or off: the command says which, by the key's lamp.
const char *const OnOffKeys[] = {"pip", "pop", "rec", "stream", "bar"};

} // namespace

HubUnit::HubUnit(const DevInfo_DATA &record, int number, QObject *parent)
    : QObject(parent), m_address(SWITCHER_DATA::dottedIp(record.ip)),
      m_model(UnitModels::modelName(record.childType)),
      m_name(QString::fromLatin1(record.name, int(strnlen(record.name, sizeof record.name)))),
      m_number(number), m_family(UnitModels::forChildType(record.childType).family)
{
    m_id = idOf(m_address);
    m_link.reset(createUnitLink(m_family));
    m_hisKnown = record.ip2 != 0;
    m_link->bindBoards(UnitAddress::mainBoard(record), UnitAddress::hisBoard(record));
    if (auto *reporting = qobject_cast<ReportingLink *>(m_link.get())) {
        connect(reporting, &ReportingLink::stateReported, this, &HubUnit::stateReported);
        connect(reporting->watch(), &LinkWatch::answeringChanged, this, [this](bool answering) {
            m_answering = answering;
            emit answeringChanged(answering);
        });
        m_answering = reporting->watch()->isAnswering();
    }
}

HubUnit::~HubUnit() = default;

QString HubUnit::idOf(const QString &address)
{
    QString id = address;
    return id.replace(QLatin1Char('.'), QLatin1Char('-'));
}

bool HubUnit::reportsState() const
{
    return m_link->traits().state != StateLayout::None && qobject_cast<ReportingLink *>(m_link.get());
}

void HubUnit::updateRecord(const DevInfo_DATA &record)
{
    if (m_hisKnown || !record.ip2)
        return;
    m_hisKnown = true;
    m_link->bindBoards(UnitAddress::mainBoard(record), UnitAddress::hisBoard(record));
    qCInfo(lcHub) << "unit" << m_id << "HIS board at" << SWITCHER_DATA::dottedIp(record.ip2);
}

QString HubUnit::run(const QString &line)
{
    const QString reason = CommandCall::runLine(*m_link, line, m_hisKnown);
    if (reason.isEmpty())
        remember(line);
    return reason;
}

bool HubUnit::follow()
{
    if (m_followed)
        m_followed = m_link->readState();
    return m_followed;
}

void HubUnit::stateReported(const UnitState &state)
{
    const UnitState::FieldSet changed = state.changedFrom(m_state);
    m_state = state;
    if (changed.any())
        emit stateChanged(oscStateFields(state, changed));
}

// What a command that went out changes of the hub's own view.
void HubUnit::remember(const QString &line)
{
    const QStringList words = line.simplified().split(QLatin1Char(' '));
    const QString cmd = words.first();
    const QString arg = words.value(1);
    OscFields changed;
    if (cmd == QLatin1String("pgm") || cmd == QLatin1String("pvw")) {
        m_sent[cmd] = arg == QLatin1String("bar") ? 9 : arg.toInt();
        changed.append({cmd, m_sent[cmd]});
    } else if (cmd == QLatin1String("transition")) {
        const int effect = int(std::find_if(std::begin(Effects), std::end(Effects),
                                            [&arg](const char *e) { return arg == QLatin1String(e); }) -
                               std::begin(Effects)) +
                           1;
        m_sent[QStringLiteral("transition")] = effect <= 2 ? effect : 4;
        if (effect > 2)
            m_sent[QStringLiteral("wipe")] = effect; // the wipe as its type 3-6
        changed.append({QStringLiteral("transition"), transitionName(m_sent[QStringLiteral("transition")])});
    } else if (std::find_if(std::begin(OnOffKeys), std::end(OnOffKeys), [&cmd](const char *k) {
                   return cmd == QLatin1String(k);
               }) != std::end(OnOffKeys)) {
        m_sent[cmd] = arg == QLatin1String("on") ? 1 : 0;
        changed.append({cmd, m_sent[cmd]});
    } else if (cmd == QLatin1String("ftb") || cmd == QLatin1String("still") || cmd == QLatin1String("f3")) {
        m_sent[cmd] = m_sent.value(cmd) ? 0 : 1; // these keys toggle
    } else if (cmd == QLatin1String("audio")) {
        m_sent[cmd] = arg == QLatin1String("mix") ? 1 : 0;
    } else if (cmd == QLatin1String("rate")) {
        m_sent[cmd] = arg.toInt() - 1; // the keys count from 1, the unit from 0
    }
    // A unit that reports its state tells what really changed on the next reply.
    if (!reportsState() && !changed.isEmpty())
        emit stateChanged(changed);
}

std::optional<int> HubUnit::known(UnitState::Field field, const char *sentName) const
{
    if (m_state.has(field))
        return m_state.value(field);
    const QString name = QLatin1String(sentName);
    if (m_sent.contains(name))
        return m_sent.value(name);
    return std::nullopt;
}

int HubUnit::programme() const
{
    return known(UnitState::Pgm, "pgm").value_or(0);
}

int HubUnit::preview() const
{
    return known(UnitState::Pvw, "pvw").value_or(0);
}

QJsonObject HubUnit::stateObject() const
{
    if (reportsState())
        return stateJson(m_state);
    QJsonObject o;
    for (const char *bus : {"pgm", "pvw"})
        if (m_sent.contains(QLatin1String(bus)))
            o.insert(QLatin1String(bus), busValue(m_sent.value(QLatin1String(bus))));
    if (m_sent.contains(QStringLiteral("transition")))
        o.insert(QStringLiteral("transition"), transitionName(m_sent.value(QStringLiteral("transition"))));
    if (m_sent.contains(QStringLiteral("wipe")))
        o.insert(QStringLiteral("wipe"), QLatin1String(Directions[m_sent.value(QStringLiteral("wipe")) - 3]));
    for (const char *key : OnOffKeys)
        if (m_sent.contains(QLatin1String(key)))
            o.insert(QLatin1String(key), m_sent.value(QLatin1String(key)) != 0);
    return o;
}

OscFields HubUnit::oscState() const
{
    OscFields out;
    out.append({QStringLiteral("model"), m_model});
    out.append({QStringLiteral("unit"), m_address});
    out.append({QStringLiteral("link"), m_answering ? 1 : 0});
    if (reportsState())
        return out + oscStateFields(m_state);
    for (const char *bus : {"pgm", "pvw"})
        if (m_sent.contains(QLatin1String(bus)))
            out.append({QLatin1String(bus), m_sent.value(QLatin1String(bus))});
    if (m_sent.contains(QStringLiteral("transition")))
        out.append(
            {QStringLiteral("transition"), transitionName(m_sent.value(QStringLiteral("transition")))});
    for (const char *key : OnOffKeys)
        if (m_sent.contains(QLatin1String(key)))
            out.append({QLatin1String(key), m_sent.value(QLatin1String(key))});
    return out;
}

QStringList HubUnit::inputLabels() const
{
    QStringList labels;
    for (int i = 1; i <= inputCount(); ++i)
        labels << QStringLiteral("IN%1").arg(i);
    return labels;
}

int HubUnit::inputCount() const
{
    return m_link->traits().inputs;
}

QString HubUnit::lineFor(const QString &key) const
{
    for (const char *k : PlainKeys)
        if (key == QLatin1String(k))
            return key;
    if (key == QLatin1String("mute"))
        return QStringLiteral("f3");
    for (const char *bus : {"pgm", "pvw"}) {
        if (key.startsWith(QLatin1String(bus))) {
            bool ok = false;
            const int n = key.mid(3).toInt(&ok);
            return ok && n > 0 ? QStringLiteral("%1 %2").arg(QLatin1String(bus)).arg(n) : QString();
        }
    }
    for (const char *e : Effects)
        if (key == QLatin1String(e))
            return QStringLiteral("transition ") + key;
    if (key == QLatin1String("wipe")) {
        // The wipe key brings back the direction the unit last showed (left until one is known).
        const int type =
            m_state.has(UnitState::Wipe) ? m_state.wipeType() : m_sent.value(QStringLiteral("wipe"));
        const char *direction = type >= 3 && type <= 6 ? Directions[type - 3] : "left";
        return QStringLiteral("transition wipe-") + QLatin1String(direction);
    }
    for (const char *k : OnOffKeys)
        if (key == QLatin1String(k))
            return key + (keyLit(key).value_or(false) ? QStringLiteral(" off") : QStringLiteral(" on"));
    if (key == QLatin1String("afv"))
        return QStringLiteral("audio afv");
    if (key == QLatin1String("audio-mix"))
        return QStringLiteral("audio mix");
    if (key.startsWith(QLatin1String("rate")))
        return QStringLiteral("rate ") + key.mid(4);
    return QString();
}

QStringList HubUnit::keyNames() const
{
    QStringList candidates = {QStringLiteral("mute"), QStringLiteral("mix"), QStringLiteral("fade"),
                              QStringLiteral("wipe"), QStringLiteral("afv"), QStringLiteral("audio-mix")};
    for (const char *k : PlainKeys)
        candidates << QLatin1String(k);
    for (const char *k : OnOffKeys)
        candidates << QLatin1String(k);
    for (const char *e : Effects)
        candidates << QLatin1String(e);
    for (int i = 1; i <= 3; ++i)
        candidates << QStringLiteral("rate%1").arg(i);
    for (int i = 1; i <= inputCount(); ++i)
        candidates << QStringLiteral("pgm%1").arg(i) << QStringLiteral("pvw%1").arg(i);
    QStringList names;
    for (const QString &key : qAsConst(candidates)) {
        const QString line = lineFor(key);
        if (!line.isEmpty() && CommandCall::checkLine(line, m_family).verdict() == CommandCall::Verdict::Ok)
            names << key;
    }
    return names;
}

bool HubUnit::pressKey(const QString &name)
{
    const QString line = lineFor(name);
    if (line.isEmpty())
        return false;
    const QString reason = run(line);
    if (!reason.isEmpty())
        qCInfo(lcHub) << "unit" << m_id << "OSC key" << name << "refused:" << reason;
    return reason.isEmpty();
}

std::optional<bool> HubUnit::keyLit(const QString &name) const
{
    const auto is = [](std::optional<int> v, int want) -> std::optional<bool> {
        if (!v)
            return std::nullopt;
        return *v == want;
    };
    const auto on = [](std::optional<int> v) -> std::optional<bool> {
        if (!v)
            return std::nullopt;
        return *v != 0;
    };
    if (name.startsWith(QLatin1String("pgm")) || name.startsWith(QLatin1String("pvw"))) {
        bool ok = false;
        const int n = name.mid(3).toInt(&ok);
        if (!ok)
            return std::nullopt;
        return name.startsWith(QLatin1String("pgm")) ? is(known(UnitState::Pgm, "pgm"), n)
                                                     : is(known(UnitState::Pvw, "pvw"), n);
    }
    if (name == QLatin1String("mix"))
        return is(known(UnitState::Transition, "transition"), 1);
    if (name == QLatin1String("fade"))
        return is(known(UnitState::Transition, "transition"), 2);
    if (name == QLatin1String("wipe"))
        return is(known(UnitState::Transition, "transition"), 4);
    for (int i = 2; i < 6; ++i) {
        if (name == QLatin1String(Effects[i])) {
            const std::optional<bool> wiping = is(known(UnitState::Transition, "transition"), 4);
            if (!wiping)
                return std::nullopt;
            const int type =
                m_state.has(UnitState::Wipe) ? m_state.wipeType() : m_sent.value(QStringLiteral("wipe"));
            return *wiping && type == i + 1;
        }
    }
    if (name == QLatin1String("pip"))
        return on(known(UnitState::Pip, "pip"));
    if (name == QLatin1String("ftb"))
        return on(known(UnitState::Ftb, "ftb"));
    if (name == QLatin1String("still"))
        return on(known(UnitState::Still, "still"));
    if (name == QLatin1String("mute") || name == QLatin1String("f3"))
        return on(known(UnitState::Mute, "f3"));
    if (name == QLatin1String("rec"))
        return on(known(UnitState::Recording, "rec"));
    if (name == QLatin1String("stream"))
        return on(known(UnitState::Streaming, "stream"));
    if (name == QLatin1String("pop") || name == QLatin1String("bar")) {
        if (!m_sent.contains(name))
            return std::nullopt;
        return m_sent.value(name) != 0;
    }
    if (name == QLatin1String("afv"))
        return is(known(UnitState::AudioMode, "audio"), 0);
    if (name == QLatin1String("audio-mix"))
        return is(known(UnitState::AudioMode, "audio"), 1);
    if (name.startsWith(QLatin1String("rate")))
        return is(known(UnitState::Rate, "rate"), name.mid(4).toInt() - 1);
    return std::nullopt;
}

bool HubUnit::setFader(double f)
{
    if (!std::isfinite(f) || f < 0 || f > 1)
        return false;
    // The forward stroke over its travel: 0 its first byte, 1 its last.
    const Range travel = m_link->traits().travel[0];
    const int at = travel.lo + int(std::lround(f * (travel.hi - travel.lo)));
    return run(QStringLiteral("tbar 0 %1").arg(at)).isEmpty();
}

bool HubUnit::requestState()
{
    return m_link->readState();
}
