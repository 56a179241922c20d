#include "oscremote.h"

#include "remotetarget.h"

#include <QHostAddress>
#include <QLoggingCategory>
#include <QSocketNotifier>
#include <algorithm>
#include <arpa/inet.h>
#include <cerrno>
#include <cmath>
#include <cstring>
#include <fcntl.h>
#include <iterator>
#include <lo/lo.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

Q_LOGGING_CATEGORY(lcOsc, "kova.osc", QtInfoMsg)

namespace {

void onLoError(int num, const char *msg, const char *where)
{
    qCDebug(lcOsc) << "liblo:" << num << msg << (where ? where : "");
}

bool hasPatternChars(const char *path)
{
    return std::strpbrk(path, "*?[]{}") != nullptr;
}

const QString NoPanel = QStringLiteral("no panel is open");
const QByteArray UnitPrefix = QByteArrayLiteral("/kova/unit/");

} // namespace

OscRemote::OscRemote(QObject *parent) : QObject(parent)
{
    m_stateWait.setSingleShot(true);
    m_stateWait.setInterval(StateWaitMs);
    connect(&m_stateWait, &QTimer::timeout, this, &OscRemote::stateArrived);
}

OscRemote::~OscRemote()
{
    delete m_notifier;
    m_subscribers.clear();
    m_waiting.clear();
    if (m_server)
        lo_server_free(m_server);
}

