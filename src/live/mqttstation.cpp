#include "mqttstation.h"

#include "mqttclient.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QRandomGenerator>
#include <QSysInfo>
#include <mosquitto.h>

namespace {

const QByteArray Online = QByteArrayLiteral("online");
const QByteArray Offline = QByteArrayLiteral("offline");

bool stationChar(QChar c)
{
    const ushort u = c.unicode();
    return (u >= 'a' && u <= 'z') || (u >= '0' && u <= '9') || u == '-';
}

QByteArray compact(const QJsonObject &o)
{
    return QJsonDocument(o).toJson(QJsonDocument::Compact);
}

} // namespace

MqttStation::MqttStation(const QString &station, QObject *parent)
    : QObject(parent), m_station(station), m_prefix("kova/" + station.toUtf8() + '/'),
      m_client(new MqttClient(this))
{
    connect(m_client, &MqttClient::connected, this, &MqttStation::onConnected);
    connect(m_client, &MqttClient::message, this, &MqttStation::onMessage);
}

MqttStation::~MqttStation() = default;

QString MqttStation::defaultStation()
{
    const QString host = QSysInfo::machineHostName().section(QLatin1Char('.'), 0, 0).toLower();
    QString name;
    for (const QChar c : host)
        if (stationChar(c))
            name.append(c);
    return name.isEmpty() ? QStringLiteral("kova") : name;
}

bool MqttStation::validStation(const QString &name)
{
    if (name.isEmpty())
        return false;
    for (const QChar c : name)
        if (!stationChar(c))
            return false;
    return true;
}

bool MqttStation::validUnitId(const QString &id)
{
    if (id.isEmpty())
        return false;
    for (const QChar c : id)
        if (c == QLatin1Char('/') || c == QLatin1Char('+') || c == QLatin1Char('#') || c.unicode() == 0)
            return false;
    return true;
}

bool MqttStation::start(const MqttEndpoint &endpoint, QString *error)
{
    if (!validStation(m_station)) {
        if (error)
            *error = QStringLiteral("the station name may hold only a-z, 0-9 and '-': \"%1\"").arg(m_station);
        return false;
    }
    m_client->setWill(m_prefix + "status", Offline, true);
    // Kept by the client and subscribed again on every connection, after the station has told
    // its state.
    m_client->subscribe(m_prefix + "+/set", 1);
    // Two processes of one station (a restart while the broker still holds the old session
    // included) must not take each other's connection: the process and a random number make the
    // client ID unique.
    const QString clientId =
        QStringLiteral("kova-%1-%2-%3")
            .arg(m_station)
            .arg(QCoreApplication::applicationPid())
            .arg(QRandomGenerator::global()->generate() & 0xffff, 4, 16, QLatin1Char('0'));
    return m_client->start(endpoint, clientId, error);
}

QByteArray MqttStation::topic(const QString &id, const char *leaf) const
{
    return m_prefix + id.toUtf8() + '/' + leaf;
}

void MqttStation::setUnits(const QVector<Unit> &units)
{
    QVector<Unit> kept;
    QSet<QString> held;
    for (const Unit &u : units) {
        if (!validUnitId(u.id) || held.contains(u.id)) {
            qCWarning(lcMqtt) << "unit ID not published (invalid or twice):" << u.id;
            continue;
        }
        kept.append(u);
        held.insert(u.id);
    }
    for (const QString &id : std::as_const(m_held)) {
        if (!held.contains(id)) {
            m_states.remove(id);
            m_links.remove(id);
            m_clear.insert(id);
        }
    }
    for (const QString &id : std::as_const(held))
        m_clear.remove(id);
    m_units = kept;
    m_held = held;

    QJsonArray list;
    for (const Unit &u : std::as_const(m_units))
        list.append(QJsonObject{{QStringLiteral("id"), u.id},
                                {QStringLiteral("model"), u.model},
                                {QStringLiteral("address"), u.address},
                                {QStringLiteral("name"), u.name}});
    const QByteArray payload = QJsonDocument(list).toJson(QJsonDocument::Compact);
    if (payload != m_unitsPayload.payload)
        m_unitsPayload = {payload, false};
    flush();
}

