#pragma once

#include <QByteArray>
#include <QElapsedTimer>
#include <QHostAddress>
#include <QList>
#include <QSignalSpy>
#include <QUdpSocket>

// Stands in for a unit on the loopback: listens on <address>:7000 next to the link's own
// socket on port 7000, and hands back what arrived in order. A known marker frame sent
// after an action bounds the capture, so "nothing was sent" needs no fixed wait.
class WireCapture
{
public:
    explicit WireCapture(const QString &address = QStringLiteral("127.0.0.2"))
    {
        m_ok = m_socket.bind(QHostAddress(address), 7000,
                             QUdpSocket::ShareAddress | QUdpSocket::ReuseAddressHint);
    }

    bool isBound() const { return m_ok; }
    QString error() const { return m_socket.errorString(); }

    // Waits (up to `ms`) until at least `count` datagrams are held.
    bool waitFor(int count, int ms = 3000)
    {
        QElapsedTimer timer;
        timer.start();
        drain();
        while (m_got.size() < count && timer.elapsed() < ms) {
            QSignalSpy spy(&m_socket, &QUdpSocket::readyRead);
            if (!m_socket.hasPendingDatagrams())
                spy.wait(50);
            drain();
        }
        return m_got.size() >= count;
    }

    // Everything that arrived before the first datagram equal to `marker`; the marker and
    // what came before it are consumed. Fails (returns false) if the marker never comes.
    bool takeUntil(const QByteArray &marker, QList<QByteArray> *before, int ms = 3000)
    {
        QElapsedTimer timer;
        timer.start();
        for (;;) {
            drain();
            const int at = m_got.indexOf(marker);
            if (at >= 0) {
                *before = m_got.mid(0, at);
                m_got = m_got.mid(at + 1);
                return true;
            }
            if (timer.elapsed() > ms)
                return false;
            QSignalSpy spy(&m_socket, &QUdpSocket::readyRead);
            if (!m_socket.hasPendingDatagrams())
                spy.wait(50);
        }
    }

    // What arrived until `count` datagrams are held or `ms` have passed.
    QList<QByteArray> take(int count, int ms = 3000)
    {
        waitFor(count, ms);
        return takeAll();
    }

    // Everything before `marker`, or a list naming the loss if the marker never came.
    QList<QByteArray> until(const QByteArray &marker)
    {
        QList<QByteArray> got;
        if (!takeUntil(marker, &got))
            got << QByteArray("marker lost");
        return got;
    }

    // Answers as the unit would: from this address to the link on 127.0.0.1:7000.
    void reply(const QByteArray &datagram)
    {
        m_socket.writeDatagram(datagram, QHostAddress::LocalHost, 7000);
    }

    QList<QByteArray> takeAll()
    {
        drain();
        QList<QByteArray> out = m_got;
        m_got.clear();
        return out;
    }

private:
    void drain()
    {
        while (m_socket.hasPendingDatagrams()) {
            QByteArray d(int(qMax<qint64>(0, m_socket.pendingDatagramSize())), Qt::Uninitialized);
            const qint64 n = m_socket.readDatagram(d.data(), d.size());
            if (n < 0)
                break;
            d.resize(int(n));
            m_got.append(d);
        }
    }

    QUdpSocket m_socket;
    QList<QByteArray> m_got;
    bool m_ok = false;
};
