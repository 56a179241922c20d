#include "mqttclient.h"

#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QHostAddress>
#include <QHostInfo>
#include <QPointer>
#include <QSocketNotifier>
#include <fcntl.h>
#include <mosquitto.h>
#include <mutex>
#include <utility>

Q_LOGGING_CATEGORY(lcMqtt, "kova.mqtt", QtInfoMsg)

namespace {

bool fail(QString *error, const QString &why)
{
    if (error)
        *error = why;
    return false;
}

// A host name of letters, digits, dots and dashes, or an IPv6 address (without its brackets).
bool validHost(const QString &host, bool bracketed)
{
    if (bracketed)
        return QHostAddress(host).protocol() == QAbstractSocket::IPv6Protocol;
    if (host.isEmpty() || host.size() > 253)
        return false;
    for (const QChar c : host) {
        const ushort u = c.unicode();
        const bool ok = (u >= 'a' && u <= 'z') || (u >= 'A' && u <= 'Z') || (u >= '0' && u <= '9') ||
                        u == '.' || u == '-';
        if (!ok)
            return false;
    }
    return true;
}

void initLibrary()
{
    static std::once_flag once;
    std::call_once(once, [] { mosquitto_lib_init(); });
}

} // namespace

std::optional<MqttEndpoint> MqttEndpoint::fromUrl(const QString &url, QString *error)
{
    const auto refuse = [error](const QString &why) {
        fail(error, why);
        return std::nullopt;
    };
    MqttEndpoint e;
    QString rest;
    const QString lower = url.toLower();
    if (lower.startsWith(QLatin1String("mqtt://"))) {
        rest = url.mid(7);
    } else if (lower.startsWith(QLatin1String("mqtts://"))) {
        rest = url.mid(8);
        e.tls = true;
        e.port = 8883;
    } else {
        return refuse(QStringLiteral("the broker URL must start with mqtt:// or mqtts://: %1").arg(url));
    }
    if (rest.contains(QLatin1Char('/')) || rest.contains(QLatin1Char('?')) || rest.contains(QLatin1Char('#')))
        return refuse(QStringLiteral("the broker URL takes no path, query or fragment: %1").arg(url));

    const int at = rest.lastIndexOf(QLatin1Char('@'));
    if (at >= 0) {
        e.user = rest.left(at);
        rest = rest.mid(at + 1);
        if (e.user.contains(QLatin1Char(':')))
            return refuse(
                QStringLiteral("the broker URL must not hold a password: give it in a password file or in "
                               "KOVA_MQTT_PASSWORD"));
        if (e.user.isEmpty() || e.user.contains(QLatin1Char('@')))
            return refuse(QStringLiteral("the broker URL has an empty or malformed user name: %1").arg(url));
    }

    QString portText;
    bool bracketed = false;
    if (rest.startsWith(QLatin1Char('['))) {
        const int close = rest.indexOf(QLatin1Char(']'));
        if (close < 0)
            return refuse(QStringLiteral("the broker URL has an unclosed IPv6 address: %1").arg(url));
        e.host = rest.mid(1, close - 1);
        bracketed = true;
        const QString after = rest.mid(close + 1);
        if (!after.isEmpty()) {
            if (!after.startsWith(QLatin1Char(':')))
                return refuse(QStringLiteral("the broker URL has text after its IPv6 address: %1").arg(url));
            portText = after.mid(1);
            if (portText.isEmpty())
                return refuse(QStringLiteral("the broker URL has an empty port: %1").arg(url));
        }
    } else {
        const int colon = rest.indexOf(QLatin1Char(':'));
        e.host = colon < 0 ? rest : rest.left(colon);
        if (colon >= 0) {
            portText = rest.mid(colon + 1);
            if (portText.isEmpty())
                return refuse(QStringLiteral("the broker URL has an empty port: %1").arg(url));
        }
    }
    if (e.host.isEmpty())
        return refuse(QStringLiteral("the broker URL has no host: %1").arg(url));
    if (!validHost(e.host, bracketed))
        return refuse(QStringLiteral("the broker URL has an invalid host: %1").arg(e.host));
    if (!portText.isEmpty()) {
        bool digits = portText.size() <= 5;
        for (const QChar c : portText)
            digits = digits && c.isDigit() && c.unicode() < 128;
        const int port = digits ? portText.toInt() : 0;
        if (port < 1 || port > 65535)
            return refuse(
                QStringLiteral("the broker URL has an invalid port (1 to 65535): %1").arg(portText));
        e.port = quint16(port);
    }
    return e;
}

