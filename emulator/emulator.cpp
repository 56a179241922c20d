#include "emulator.h"

#include "emuframe.h"
#include "emulatorlog.h"
#include "nextdatagram.h"

#include <QUdpSocket>

namespace {
constexpr quint16 kPort = 7000;
}

Emulator::Emulator(const QList<UnitConfig> &units, const EmulatorOptions &options, EmulatorLog *log,
                   QObject *parent)
    : QObject(parent), m_configs(units), m_options(options), m_log(log)
{}

bool Emulator::start(QString *error)
{
    m_wildcard = new QUdpSocket(this);
    if (!m_wildcard->bind(QHostAddress::AnyIPv4, kPort,
                          QUdpSocket::ShareAddress | QUdpSocket::ReuseAddressHint)) {
        *error = QStringLiteral("cannot bind 0.0.0.0:%1: %2").arg(kPort).arg(m_wildcard->errorString());
        return false;
    }
    connect(m_wildcard, &QUdpSocket::readyRead, this, &Emulator::readBroadcast);
    for (const UnitConfig &config : qAsConst(m_configs)) {
        auto *unit = new EmulatedUnit(config, m_options, m_log, this);
        m_units.append(unit);
        if (!unit->bind(error))
            return false;
        unit->writeState();
    }
    return true;
}

void Emulator::readBroadcast()
{
    QByteArray datagram;
    QHostAddress from;
    quint16 port = 0;
    while (m_wildcard->hasPendingDatagrams() && nextDatagram(m_wildcard, &datagram, &from, &port)) {
        m_log->line(EmulatorLog::frameLine("rx", QStringLiteral("*"), QStringLiteral("any"), datagram,
                                           QStringLiteral("from"),
                                           QStringLiteral("%1:%2").arg(from.toString()).arg(port)));
        const EmuFrame::Parsed p = EmuFrame::parse(datagram);
        // Only the search is meant for every unit; anything else on the broadcast is logged only.
        if (!p.framed || !p.checksumOk || p.command != EmuFrame::kSearchCommand)
            continue;
        for (EmulatedUnit *unit : qAsConst(m_units))
            unit->answerSearch(from, port);
    }
}
