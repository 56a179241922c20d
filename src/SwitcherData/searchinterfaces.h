#pragma once

#include <QByteArray>
#include <QHostAddress>
#include <QList>
#include <QString>

// The links a search leaves by. The units answer a broadcast only on their own network, and
// an operator PC often has two: an office network holding the default route and the
// switchers' own. The limited broadcast follows the routing table out of one link only, so
// the search is sent once out of each link that can carry it.
namespace SearchInterfaces {

struct Link
{
    QString name;
    int index = 0;        // kernel interface index
    QHostAddress address; // the link's first IPv4 address: the replies come back to it
};

// Every IPv4 link that is up, can broadcast and has an IPv4 address, loopback excluded,
// in the order the system lists them.
QList<Link> usable();

// Sends `frame` to 255.255.255.255:`port` from the UDP socket `fd` out of `link` only, from
// the link's own address, so the replies come back to the same socket. False when the
// kernel refused it (the link went down meanwhile, say).
bool sendBroadcast(int fd, const Link &link, const QByteArray &frame, quint16 port);

} // namespace SearchInterfaces