bool mqttPassword(const QString &passwordFile, QString *password, QString *error)
{
    if (passwordFile.isEmpty()) {
        *password = qEnvironmentVariable("KOVA_MQTT_PASSWORD");
        return true;
    }
    QFile f(passwordFile);
    if (!f.open(QIODevice::ReadOnly))
        return fail(
            error,
            QStringLiteral("cannot read the MQTT password file %1: %2").arg(passwordFile, f.errorString()));
    QByteArray line = f.readLine(4096);
    if (f.error() != QFileDevice::NoError)
        return fail(
            error,
            QStringLiteral("cannot read the MQTT password file %1: %2").arg(passwordFile, f.errorString()));
    while (line.endsWith('\n') || line.endsWith('\r'))
        line.chop(1);
    *password = QString::fromUtf8(line);
    return true;
}

MqttClient::MqttClient(QObject *parent) : QObject(parent)
{
    initLibrary();
    m_misc.setInterval(1000);
    connect(&m_misc, &QTimer::timeout, this, &MqttClient::misc);
    m_retry.setSingleShot(true);
    connect(&m_retry, &QTimer::timeout, this, &MqttClient::attempt);
    m_connectTimeout.setSingleShot(true);
    m_connectTimeout.setInterval(ConnectTimeoutMs);
    connect(&m_connectTimeout, &QTimer::timeout, this, [this] { drop("the broker did not accept in time"); });
}

MqttClient::~MqttClient()
{
    if (m_lookup != -1)
        QHostInfo::abortHostLookup(m_lookup);
    teardown();
}

void MqttClient::setWill(const QByteArray &topic, const QByteArray &payload, bool retain)
{
    m_willTopic = topic;
    m_willPayload = payload;
    m_willRetain = retain;
}

bool MqttClient::configure(mosquitto *mosq, QString *error) const
{
    int rc = MOSQ_ERR_SUCCESS;
    mosquitto_int_option(mosq, MOSQ_OPT_PROTOCOL_VERSION, MQTT_PROTOCOL_V311);
    if (!m_willTopic.isEmpty()) {
        rc = mosquitto_will_set(mosq, m_willTopic.constData(), int(m_willPayload.size()),
                                m_willPayload.constData(), 1, m_willRetain);
        if (rc != MOSQ_ERR_SUCCESS)
            return fail(error, QStringLiteral("the MQTT will is not allowed: %1")
                                   .arg(QString::fromUtf8(mosquitto_strerror(rc))));
    }
    if (!m_endpoint.user.isEmpty()) {
        const QByteArray user = m_endpoint.user.toUtf8();
        const QByteArray password = m_endpoint.password.toUtf8();
        rc = mosquitto_username_pw_set(mosq, user.constData(),
                                       password.isEmpty() ? nullptr : password.constData());
        if (rc != MOSQ_ERR_SUCCESS)
            return fail(error, QStringLiteral("the MQTT user name is not allowed: %1")
                                   .arg(QString::fromUtf8(mosquitto_strerror(rc))));
    }
    if (m_endpoint.tls) {
        const QByteArray ca = QFile::encodeName(m_endpoint.caFile);
        // Without a CA file the system's trusted authorities check the broker.
        if (m_endpoint.caFile.isEmpty())
            rc = mosquitto_int_option(mosq, MOSQ_OPT_TLS_USE_OS_CERTS, 1);
        else
            rc = mosquitto_tls_set(mosq, ca.constData(), nullptr, nullptr, nullptr, nullptr);
        if (rc != MOSQ_ERR_SUCCESS)
            return fail(error, QStringLiteral("cannot set up TLS for MQTT: %1")
                                   .arg(QString::fromUtf8(mosquitto_strerror(rc))));
    }
    mosquitto_connect_callback_set(mosq, &MqttClient::onConnect);
    mosquitto_disconnect_callback_set(mosq, &MqttClient::onDisconnect);
    mosquitto_publish_callback_set(mosq, &MqttClient::onPublish);
    mosquitto_message_callback_set(mosq, &MqttClient::onMessage);
    return true;
}

