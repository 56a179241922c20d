#pragma once

#include <QtGlobal>
#include <cstring>
#include <sys/socket.h>
#include <sys/uio.h>
#include <time.h>

// The clocks the benchmarks time with: the monotonic clock, and the kernel's stamp of a
// datagram's arrival in its socket (SO_TIMESTAMPNS, on the real-time clock) moved onto it.
namespace BenchClock {

inline qint64 nowNs()
{
    timespec ts{};
    clock_gettime(CLOCK_MONOTONIC, &ts);
    return qint64(ts.tv_sec) * 1000000000 + ts.tv_nsec;
}

// The arrival stamp a received message carries, on the monotonic clock; 0 without one.
inline qint64 arrivalNs(msghdr *msg)
{
    for (cmsghdr *c = CMSG_FIRSTHDR(msg); c; c = CMSG_NXTHDR(msg, c)) {
        if (c->cmsg_level == SOL_SOCKET && c->cmsg_type == SCM_TIMESTAMPNS) {
            timespec k{}, real{};
            std::memcpy(&k, CMSG_DATA(c), sizeof k);
            clock_gettime(CLOCK_REALTIME, &real);
            const qint64 realNs = qint64(real.tv_sec) * 1000000000 + real.tv_nsec;
            return qint64(k.tv_sec) * 1000000000 + k.tv_nsec - (realNs - nowNs());
        }
    }
    return 0;
}

// Reads one datagram with `flags`; its length, and its arrival stamp in `arrivedAt`.
inline ssize_t receive(int fd, char *buf, size_t size, int flags, qint64 *arrivedAt)
{
    iovec iov{buf, size};
    alignas(cmsghdr) char control[CMSG_SPACE(sizeof(timespec))];
    msghdr msg{};
    msg.msg_iov = &iov;
    msg.msg_iovlen = 1;
    msg.msg_control = control;
    msg.msg_controllen = sizeof control;
    const ssize_t n = recvmsg(fd, &msg, flags);
    *arrivedAt = n >= 0 ? arrivalNs(&msg) : 0;
    return n;
}

} // namespace BenchClock
