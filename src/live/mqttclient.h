#pragma once

#include <QByteArray>
#include <QLoggingCategory>
#include <QObject>
#include <QString>
#include <QTimer>
#include <QVector>
#include <optional>

Q_DECLARE_LOGGING_CATEGORY(lcMqtt)

class QEventLoop;
class QSocketNotifier;
struct mosquitto;
struct mosquitto_message;

// Where a production's MQTT broker is, and how to log in to it.
struct MqttEndpoint
{
    QString host;
    quint16 port = 1883;
    bool tls = false;
    QString user;
    QString password;
    QString caFile; // the CA that signed the broker's certificate (mqtts:// only)

    // mqtt://[user@]host[:port] or mqtts://[user@]host[:port] (default ports 1883 / 8883); an
    // IPv6 address goes in brackets. Refuses anything else (other schemes, a password in the URL,
    // an empty host, a bad port, a path, query or fragment, a lone "/" included) with the reason
    // in *error. The password never travels in the URL: see mqttPassword().
    static std::optional<MqttEndpoint> fromUrl(const QString &url, QString *error);
};

// The broker password: the first line of passwordFile (newline stripped) when given, else the
// environment variable KOVA_MQTT_PASSWORD, else empty. Never from the command line. A file that
// cannot be read is an error.
bool mqttPassword(const QString &passwordFile, QString *password, QString *error);

// An MQTT connection made by libmosquitto and driven from the Qt event loop: socket notifiers
// for reading and writing, a timer for the keep-alive, no thread of the library's. When the
// broker is not there or goes away it tries again after FirstRetryMs, doubling up to
// LastRetryMs. Every attempt starts from a new library handle, so nothing queued for a lost
// connection is sent on the next one: the owner publishes its newest values on connected().
class MqttClient : public QObject
{
    Q_OBJECT
public:
    static constexpr int FirstRetryMs = 1000;
    static constexpr int LastRetryMs = 30000;
    // Seconds between keep-alive pings: a broker that went away without closing the connection
    // is noticed after about one and a half times this.
    static constexpr int KeepAliveS = 10;
    // A connection that has not been accepted by then is given up and tried again.
    static constexpr int ConnectTimeoutMs = 10000;
    // Publications handed to the library and not yet gone out (QoS 0) or acknowledged (QoS 1):
    // past this, publish() refuses, so a stalled broker cannot make the queue grow without bound.
    static constexpr int MaxPending = 1000;

    explicit MqttClient(QObject *parent = nullptr);
    // Without finish() the connection is dropped as a crash would drop it: the broker sends the
    // will.
    ~MqttClient() override;

    void setWill(const QByteArray &topic, const QByteArray &payload, bool retain); // before start()
    // Starts connecting. False with the reason only for settings that can never work (an
    // unreadable CA file, a TLS setup the library refuses, a second start()); a broker that is
    // not there is tried again and again.
    bool start(const MqttEndpoint &endpoint, const QString &clientId, QString *error);
    bool isConnected() const { return m_state == State::Connected; }
    // The delay the pending retry was armed with, 0 when no retry is pending.
    int retryDelay() const { return m_retry.isActive() ? m_retry.interval() : 0; }

    // False (nothing queued) while not connected, or when MaxPending publications are still on
    // their way: callers keep their newest values and publish again on connected().
    // QoS 2 is sent as QoS 1: nothing here needs exactly-once.
    bool publish(const QByteArray &topic, const QByteArray &payload, int qos, bool retain);
    // Kept, and subscribed again after every reconnect. False for a pattern MQTT does not allow.
    bool subscribe(const QByteArray &pattern, int qos);
    // Publishes payload on topic (retained, QoS 1), waits at most `ms` for the broker to take it
    // (the event loop runs meanwhile), then disconnects cleanly, so the will is not sent. Nothing
    // is tried again after it.
    void finish(const QByteArray &topic, const QByteArray &payload, int ms = 1000);

signals:
    void connected();
    void disconnected();
    void message(const QByteArray &topic, const QByteArray &payload);

private:
    enum class State
    {
        Idle,
        Connecting,
        Connected,
        Waiting,
        Finished
    };

    static void onConnect(mosquitto *, void *self, int rc);
    static void onDisconnect(mosquitto *, void *self, int rc);
    static void onPublish(mosquitto *, void *self, int mid);
    static void onMessage(mosquitto *, void *self, const mosquitto_message *msg);

    bool configure(mosquitto *mosq, QString *error) const;
    void attempt();
    void connectTo(const QByteArray &host);
    void readable();
    void writable();
    void misc();
    // After every call into the library: deliver what its callbacks collected (signals are never
    // emitted from inside the library), drop a lost connection, watch the socket for writing
    // while the library has something to send.
    void settle(int rc);
    void drop(const char *why);
    void teardown();
    void watchSocket();

    State m_state = State::Idle;
    MqttEndpoint m_endpoint;
    QByteArray m_clientId;
    QByteArray m_willTopic;
    QByteArray m_willPayload;
    bool m_willRetain = false;
    QVector<QPair<QByteArray, int>> m_subscriptions;

    mosquitto *m_mosq = nullptr;
    QSocketNotifier *m_read = nullptr;
    QSocketNotifier *m_write = nullptr;
    QTimer m_misc;
    QTimer m_retry;
    QTimer m_connectTimeout;
    int m_lookup = -1; // the broker's name being looked up, -1 while none is
    int m_nextRetryMs = FirstRetryMs;
    int m_pending = 0;

    // Filled by the library's callbacks, acted on by settle() once the library has returned.
    bool m_gotConnack = false;
    int m_connackCode = -1;
    bool m_lost = false;
    QVector<QPair<QByteArray, QByteArray>> m_inbox;
    int m_generation = 0; // counts the attempts, so a late check never drops a newer connection

    // finish(): the message ID waited for and the loop that waits.
    int m_finishMid = -1;
    bool m_finishAcked = false;
    QEventLoop *m_wait = nullptr;
};
