#pragma once

#include <QByteArray>
#include <QElapsedTimer>
#include <QHostAddress>
#include <QList>
#include <QNetworkDatagram>
#include <QSignalSpy>
#include <QUdpSocket>
#include <functional>
#include <utility>

// A unit on the loopback (or any other listener): listens on <address>:<port> and hands back
// what arrived, in order. A marker sent after an action bounds the capture, so "nothing was
// sent" needs no fixed wait.
class WireCapture
{
public:
    explicit WireCapture(const QString &address = QStringLiteral("127.0.0.2"), quint16 port = 7000)
    {
        m_ok = m_socket.bind(QHostAddress(address), port,
                             QUdpSocket::ShareAddress | QUdpSocket::ReuseAddressHint);
    }

    bool isBound() const { return m_ok; }

    // Waits (up to `ms`) until at least `count` datagrams are held.
    bool waitFor(int count, int ms = 3000)
    {
        return waitUntil([&] { return m_got.size() >= count; }, ms);
    }

    // What arrived until `count` datagrams are held or `ms` have passed.
    QList<QByteArray> take(int count, int ms = 3000)
    {
        waitFor(count, ms);
        return takeAll();
    }

    // Everything before the first datagram equal to `marker` (both consumed), or a list
    // naming the loss if the marker never came.
    QList<QByteArray> until(const QByteArray &marker)
    {
        if (!waitUntil([&] { return m_got.contains(marker); }, 3000))
            return {QByteArray("marker lost")};
        const int at = m_got.indexOf(marker);
        const QList<QByteArray> before = m_got.mid(0, at);
        m_got = m_got.mid(at + 1);
        return before;
    }

    QList<QByteArray> takeAll()
    {
        drain();
        return std::exchange(m_got, {});
    }

    // Answers as the unit would: from this address to the link on 127.0.0.1:7000.
    void reply(const QByteArray &datagram)
    {
        m_socket.writeDatagram(datagram, QHostAddress::LocalHost, 7000);
    }

private:
    bool waitUntil(const std::function<bool()> &done, int ms)
    {
        QElapsedTimer timer;
        timer.start();
        for (drain(); !done(); drain()) {
            if (timer.elapsed() > ms)
                return false;
            QSignalSpy spy(&m_socket, &QUdpSocket::readyRead);
            if (!m_socket.hasPendingDatagrams())
                spy.wait(50);
        }
        return true;
    }

    void drain()
    {
        while (m_socket.hasPendingDatagrams())
            m_got << m_socket.receiveDatagram().data();
    }

    QUdpSocket m_socket;
    QList<QByteArray> m_got;
    bool m_ok = false;
};
