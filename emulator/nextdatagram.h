#pragma once

#include <QByteArray>
#include <QHostAddress>
#include <QUdpSocket>

// Reads the next waiting datagram of `socket`, with its sender, whatever its size (an empty
// one included); false when nothing could be read.
inline bool nextDatagram(QUdpSocket *socket, QByteArray *datagram, QHostAddress *from, quint16 *port)
{
    const qint64 size = socket->pendingDatagramSize();
    datagram->fill('\0', int(qMax<qint64>(size, 0)));
    const qint64 got = socket->readDatagram(datagram->data(), datagram->size(), from, port);
    if (got < 0)
        return false;
    datagram->truncate(int(got));
    return true;
}
