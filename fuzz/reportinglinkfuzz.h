#pragma once

#include "SwitcherData/reportinglink.h"
#include "datagrams.h"
#include "netnsguard.h"

#include <QCoreApplication>
#include <cstdlib>

// The receive path of a reporting link (RVX3210 family, 8000 series) fed a sequence of
// datagrams exactly as the socket's loop hands them over: reassembly across datagrams, the
// stall at 1057 bytes, the sum, and the sorting of replies into the payload signals. Checks
// the bounds the link promises whatever arrives: once stalled it holds no more than it held
// at the stall, and before that never more than the stall size plus one datagram.
namespace ReportingLinkFuzz {

// The family's link with its reassembly buffer emptied between inputs, so an input's outcome
// depends on that input alone.
template <class Family> class Link : public Family
{
public:
    using Family::datagramArrived;
    using Family::passEnded;
    void reset() { this->m_recvBuf.clear(); }
};

// One link for the whole run: it binds port 7000 when made (run the fuzzer inside
// tests/netns-run.sh), and reading that socket is no part of what is fuzzed.
template <class Family> Link<Family> &link()
{
    static Link<Family> *made = [] {
        auto *l = new Link<Family>;
        const auto check = [](const QByteArray &payload) {
            if (payload.size() >= ReportingLink::StallSize)
                std::abort();
        };
        QObject::connect(l, &ReportingLink::on_signals_3210Data, check);
        QObject::connect(l, &ReportingLink::on_signals_3410Data, check);
        QObject::connect(l, &ReportingLink::on_signals_3210HISData, check);
        QObject::connect(l, &ReportingLink::on_signals_3210HIS_URL_Data, check);
        QObject::connect(l, &ReportingLink::on_signals_5370Data, check);
        // A decoded state holds no field its family's record lacks, and no more than was read.
        QObject::connect(l, &ReportingLink::stateReported, [check](const UnitState &state) {
            check(state.record());
            if ((state.fields() & ~UnitState::reportedBy(state.layout())).any())
                std::abort();
        });
        return l;
    }();
    return *made;
}

template <class Family> void initialize(int *argc, char ***argv)
{
    static QCoreApplication app(*argc, *argv);
    requirePrivateNetwork();
    link<Family>();
}

template <class Family> void run(const uint8_t *data, size_t size)
{
    Link<Family> &l = link<Family>();
    l.reset();
    for (const QByteArray &datagram : FuzzDatagrams::split(data, size)) {
        const int before = l.heldBytes();
        l.datagramArrived(datagram, datagram.size());
        const int held = l.heldBytes();
        // Stalled: what arrives is not kept. Otherwise a datagram adds at most itself.
        if (before >= ReportingLink::StallSize ? held != before : held > before + datagram.size())
            std::abort();
    }
    // The socket's loop ends its pass here: the newest state read is shown now.
    l.passEnded();
}

} // namespace ReportingLinkFuzz