bool MqttClient::start(const MqttEndpoint &endpoint, const QString &clientId, QString *error)
{
    if (m_state != State::Idle)
        return fail(error, QStringLiteral("the MQTT client was started already"));
    if (endpoint.tls && !endpoint.caFile.isEmpty()) {
        QFile ca(endpoint.caFile);
        if (!ca.open(QIODevice::ReadOnly))
            return fail(
                error,
                QStringLiteral("cannot read the CA file %1: %2").arg(endpoint.caFile, ca.errorString()));
    }
    m_endpoint = endpoint;
    m_clientId = clientId.toUtf8();
    // The settings are tried once on a handle of their own, so what can never work is told now.
    mosquitto *probe = mosquitto_new(m_clientId.constData(), true, this);
    if (!probe)
        return fail(error, QStringLiteral("cannot make an MQTT client"));
    const bool ok = configure(probe, error);
    mosquitto_destroy(probe);
    if (!ok)
        return false;
    qCInfo(lcMqtt) << "connecting to" << endpoint.host << endpoint.port << (endpoint.tls ? "with TLS" : "")
                   << "as" << clientId;
    m_state = State::Waiting;
    attempt();
    return true;
}

void MqttClient::attempt()
{
    if (m_state != State::Waiting || m_lookup != -1)
        return;
    // A plain connection to a broker given by name: the name is looked up without waiting for
    // the answer, and the broker is reached by its address. Over TLS the library needs the name
    // itself, to check it against the broker's certificate, and looks it up on the spot.
    QHostAddress literal;
    if (m_endpoint.tls || literal.setAddress(m_endpoint.host)) {
        connectTo(m_endpoint.host.toUtf8());
        return;
    }
    m_lookup = QHostInfo::lookupHost(m_endpoint.host, this, [this](const QHostInfo &info) {
        m_lookup = -1;
        if (m_state != State::Waiting)
            return;
        const QList<QHostAddress> addresses = info.addresses();
        if (addresses.isEmpty()) {
            drop("the broker's name is not known"); // tried again after the next delay
            return;
        }
        // IPv4 first, where the name has both: the production's network is IPv4.
        QHostAddress to = addresses.constFirst();
        for (const QHostAddress &a : addresses)
            if (a.protocol() == QAbstractSocket::IPv4Protocol) {
                to = a;
                break;
            }
        connectTo(to.toString().toUtf8());
    });
}

void MqttClient::connectTo(const QByteArray &host)
{
    m_mosq = mosquitto_new(m_clientId.constData(), true, this);
    if (!m_mosq || !configure(m_mosq, nullptr)) {
        drop("cannot make an MQTT client");
        return;
    }
    m_state = State::Connecting;
    ++m_generation;
    m_gotConnack = false;
    m_lost = false;
    m_pending = 0;
    // The connection is opened without waiting for it: the CONNECT goes out when the socket can
    // be written, and the TLS handshake is carried on by the reads and writes that follow.
    const int rc = mosquitto_connect_async(m_mosq, host.constData(), m_endpoint.port, KeepAliveS);
    if (rc != MOSQ_ERR_SUCCESS) {
        qCDebug(lcMqtt) << "connect:" << mosquitto_strerror(rc);
        drop(mosquitto_strerror(rc));
        return;
    }
    watchSocket();
    m_connectTimeout.start();
    m_misc.start();
    settle(MOSQ_ERR_SUCCESS);
}

