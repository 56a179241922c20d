#pragma once

#include <QByteArray>
#include <QHash>
#include <QObject>
#include <QPair>
#include <QString>
#include <QTimer>
#include <QVariant>
#include <QVector>
#include <lo/lo_types.h>
#include <memory>
#include <vector>

class QHostAddress;
class QSocketNotifier;
class RemoteTarget;

// Named state fields as the remote sends them: /kova/<name> with an int, float or string.
using OscFields = QVector<QPair<QString, QVariant>>;

// The OSC remote: reads commands for the open panel from one UDP port and tells subscribers
// what changed. liblo decodes, encodes, unpacks bundles and matches address patterns; its
// low-level server is read from the Qt event loop, never from a thread of its own. The address
// space is written out in docs/osc.md.
class OscRemote : public QObject
{
    Q_OBJECT
public:
    static constexpr int MaxSubscribers = 32;
    // Datagrams read per wake-up of the socket: a flood cannot hold the event loop for long.
    static constexpr int BatchSize = 32;
    // How long /kova/state waits for the unit before it answers with what is known.
    static constexpr int StateWaitMs = 1000;

    explicit OscRemote(QObject *parent = nullptr);
    ~OscRemote() override;

    // Binds UDP `port` on the IPv4 `address` and starts reading; false, with the reason in
    // `error`, when it cannot.
    bool listen(const QHostAddress &address, quint16 port, QString *error = nullptr);
    quint16 port() const { return m_port; }

    // The open panel that had the focus last, or nullptr while none is open: /kova/COMMAND
    // acts on it. Not owned: the owner clears it before the panel goes.
    void setTarget(RemoteTarget *target) { m_target = target; }
    // Each open unit by its ID (its main-board address with dashes for dots): what
    // /kova/unit/ID/COMMAND acts on. nullptr forgets the unit.
    void setUnitTarget(const QString &id, RemoteTarget *target);
    // The open units in their order, each its number, ID and model: told to subscribers as
    // /kova/units whenever it changes, and to each new subscriber.
    struct UnitEntry
    {
        int number;
        QString id;
        QString model;
        bool operator==(const UnitEntry &o) const
        {
            return number == o.number && id == o.id && model == o.model;
        }
    };
    void setUnits(const QVector<UnitEntry> &units);
    // A unit's whole state (for new subscribers), and what changed of it, told to subscribers
    // as /kova/unit/ID/FIELD.
    void setUnitState(const QString &id, const OscFields &fields);
    void publishUnit(const QString &id, const OscFields &changed);

    // The whole state a new subscriber (or a /kova/state asker) is told; publish() keeps it up
    // to date.
    void setWholeState(const OscFields &fields) { m_state = fields; }
    // One message per field to every subscriber.
    void publish(const OscFields &changed);
    // The unit's state has come in (after setWholeState): answers those waiting on /kova/state.
    void stateArrived();
    int subscriberCount() const { return int(m_subscribers.size()); }

    // One datagram through the dispatcher, as if it had been read from the socket (the fuzzer's
    // way in; replies go nowhere).
    void dispatch(const QByteArray &datagram);

private:
    struct Peer
    {
        QString host;
        QString port;
        std::shared_ptr<std::remove_pointer_t<lo_address>> address;
    };
    struct Request
    {
        QString name; // the command's last path segment
        const char *types;
        lo_arg **argv;
        int argc;
        lo_address sender;
        QString unit = QString(); // the ID of /kova/unit/ID/COMMAND; empty for /kova/COMMAND
    };
    using Handler = void (OscRemote::*)(const Request &);
    struct Route
    {
        OscRemote *remote;
        QByteArray path;
        Handler handler;
    };

    static int onMethod(const char *path, const char *types, lo_arg **argv, int argc, lo_message msg,
                        void *route);
    static int onUnmatched(const char *path, const char *types, lo_arg **argv, int argc, lo_message msg,
                           void *remote);
    void readPending();

    void keyCommand(const Request &r);
    void busCommand(const Request &r);
    void faderCommand(const Request &r);
    void transitionCommand(const Request &r);
    void lampCommand(const Request &r);
    void namedKeyCommand(const Request &r);
    void stateCommand(const Request &r);
    void subscribeCommand(const Request &r);
    void unsubscribeCommand(const Request &r);

    RemoteTarget *target(const Request &r);
    void press(const Request &r, const QString &key);
    void fail(const Request &r, const QString &reason);
    bool portArgument(const Request &r, QString *port);
    void send(lo_address to, const QString &name, const QVariant &value);
    void sendWholeState(lo_address to);
    void sendUnits(lo_address to);
    const Route *routeFor(const QByteArray &path) const;
    static void update(OscFields &state, const OscFields &changed);
    static Peer peer(lo_address sender, const QString &port);
    static void addPeer(std::vector<Peer> &peers, const Peer &p);

    lo_server m_server = nullptr;
    quint16 m_port = 0;
    QSocketNotifier *m_notifier = nullptr;
    std::vector<Route> m_routes;
    RemoteTarget *m_target = nullptr;
    OscFields m_state;
    QHash<QString, RemoteTarget *> m_unitTargets;
    QVector<UnitEntry> m_units;
    QHash<QString, OscFields> m_unitStates;
    std::vector<Peer> m_subscribers;
    std::vector<Peer> m_waiting; // asked /kova/state, wait for the unit's reply
    QTimer m_stateWait;
};