bool OscRemote::listen(const QHostAddress &address, quint16 port, QString *error)
{
    const auto failWith = [error](const QString &why) {
        if (error)
            *error = why;
        return false;
    };
    if (m_server)
        return failWith(QStringLiteral("the OSC remote is already listening"));
    bool ipv4 = false;
    const quint32 ip = address.toIPv4Address(&ipv4);
    if (!ipv4 || port == 0)
        return failWith(QStringLiteral("the OSC remote needs an IPv4 address and a port from 1 to 65535"));

    lo_server server = lo_server_new_with_proto(nullptr, LO_UDP, &onLoError);
    if (!server)
        return failWith(QStringLiteral("cannot open a UDP socket for OSC"));
    // liblo's servers bind every address. The remote must listen only where it is told to, so
    // the server's socket is replaced, under the same descriptor, by one bound to that address.
    const int fd = lo_server_get_socket_fd(server);
    sockaddr_in at{};
    at.sin_family = AF_INET;
    at.sin_port = htons(port);
    at.sin_addr.s_addr = htonl(ip);
    const int own = ::socket(AF_INET, SOCK_DGRAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
    if (own < 0 || ::bind(own, reinterpret_cast<const sockaddr *>(&at), sizeof at) != 0 ||
        ::dup3(own, fd, O_CLOEXEC) < 0) {
        const QString why = QString::fromLocal8Bit(std::strerror(errno));
        if (own >= 0)
            ::close(own);
        lo_server_free(server);
        return failWith(
            QStringLiteral("cannot listen for OSC on %1:%2: %3").arg(address.toString()).arg(port).arg(why));
    }
    ::close(own);

    m_server = server;
    m_port = port;
    // Bundles act when they arrive, whatever their time tag: nothing here runs a schedule.
    lo_server_enable_queue(m_server, 0, 1);
    static const struct
    {
        const char *name;
        Handler handler;
    } table[] = {
        {"cut", &OscRemote::keyCommand},
        {"auto", &OscRemote::keyCommand},
        {"ftb", &OscRemote::keyCommand},
        {"still", &OscRemote::keyCommand},
        {"mute", &OscRemote::keyCommand},
        {"pgm", &OscRemote::busCommand},
        {"pvw", &OscRemote::busCommand},
        {"fader", &OscRemote::faderCommand},
        {"transition", &OscRemote::transitionCommand},
        {"pip", &OscRemote::lampCommand},
        {"pop", &OscRemote::lampCommand},
        {"rec", &OscRemote::lampCommand},
        {"stream", &OscRemote::lampCommand},
        {"key", &OscRemote::namedKeyCommand},
        {"state", &OscRemote::stateCommand},
        {"subscribe", &OscRemote::subscribeCommand},
        {"unsubscribe", &OscRemote::unsubscribeCommand},
    };
    // liblo keeps pointers into m_routes: it is filled once and never grows after.
    m_routes.reserve(std::size(table));
    for (const auto &entry : table) {
        m_routes.push_back({this, QByteArray("/kova/") + entry.name, entry.handler});
        lo_server_add_method(m_server, m_routes.back().path.constData(), nullptr, &OscRemote::onMethod,
                             &m_routes.back());
    }
    // Added last, so liblo offers every message to the routes first.
    lo_server_add_method(m_server, nullptr, nullptr, &OscRemote::onUnmatched, this);

    m_notifier = new QSocketNotifier(fd, QSocketNotifier::Read);
    connect(m_notifier, &QSocketNotifier::activated, this, &OscRemote::readPending);
    return true;
}

void OscRemote::readPending()
{
    // A panel key may wait with the event loop running; the notifier is off meanwhile, so
    // liblo is never entered again from inside its own dispatch.
    m_notifier->setEnabled(false);
    for (int n = 0; n < BatchSize && lo_server_recv_noblock(m_server, 0) > 0; ++n) {
    }
    m_notifier->setEnabled(true);
}

void OscRemote::dispatch(const QByteArray &datagram)
{
    if (!m_server)
        return;
    QByteArray copy(datagram); // liblo turns the arguments' byte order in place
    lo_server_dispatch_data(m_server, copy.data(), size_t(copy.size()));
}

int OscRemote::onMethod(const char *, const char *types, lo_arg **argv, int argc, lo_message msg, void *data)
{
    const Route &route = *static_cast<const Route *>(data);
    const Request r{QString::fromLatin1(route.path.mid(6)), types, argv, argc, lo_message_get_source(msg)};
    (route.remote->*route.handler)(r);
    return 0;
}

int OscRemote::onUnmatched(const char *path, const char *types, lo_arg **argv, int argc, lo_message msg,
                           void *data)
{
    auto *self = static_cast<OscRemote *>(data);
    // /kova/unit/ID/COMMAND: the command's own route, for that unit.
    const QByteArray whole(path);
    if (whole.startsWith(UnitPrefix) && !hasPatternChars(path)) {
        const QByteArray rest = whole.mid(UnitPrefix.size());
        const int slash = rest.indexOf('/');
        if (slash > 0) {
            if (const Route *route = self->routeFor("/kova/" + rest.mid(slash + 1))) {
                const Request r{
                    QString::fromLatin1(rest.mid(slash + 1)), types, argv, argc, lo_message_get_source(msg),
                    QString::fromLatin1(rest.left(slash))};
                (self->*route->handler)(r);
                return 0;
            }
        }
    }
    // A pattern reaches every route it matches and this handler too; it is unknown only when
    // it matched none.
    if (hasPatternChars(path)) {
        for (const Route &route : self->m_routes)
            if (lo_pattern_match(route.path.constData(), path))
                return 0;
    }
    const Request r{QString(), types, argv, argc, lo_message_get_source(msg)};
    self->fail(r, QStringLiteral("unknown address %1").arg(QString::fromUtf8(path)));
    return 0;
}

const OscRemote::Route *OscRemote::routeFor(const QByteArray &path) const
{
    for (const Route &route : m_routes)
        if (route.path == path)
            return &route;
    return nullptr;
}

RemoteTarget *OscRemote::target(const Request &r)
{
    if (!r.unit.isEmpty()) {
        RemoteTarget *t = m_unitTargets.value(r.unit);
        if (!t)
            fail(r, QStringLiteral("no unit %1 is open").arg(r.unit));
        return t;
    }
    if (!m_target)
        fail(r, NoPanel);
    return m_target;
}

void OscRemote::press(const Request &r, const QString &key)
{
    RemoteTarget *t = r.unit.isEmpty() ? m_target : m_unitTargets.value(r.unit);
    if (!t)
        return;
    if (!t->hasKey(key))
        fail(r, QStringLiteral("this panel has no %1 key").arg(key));
    else if (!t->pressKey(key))
        fail(r, QStringLiteral("the panel did not take %1").arg(key));
}

void OscRemote::setUnitTarget(const QString &id, RemoteTarget *target)
{
    if (target) {
        m_unitTargets.insert(id, target);
    } else {
        m_unitTargets.remove(id);
        m_unitStates.remove(id);
    }
}

void OscRemote::setUnits(const QVector<UnitEntry> &units)
{
    if (units == m_units)
        return;
    m_units = units;
    for (const Peer &p : m_subscribers)
        sendUnits(p.address.get());
}

void OscRemote::sendUnits(lo_address to)
{
    lo_message m = lo_message_new();
    for (const UnitEntry &u : qAsConst(m_units)) {
        lo_message_add_int32(m, u.number);
        lo_message_add_string(m, u.id.toUtf8().constData());
        lo_message_add_string(m, u.model.toUtf8().constData());
    }
    lo_send_message_from(to, m_server, "/kova/units", m);
    lo_message_free(m);
}

void OscRemote::setUnitState(const QString &id, const OscFields &fields)
{
    m_unitStates.insert(id, fields);
}

void OscRemote::publishUnit(const QString &id, const OscFields &changed)
{
    update(m_unitStates[id], changed);
    const QString prefix = QStringLiteral("unit/%1/").arg(id);
    for (const auto &field : changed)
        for (const Peer &p : m_subscribers)
            send(p.address.get(), prefix + field.first, field.second);
}

void OscRemote::update(OscFields &state, const OscFields &changed)
{
    for (const auto &field : changed) {
        auto it = std::find_if(state.begin(), state.end(), [&field](const QPair<QString, QVariant> &f) {
            return f.first == field.first;
        });
        if (it != state.end())
            it->second = field.second;
        else
            state.append(field);
    }
}

void OscRemote::keyCommand(const Request &r)
{
    if (!target(r))
        return;
    if (r.argc != 0)
        return fail(r, QStringLiteral("%1 takes no arguments").arg(r.name));
    press(r, r.name);
}

void OscRemote::busCommand(const Request &r)
{
    RemoteTarget *t = target(r);
    if (!t)
        return;
    const int inputs = t->inputCount();
    if (r.argc != 1 || r.types[0] != LO_INT32 || r.argv[0]->i < 1 || r.argv[0]->i > inputs)
        return fail(r, QStringLiteral("%1 takes 1 to %2").arg(r.name).arg(inputs));
    press(r, r.name + QString::number(r.argv[0]->i));
}

void OscRemote::faderCommand(const Request &r)
{
    RemoteTarget *t = target(r);
    if (!t)
        return;
    double f = NAN;
    if (r.argc == 1 && r.types[0] == LO_FLOAT)
        f = r.argv[0]->f;
    else if (r.argc == 1 && r.types[0] == LO_DOUBLE)
        f = r.argv[0]->d;
    else if (r.argc == 1 && r.types[0] == LO_INT32)
        f = r.argv[0]->i;
    if (!(f >= 0.0 && f <= 1.0))
        return fail(r, QStringLiteral("fader takes 0.0 to 1.0"));
    if (!t->setFader(f))
        fail(r, QStringLiteral("the panel did not take the fader"));
}

void OscRemote::transitionCommand(const Request &r)
{
    if (!target(r))
        return;
    const QString effect =
        r.argc == 1 && r.types[0] == LO_STRING ? QString::fromUtf8(&r.argv[0]->s) : QString();
    if (effect != QLatin1String("mix") && effect != QLatin1String("fade") && effect != QLatin1String("wipe"))
        return fail(r, QStringLiteral("transition takes mix, fade or wipe"));
    press(r, effect);
}

void OscRemote::lampCommand(const Request &r)
{
    RemoteTarget *t = target(r);
    if (!t)
        return;
    int on = -1;
    if (r.argc == 1 && r.types[0] == LO_INT32 && (r.argv[0]->i == 0 || r.argv[0]->i == 1))
        on = r.argv[0]->i;
    else if (r.argc == 1 && (r.types[0] == LO_TRUE || r.types[0] == LO_FALSE))
        on = r.types[0] == LO_TRUE;
    if (on < 0)
        return fail(r, QStringLiteral("%1 takes 1 (on) or 0 (off)").arg(r.name));
    if (!t->hasKey(r.name))
        return fail(r, QStringLiteral("this panel has no %1 key").arg(r.name));
    // The key toggles: without a lamp to compare, "on" could as well turn it off.
    const std::optional<bool> lit = t->keyLit(r.name);
    if (!lit)
        return fail(r, QStringLiteral("the %1 key has no lamp here; /kova/key %1 presses it").arg(r.name));
    if (*lit != bool(on))
        press(r, r.name);
}

void OscRemote::namedKeyCommand(const Request &r)
{
    if (!target(r))
        return;
    if (r.argc != 1 || r.types[0] != LO_STRING)
        return fail(r, QStringLiteral("key takes the key's name"));
    press(r, QString::fromUtf8(&r.argv[0]->s));
}

void OscRemote::stateCommand(const Request &r)
{
    if (r.argc != 0)
        return fail(r, QStringLiteral("state takes no arguments"));
    const Peer asker = peer(r.sender, QString());
    if (!asker.address)
        return;
    if (!r.unit.isEmpty()) {
        // One unit's state as last reported: the link watch already asks it while followed.
        if (!target(r))
            return;
        const QString prefix = QStringLiteral("unit/%1/").arg(r.unit);
        for (const auto &field : m_unitStates.value(r.unit))
            send(asker.address.get(), prefix + field.first, field.second);
        return;
    }
    if (m_target && m_target->requestState()) {
        addPeer(m_waiting, asker);
        if (!m_stateWait.isActive())
            m_stateWait.start();
    } else {
        sendWholeState(asker.address.get());
    }
}

void OscRemote::stateArrived()
{
    m_stateWait.stop();
    const std::vector<Peer> waiting = std::move(m_waiting);
    m_waiting.clear();
    for (const Peer &p : waiting)
        sendWholeState(p.address.get());
}

bool OscRemote::portArgument(const Request &r, QString *port)
{
    if (r.argc == 0)
        return true;
    if (r.argc == 1 && r.types[0] == LO_INT32 && r.argv[0]->i >= 1 && r.argv[0]->i <= 65535) {
        *port = QString::number(r.argv[0]->i);
        return true;
    }
    fail(r, QStringLiteral("%1 takes no argument or a port from 1 to 65535").arg(r.name));
    return false;
}

void OscRemote::subscribeCommand(const Request &r)
{
    QString port;
    if (!portArgument(r, &port))
        return;
    const Peer p = peer(r.sender, port);
    if (!p.address)
        return;
    const auto same = [&p](const Peer &q) { return q.host == p.host && q.port == p.port; };
    if (std::none_of(m_subscribers.begin(), m_subscribers.end(), same)) {
        if (int(m_subscribers.size()) >= MaxSubscribers)
            return fail(r, QStringLiteral("too many subscribers (%1)").arg(MaxSubscribers));
        m_subscribers.push_back(p);
    }
    sendWholeState(p.address.get());
    // Every open unit under its own ID, then the list of them.
    for (const UnitEntry &u : qAsConst(m_units)) {
        const QString prefix = QStringLiteral("unit/%1/").arg(u.id);
        for (const auto &field : m_unitStates.value(u.id))
            send(p.address.get(), prefix + field.first, field.second);
    }
    if (!m_units.isEmpty())
        sendUnits(p.address.get());
}

void OscRemote::unsubscribeCommand(const Request &r)
{
    QString port;
    if (!portArgument(r, &port))
        return;
    const Peer p = peer(r.sender, port);
    m_subscribers.erase(std::remove_if(m_subscribers.begin(), m_subscribers.end(),
                                       [&p](const Peer &q) { return q.host == p.host && q.port == p.port; }),
                        m_subscribers.end());
}

OscRemote::Peer OscRemote::peer(lo_address sender, const QString &port)
{
    Peer p;
    const char *host = sender ? lo_address_get_hostname(sender) : nullptr;
    const char *from = sender ? lo_address_get_port(sender) : nullptr;
    // Only numeric hosts: a name would be looked up, and that blocks.
    if (!host || QHostAddress(QString::fromLatin1(host)).isNull() || !from || !*from)
        return p;
    p.host = QString::fromLatin1(host);
    p.port = port.isEmpty() ? QString::fromLatin1(from) : port;
    p.address.reset(lo_address_new(host, p.port.toLatin1().constData()), &lo_address_free);
    return p;
}

void OscRemote::addPeer(std::vector<Peer> &peers, const Peer &p)
{
    if (!p.address || int(peers.size()) >= MaxSubscribers)
        return;
    for (const Peer &q : peers)
        if (q.host == p.host && q.port == p.port)
            return;
    peers.push_back(p);
}

void OscRemote::fail(const Request &r, const QString &reason)
{
    qCDebug(lcOsc) << "refused:" << reason;
    const Peer p = peer(r.sender, QString());
    if (p.address)
        send(p.address.get(), QStringLiteral("error"), reason);
}

void OscRemote::send(lo_address to, const QString &name, const QVariant &value)
{
    lo_message m = lo_message_new();
    switch (value.userType()) {
    case QMetaType::Bool:
        lo_message_add_int32(m, value.toBool() ? 1 : 0);
        break;
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::UChar:
        lo_message_add_int32(m, value.toInt());
        break;
    case QMetaType::Double:
    case QMetaType::Float:
        lo_message_add_float(m, value.toFloat());
        break;
    default:
        lo_message_add_string(m, value.toString().toUtf8().constData());
    }
    // The socket does not block: a datagram the kernel cannot take now is dropped, as UDP may.
    lo_send_message_from(to, m_server, (QStringLiteral("/kova/") + name).toUtf8().constData(), m);
    lo_message_free(m);
}

void OscRemote::sendWholeState(lo_address to)
{
    for (const auto &field : qAsConst(m_state))
        send(to, field.first, field.second);
}

void OscRemote::publish(const OscFields &changed)
{
    update(m_state, changed);
    for (const auto &field : changed)
        for (const Peer &p : m_subscribers)
            send(p.address.get(), field.first, field.second);
}
