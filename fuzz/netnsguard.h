#pragma once

#include <QNetworkInterface>
#include <cstdio>
#include <cstdlib>

// The targets that make link objects bind UDP port 7000, and a panel sends the moment it
// changes state. They refuse to start where any interface but loopback is up, so a fuzzer
// started by hand on the host cannot put a datagram on a real network.
inline void requirePrivateNetwork()
{
    for (const QNetworkInterface &i : QNetworkInterface::allInterfaces()) {
        const auto flags = i.flags();
        if ((flags & QNetworkInterface::IsUp) && !(flags & QNetworkInterface::IsLoopBack)) {
            std::fprintf(stderr,
                         "interface %s is up: run this fuzzer inside tests/netns-run.sh (see fuzz/run.sh)\n",
                         qPrintable(i.name()));
            std::exit(2);
        }
    }
}