void MqttClient::watchSocket()
{
    const int fd = mosquitto_socket(m_mosq);
    if (fd < 0) {
        drop("no socket");
        return;
    }
    // The library opens its socket without close-on-exec: a program started from this process
    // would inherit the connection and hold it open after this client closed it, so the broker
    // would neither see the client go nor send its will.
    ::fcntl(fd, F_SETFD, ::fcntl(fd, F_GETFD) | FD_CLOEXEC);
    m_read = new QSocketNotifier(fd, QSocketNotifier::Read, this);
    connect(m_read, &QSocketNotifier::activated, this, &MqttClient::readable);
    m_write = new QSocketNotifier(fd, QSocketNotifier::Write, this);
    m_write->setEnabled(false);
    connect(m_write, &QSocketNotifier::activated, this, &MqttClient::writable);
}

void MqttClient::readable()
{
    if (m_mosq)
        settle(mosquitto_loop_read(m_mosq, 1));
}

void MqttClient::writable()
{
    if (m_mosq)
        settle(mosquitto_loop_write(m_mosq, 1));
}

void MqttClient::misc()
{
    if (m_mosq)
        settle(mosquitto_loop_misc(m_mosq));
}

void MqttClient::onConnect(mosquitto *, void *self, int rc)
{
    auto *c = static_cast<MqttClient *>(self);
    c->m_gotConnack = true;
    c->m_connackCode = rc;
}

void MqttClient::onDisconnect(mosquitto *, void *self, int)
{
    static_cast<MqttClient *>(self)->m_lost = true;
}

void MqttClient::onPublish(mosquitto *, void *self, int mid)
{
    auto *c = static_cast<MqttClient *>(self);
    if (c->m_pending > 0)
        --c->m_pending;
    if (mid == c->m_finishMid) {
        c->m_finishAcked = true;
        if (c->m_wait)
            c->m_wait->quit();
    }
}

void MqttClient::onMessage(mosquitto *, void *self, const mosquitto_message *msg)
{
    auto *c = static_cast<MqttClient *>(self);
    c->m_inbox.append({QByteArray(msg->topic),
                       QByteArray(static_cast<const char *>(msg->payload), qMax(0, msg->payloadlen))});
}

void MqttClient::settle(int rc)
{
    const QPointer<MqttClient> alive(this);
    const auto deliver = [&] {
        // Signals are emitted only here, never from inside the library: a slot may publish,
        // finish or even delete this client.
        if (m_gotConnack) {
            m_gotConnack = false;
            if (m_connackCode != 0) {
                qCWarning(lcMqtt) << "the broker refused the connection:"
                                  << mosquitto_connack_string(m_connackCode);
                m_lost = true;
            } else if (m_state == State::Connecting) {
                qCInfo(lcMqtt) << "connected to" << m_endpoint.host << m_endpoint.port;
                m_state = State::Connected;
                m_nextRetryMs = FirstRetryMs;
                m_connectTimeout.stop();
                emit connected();
                if (!alive)
                    return false;
                for (const auto &s : std::as_const(m_subscriptions))
                    if (m_mosq)
                        mosquitto_subscribe(m_mosq, nullptr, s.first.constData(), s.second);
            }
        }
        while (!m_inbox.isEmpty()) {
            const auto m = m_inbox.takeFirst();
            emit message(m.first, m.second);
            if (!alive)
                return false;
        }
        return true;
    };
    if (!deliver())
        return;
    if (m_state == State::Finished)
        return;
    if (m_mosq && (m_lost || rc != MOSQ_ERR_SUCCESS)) {
        drop(m_lost ? "the connection was closed" : mosquitto_strerror(rc));
        return;
    }
    if (m_write && m_mosq)
        m_write->setEnabled(mosquitto_want_write(m_mosq));
}

void MqttClient::drop(const char *why)
{
    const bool wasConnected = m_state == State::Connected;
    teardown();
    if (m_state == State::Finished)
        return;
    qCInfo(lcMqtt) << "MQTT connection" << (wasConnected ? "lost:" : "failed:") << why << "- again in"
                   << m_nextRetryMs << "ms";
    m_state = State::Waiting;
    m_retry.start(m_nextRetryMs);
    m_nextRetryMs = qMin(m_nextRetryMs * 2, int(LastRetryMs));
    if (wasConnected)
        emit disconnected();
}

