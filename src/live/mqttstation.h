#pragma once

#include <QHash>
#include <QJsonObject>
#include <QObject>
#include <QSet>
#include <QString>
#include <QVector>

class MqttClient;
struct MqttEndpoint;

// One station's topics on the production's broker, all under kova/STATION/:
//   status       "online" while connected, "offline" (retained; also the will)
//   units        the units the station holds: a JSON array of {"id","model","address","name"}
//   ID/state     the unit's state, a JSON object (retained)
//   ID/link      "up" or "down" (retained)
//   ID/error     {"command","reason"} for a command refused (not retained)
//   ID/set       commands for the unit, read by the station (QoS 1)
// While disconnected only the newest of each is kept, and all of it is published again on every
// connection. A unit that setUnits() removes has its retained state and link cleared (an empty
// retained message) as soon as the station is connected, so a late subscriber never sees a unit
// that is gone.
class MqttStation : public QObject
{
    Q_OBJECT
public:
    struct Unit
    {
        QString id;
        QString model;
        QString address;
        QString name;
        bool operator==(const Unit &o) const
        {
            return id == o.id && model == o.model && address == o.address && name == o.name;
        }
    };
    // A command longer than this is refused without being read.
    static constexpr int MaxCommandBytes = 256;

    explicit MqttStation(const QString &station, QObject *parent = nullptr); // owns its MqttClient
    ~MqttStation() override;

    // The host name up to its first dot, lower-cased, every character outside [a-z0-9-]
    // dropped; "kova" if nothing is left.
    static QString defaultStation();
    static bool validStation(const QString &name); // non-empty, [a-z0-9-] only
    // A unit ID that can be one level of a topic: non-empty, without '/', '+', '#' or NUL.
    static bool validUnitId(const QString &id);

    QString station() const { return m_station; }
    // Sets the will kova/STATION/status = "offline" (retained) and starts the client. False for
    // an invalid station name or settings that can never work.
    bool start(const MqttEndpoint &endpoint, QString *error);
    MqttClient *client() const { return m_client; }

    void setUnits(const QVector<Unit> &units);
    // State and link are kept for any valid ID, also one not (yet) in the units.
    void setState(const QString &id, const QJsonObject &state); // published when it changed
    void setLink(const QString &id, bool up);
    // Told on kova/STATION/ID/error while connected, dropped otherwise.
    void refuse(const QString &id, const QString &command, const QString &reason);
    void stop(); // "offline" on status (retained) and a clean disconnect

signals:
    // A command for a unit the station holds, as trimmed UTF-8 text. The station itself refuses
    // one for an ID it does not hold, one longer than MaxCommandBytes and one that is not valid
    // UTF-8 (control characters inside it included).
    void command(const QString &id, const QString &text);

private:
    struct Retained
    {
        QByteArray payload;
        bool sent = false; // published on the current connection
    };

    QByteArray topic(const QString &id, const char *leaf) const;
    void onConnected();
    void onMessage(const QByteArray &topic, const QByteArray &payload);
    void flush();
    bool send(const QByteArray &topic, Retained &value);

    QString m_station;
    QByteArray m_prefix; // "kova/STATION/"
    MqttClient *m_client;
    QVector<Unit> m_units;
    QSet<QString> m_held;
    Retained m_unitsPayload;
    QHash<QString, Retained> m_states;
    QHash<QString, Retained> m_links;
    QSet<QString> m_clear; // removed units whose retained topics are still to be emptied
    bool m_stopped = false;
};
