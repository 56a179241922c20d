#pragma once

#include "emulatedunit.h"
#include "unitconfig.h"

#include <QList>
#include <QObject>

class EmulatorLog;
class QUdpSocket;

// All units plus the one socket on the wildcard address, port 7000, that hears the search
// broadcast (a socket bound to a unit's own address never sees 255.255.255.255).
class Emulator : public QObject
{
    Q_OBJECT
public:
    Emulator(const QList<UnitConfig> &units, const EmulatorOptions &options, EmulatorLog *log,
             QObject *parent = nullptr);

    bool start(QString *error);

private:
    void readBroadcast();

    QList<UnitConfig> m_configs;
    EmulatorOptions m_options;
    EmulatorLog *m_log;
    QList<EmulatedUnit *> m_units;
    QUdpSocket *m_wildcard = nullptr;
};
