#include "searchinterfaces.h"

#include <QNetworkAddressEntry>
#include <QNetworkInterface>
#include <arpa/inet.h>
#include <cerrno>
#include <cstring>
#include <netinet/in.h>
#include <sys/socket.h>

namespace SearchInterfaces {

QList<Link> usable()
{
    QList<Link> links;
    const QList<QNetworkInterface> all = QNetworkInterface::allInterfaces();
    for (const QNetworkInterface &itf : all) {
        const QNetworkInterface::InterfaceFlags flags = itf.flags();
        if (!(flags & QNetworkInterface::IsUp) || !(flags & QNetworkInterface::CanBroadcast) ||
            (flags & QNetworkInterface::IsLoopBack))
            continue;
        // A link without an IPv4 address would send from 0.0.0.0, and no reply could come back.
        const QList<QNetworkAddressEntry> entries = itf.addressEntries();
        for (const QNetworkAddressEntry &entry : entries) {
            if (entry.ip().protocol() != QAbstractSocket::IPv4Protocol)
                continue;
            links.append({itf.name(), itf.index(), entry.ip()});
            break;
        }
    }
    return links;
}

bool sendBroadcast(int fd, const Link &link, const QByteArray &frame, quint16 port)
{
    sockaddr_in to = {};
    to.sin_family = AF_INET;
    to.sin_port = htons(port);
    to.sin_addr.s_addr = htonl(INADDR_BROADCAST);

    iovec iov = {const_cast<char *>(frame.constData()), size_t(frame.size())};
    alignas(cmsghdr) char control[CMSG_SPACE(sizeof(in_pktinfo))] = {};
    msghdr msg = {};
    msg.msg_name = &to;
    msg.msg_namelen = sizeof to;
    msg.msg_iov = &iov;
    msg.msg_iovlen = 1;
    msg.msg_control = control;
    msg.msg_controllen = sizeof control;

    // The interface index chooses the link for the limited broadcast, which the routing
    // table would otherwise send out of the default route's link only; the source address
    // is the link's own.
    cmsghdr *cmsg = CMSG_FIRSTHDR(&msg);
    cmsg->cmsg_level = IPPROTO_IP;
    cmsg->cmsg_type = IP_PKTINFO;
    cmsg->cmsg_len = CMSG_LEN(sizeof(in_pktinfo));
    in_pktinfo info = {};
    info.ipi_ifindex = link.index;
    info.ipi_spec_dst.s_addr = htonl(link.address.toIPv4Address());
    std::memcpy(CMSG_DATA(cmsg), &info, sizeof info);

    ssize_t sent;
    do
        sent = sendmsg(fd, &msg, MSG_DONTWAIT);
    while (sent < 0 && errno == EINTR);
    return sent == frame.size();
}

} // namespace SearchInterfaces
