#pragma once

#include <QByteArray>
#include <QHash>
#include <QHostAddress>
#include <QObject>
#include <QPointer>
#include <QUdpSocket>
#include <QVector>
#include <memory>

class DatagramReader;
class UnitLink;

// The process's one socket on local port 7000, shared by every unit link: each link sends its
// commands from it, and each datagram read from it goes to the link whose unit (main board or
// HIS board) sent it. A datagram from any other sender is dropped. The socket is bound when the
// first link asks for the endpoint and closed when the last link lets go of it.
//
// Units reply to port 7000 whatever port a command came from, so two sockets on the port
// would split the replies between them; one socket with a table keyed by the sender keeps
// every unit's replies with its own link.
class UnitEndpoint : public QObject
{
    Q_OBJECT
public:
    static constexpr quint16 Port = 7000;
    // Datagrams handed to the links per pass of the event loop, for all links together.
    // Handing one on costs well under a microsecond; the links' own work is bounded by their
    // batches (UnitLink), so a flood from one sender is passed over quickly and the others'
    // replies are not left behind it.
    static constexpr int ReadBatch = 1024;

    // The endpoint of this process, made and bound on first use.
    static std::shared_ptr<UnitEndpoint> shared();
    ~UnitEndpoint() override;

    // True while the socket holds local port 7000.
    bool isBound() const;
    QString errorString() const { return m_socket.errorString(); }
    // The link's unit: `senders` are the IPv4 addresses whose datagrams go to it (an empty
    // list or the null address takes nothing). A sender already routed to another link moves
    // to this one: the newest binding wins.
    void route(UnitLink *link, const QVector<QHostAddress> &senders);
    void forget(UnitLink *link);
    // Sends from port 7000 (from a port of the system's choosing while it is not held).
    void send(const QByteArray &datagram, const QHostAddress &host, quint16 port = Port);

    // Ties the socket to one unit, so the kernel hands that unit's datagrams to this process
    // ahead of another program holding the port unconnected (a running KOVA): a short-lived
    // tool can then talk to a unit whose panel is open. Datagrams from other senders no longer
    // arrive here. False when the socket is not bound or the kernel refuses.
    bool keepTo(const QHostAddress &unit);

    // Datagrams not yet handed to their links: in the kernel's queue or the reader's.
    bool hasPendingDatagrams();
    // Datagrams dropped because no link's unit sent them.
    quint64 strangers() const { return m_strangers; }
    int linkCount() const { return m_routes.size(); }

    // One datagram as if read from the socket: routed, then each link's pass ended (for a
    // test or a fuzzer).
    void deliver(const QHostAddress &sender, const QByteArray &datagram);

private:
    UnitEndpoint();
    void readPending();
    void dispatch(const QHostAddress &sender, const QByteArray &datagram);
    void endPass();
    void passAgainLater();

    QUdpSocket m_socket;
    // Reads the socket on a thread of its own, at most a link's worth from each sender, so a
    // sender flooding the port can neither fill the kernel's queue (which would drop the
    // other units' replies) nor crowd them out; nullptr when no thread could be had, and the
    // socket is read here as it reports datagrams.
    DatagramReader *m_reader = nullptr;
    // Sender (IPv4, host order) to its link.
    QHash<quint32, QPointer<UnitLink>> m_bySender;
    // Each link with the senders routed to it, in the order the links were routed.
    QVector<QPair<QPointer<UnitLink>, QVector<quint32>>> m_routes;
    quint64 m_strangers = 0;
    bool m_inPass = false;
    bool m_passQueued = false;
};
