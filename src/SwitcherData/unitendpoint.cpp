#include "unitendpoint.h"

#include "datagramreader.h"
#include "unitlink.h"
#include "workdata.h"

#include <QLoggingCategory>
#include <QMetaObject>
#include <QVariant>
#include <fcntl.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

std::shared_ptr<UnitEndpoint> UnitEndpoint::shared()
{
    // Held by the links alone: when the last one lets go, the port is free again.
    static std::weak_ptr<UnitEndpoint> current;
    std::shared_ptr<UnitEndpoint> endpoint = current.lock();
    if (!endpoint) {
        endpoint.reset(new UnitEndpoint);
        current = endpoint;
    }
    return endpoint;
}

UnitEndpoint::UnitEndpoint()
{
    // Bound once, before any unit address is known, on the IPv4 wildcard, so the units'
    // replies arrive on port 7000 of any local address. Shared, so that a tool tied to one
    // unit (keepTo) can take the port beside this process.
    if (!m_socket.bind(QHostAddress::AnyIPv4, Port,
                       QAbstractSocket::ShareAddress | QAbstractSocket::ReuseAddressHint))
        qCWarning(lcLink) << "could not take UDP port" << Port
                          << "- the units' replies will not arrive:" << m_socket.errorString();
    else
        qCDebug(lcLink) << "unit endpoint on port" << Port;
    // Every open unit's replies share this socket's queue: room for bursts from all of them
    // (the kernel grants at most its configured maximum).
    m_socket.setSocketOption(QAbstractSocket::ReceiveBufferSizeSocketOption,
                             QVariant(int(SWITCHER_DATA::ReceiveBuffer)));
    const int fd = isBound() ? fcntl(int(m_socket.socketDescriptor()), F_DUPFD_CLOEXEC, 0) : -1;
    const DatagramReader::Limits limits{4096, SWITCHER_DATA::ReceiveBuffer,
                                        UnitLink::LinkDrainBatch + UnitLink::HeldMax};
    // The reader's call only queues a pass: every pass comes as a queued call of its own, so
    // the event loop runs between any two of them.
    if (fd >= 0)
        m_reader = DatagramReader::start(fd, this, "kova-unit-reader", limits, [this] { passAgainLater(); });
    if (!m_reader) {
        if (fd >= 0)
            ::close(fd);
        connect(&m_socket, &QUdpSocket::readyRead, this, &UnitEndpoint::readPending);
    }
}

UnitEndpoint::~UnitEndpoint()
{
    if (m_socket.state() == QAbstractSocket::BoundState)
        qCDebug(lcLink) << "unit endpoint closed; port" << Port << "released";
}

bool UnitEndpoint::isBound() const
{
    return m_socket.state() == QAbstractSocket::BoundState && m_socket.localPort() == Port;
}

void UnitEndpoint::route(UnitLink *link, const QVector<QHostAddress> &senders)
{
    forget(link);
    QVector<quint32> keys;
    for (const QHostAddress &sender : senders) {
        bool ok = false;
        const quint32 key = sender.toIPv4Address(&ok);
        if (!ok || key == 0 || keys.contains(key))
            continue;
        keys << key;
        if (UnitLink *other = m_bySender.value(key)) {
            // The sender moves to the newest link; the older one keeps its other senders.
            for (auto &r : m_routes)
                if (r.first == other)
                    r.second.removeAll(key);
        }
        m_bySender.insert(key, link);
    }
    m_routes.append({link, keys});
}

void UnitEndpoint::forget(UnitLink *link)
{
    for (int i = m_routes.size() - 1; i >= 0; --i) {
        if (m_routes.at(i).first != link && m_routes.at(i).first)
            continue;
        for (quint32 key : m_routes.at(i).second)
            if (m_bySender.value(key) == link || !m_bySender.value(key))
                m_bySender.remove(key);
        m_routes.removeAt(i);
    }
}

bool UnitEndpoint::hasPendingDatagrams()
{
    return m_socket.hasPendingDatagrams() || (m_reader && m_reader->holds());
}

void UnitEndpoint::send(const QByteArray &datagram, const QHostAddress &host, quint16 port)
{
    m_socket.writeDatagram(datagram, host, port);
}

bool UnitEndpoint::keepTo(const QHostAddress &unit)
{
    bool ok = false;
    const quint32 ip = unit.toIPv4Address(&ok);
    if (!isBound() || !ok)
        return false;
    // The kernel prefers a socket connected to the sender over one that is only bound, for
    // every datagram that sender sends to the port.
    sockaddr_in peer{};
    peer.sin_family = AF_INET;
    peer.sin_port = htons(Port);
    peer.sin_addr.s_addr = htonl(ip);
    const int fd = int(m_socket.socketDescriptor());
    if (::connect(fd, reinterpret_cast<const sockaddr *>(&peer), sizeof peer) != 0) {
        qCWarning(lcLink) << "could not tie the socket to" << unit.toString();
        return false;
    }
    return true;
}

void UnitEndpoint::readPending()
{
    if (m_inPass) {
        // A link's receiver waited inside the pass (a panel's short wait runs the event loop):
        // the pass under way reads on when it returns.
        passAgainLater();
        return;
    }
    m_inPass = true;
    // What the links held back from earlier passes goes first, in the order it came.
    const auto routes = m_routes;
    for (const auto &r : routes)
        if (r.first)
            r.first->takeHeld();
    if (m_reader) {
        std::vector<DatagramReader::Datagram> batch;
        m_reader->take(ReadBatch, &batch);
        for (const DatagramReader::Datagram &d : batch)
            dispatch(d.sender, d.bytes);
    }
    QByteArray datagram;
    QHostAddress sender;
    for (int n = 0; !m_reader && n < ReadBatch && m_socket.hasPendingDatagrams(); ++n) {
        datagram.resize(int(qMax<qint64>(m_socket.pendingDatagramSize(), 0)));
        const qint64 got = m_socket.readDatagram(datagram.data(), datagram.size(), &sender);
        // An empty or failed read has consumed its datagram; the ones behind it still count.
        if (got <= 0)
            continue;
        dispatch(sender, got == datagram.size() ? datagram : datagram.left(int(got)));
    }
    endPass();
    m_inPass = false;
    // Whatever is left of a flood waits for the next pass, after paints and clicks have had
    // theirs: the socket is still readable, so its notifier fires again. Datagrams a link held
    // back need a pass of their own.
    for (const auto &r : qAsConst(m_routes))
        if (r.first && r.first->holdsBack())
            passAgainLater();
}

void UnitEndpoint::dispatch(const QHostAddress &sender, const QByteArray &datagram)
{
    UnitLink *link = m_bySender.value(sender.toIPv4Address());
    if (!link) {
        ++m_strangers;
        qCDebug(lcLink) << "dropped a datagram of" << datagram.size() << "bytes from" << sender.toString()
                        << "- no open unit; dropped so far:" << m_strangers;
        return;
    }
    link->offer(datagram);
}

void UnitEndpoint::endPass()
{
    const auto routes = m_routes;
    for (const auto &r : routes)
        if (r.first)
            r.first->endPass();
}

void UnitEndpoint::passAgainLater()
{
    if (m_passQueued)
        return;
    m_passQueued = true;
    QMetaObject::invokeMethod(
        this,
        [this] {
            m_passQueued = false;
            readPending();
        },
        Qt::QueuedConnection);
}

void UnitEndpoint::deliver(const QHostAddress &sender, const QByteArray &datagram)
{
    dispatch(sender, datagram);
    endPass();
}