void MqttClient::teardown()
{
    m_misc.stop();
    m_connectTimeout.stop();
    // The notifiers go before the library closes their socket; deleteLater, because this may
    // run from one of their own signals.
    for (QSocketNotifier *n : {m_read, m_write}) {
        if (n) {
            n->setEnabled(false);
            n->deleteLater();
        }
    }
    m_read = m_write = nullptr;
    if (m_mosq) {
        mosquitto_destroy(m_mosq);
        m_mosq = nullptr;
    }
    m_inbox.clear();
    m_pending = 0;
}

bool MqttClient::publish(const QByteArray &topic, const QByteArray &payload, int qos, bool retain)
{
    if (m_state != State::Connected || !m_mosq || m_pending >= MaxPending)
        return false;
    int mid = 0;
    const int rc = mosquitto_publish(m_mosq, &mid, topic.constData(), int(payload.size()),
                                     payload.constData(), qBound(0, qos, 1), retain);
    if (rc != MOSQ_ERR_SUCCESS) {
        qCDebug(lcMqtt) << "publish" << topic << "failed:" << mosquitto_strerror(rc);
        if (rc != MOSQ_ERR_INVAL && rc != MOSQ_ERR_PAYLOAD_SIZE && rc != MOSQ_ERR_MALFORMED_UTF8)
            QTimer::singleShot(0, this, [this, generation = m_generation] {
                if (generation == m_generation && m_mosq)
                    drop("cannot send");
            });
        return false;
    }
    ++m_pending;
    if (m_write)
        m_write->setEnabled(mosquitto_want_write(m_mosq));
    return true;
}

bool MqttClient::subscribe(const QByteArray &pattern, int qos)
{
    if (mosquitto_sub_topic_check(pattern.constData()) != MOSQ_ERR_SUCCESS)
        return false;
    qos = qBound(0, qos, 2);
    bool known = false;
    for (auto &s : m_subscriptions) {
        if (s.first == pattern) {
            s.second = qos;
            known = true;
        }
    }
    if (!known)
        m_subscriptions.append({pattern, qos});
    if (m_state == State::Connected && m_mosq) {
        mosquitto_subscribe(m_mosq, nullptr, pattern.constData(), qos);
        if (m_write)
            m_write->setEnabled(mosquitto_want_write(m_mosq));
    }
    return true;
}

void MqttClient::finish(const QByteArray &topic, const QByteArray &payload, int ms)
{
    if (m_state == State::Finished)
        return;
    m_retry.stop();
    if (m_state == State::Connected && m_mosq) {
        int mid = 0;
        m_finishAcked = false;
        if (mosquitto_publish(m_mosq, &mid, topic.constData(), int(payload.size()), payload.constData(), 1,
                              true) == MOSQ_ERR_SUCCESS) {
            m_finishMid = mid;
            if (m_write)
                m_write->setEnabled(mosquitto_want_write(m_mosq));
            QEventLoop loop;
            m_wait = &loop;
            QTimer::singleShot(qMax(0, ms), &loop, &QEventLoop::quit);
            // Quit also when the connection goes: nothing can be acknowledged after that.
            const auto gone = connect(this, &MqttClient::disconnected, &loop, &QEventLoop::quit);
            if (!m_finishAcked)
                loop.exec();
            disconnect(gone);
            m_wait = nullptr;
            m_finishMid = -1;
        }
        if (m_state == State::Connected && m_mosq) {
            // The DISCONNECT is written at once (the socket is idle once the last message was
            // acknowledged) and the library closes the connection after it: the broker then
            // drops the will.
            mosquitto_disconnect(m_mosq);
        }
        qCInfo(lcMqtt) << "disconnected from" << m_endpoint.host << m_endpoint.port
                       << (m_finishAcked ? "" : "(the last message was not acknowledged)");
    }
    // The connection may have been lost while waiting, and a retry armed: none follows now.
    m_retry.stop();
    const bool wasConnected = m_state == State::Connected;
    m_state = State::Finished;
    teardown();
    if (wasConnected)
        emit disconnected();
}