void MqttStation::setState(const QString &id, const QJsonObject &state)
{
    if (!validUnitId(id))
        return;
    const QByteArray payload = compact(state);
    Retained &r = m_states[id];
    if (r.payload != payload)
        r = {payload, false};
    flush();
}

void MqttStation::setLink(const QString &id, bool up)
{
    if (!validUnitId(id))
        return;
    const QByteArray payload = up ? QByteArrayLiteral("up") : QByteArrayLiteral("down");
    Retained &r = m_links[id];
    if (r.payload != payload) {
        // A unit heard again has its state told again, whether it changed or not: a dashboard
        // that saw it go down sees it is back with what it holds now.
        const auto state = m_states.find(id);
        if (up && state != m_states.end() && r.payload == "down")
            state->sent = false;
        r = {payload, false};
    }
    flush();
}

void MqttStation::refuse(const QString &id, const QString &command, const QString &reason)
{
    if (!validUnitId(id))
        return;
    qCInfo(lcMqtt) << "refused for" << id << ":" << command << "-" << reason;
    const QJsonObject o{{QStringLiteral("command"), command}, {QStringLiteral("reason"), reason}};
    m_client->publish(topic(id, "error"), compact(o), 1, false);
}

void MqttStation::stop()
{
    if (m_stopped)
        return;
    m_stopped = true;
    m_client->finish(m_prefix + "status", Offline);
}

bool MqttStation::send(const QByteArray &topic, Retained &value)
{
    if (!value.sent)
        value.sent = m_client->publish(topic, value.payload, 1, true);
    return value.sent;
}

void MqttStation::flush()
{
    if (!m_client->isConnected())
        return;
    send(m_prefix + "units", m_unitsPayload);
    for (auto it = m_states.begin(); it != m_states.end(); ++it)
        send(topic(it.key(), "state"), it.value());
    for (auto it = m_links.begin(); it != m_links.end(); ++it)
        send(topic(it.key(), "link"), it.value());
    for (auto it = m_clear.begin(); it != m_clear.end();) {
        const bool state = m_client->publish(topic(*it, "state"), QByteArray(), 1, true);
        const bool link = state && m_client->publish(topic(*it, "link"), QByteArray(), 1, true);
        it = link ? m_clear.erase(it) : std::next(it);
    }
}

void MqttStation::onConnected()
{
    // The broker may have lost everything retained (a restart without persistence): all of it
    // is told again.
    m_unitsPayload.sent = false;
    for (Retained &r : m_states)
        r.sent = false;
    for (Retained &r : m_links)
        r.sent = false;
    m_client->publish(m_prefix + "status", Online, 1, true);
    flush();
}

void MqttStation::onMessage(const QByteArray &topic, const QByteArray &payload)
{
    // kova/STATION/ID/set: the one subscription there is; anything else is not ours.
    if (!topic.startsWith(m_prefix) || !topic.endsWith("/set"))
        return;
    const QByteArray idBytes = topic.mid(m_prefix.size(), topic.size() - m_prefix.size() - 4);
    if (idBytes.isEmpty() || idBytes.contains('/'))
        return;
    const QString id = QString::fromUtf8(idBytes);
    if (payload.size() > MaxCommandBytes) {
        refuse(id, QString(), QStringLiteral("command longer than %1 bytes").arg(MaxCommandBytes));
        return;
    }
    const QByteArray trimmed = payload.trimmed();
    if (mosquitto_validate_utf8(trimmed.constData(), int(trimmed.size())) != MOSQ_ERR_SUCCESS) {
        refuse(id, QString(), QStringLiteral("command is not valid UTF-8 text"));
        return;
    }
    const QString text = QString::fromUtf8(trimmed);
    if (!m_held.contains(id)) {
        refuse(id, text, QStringLiteral("no unit %1 on station %2").arg(id, m_station));
        return;
    }
    emit command(id, text);
}
