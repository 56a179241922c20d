#pragma once

#include "unitbehaviour.h"
#include "unitconfig.h"

#include <QHostAddress>
#include <QObject>
#include <QString>
#include <memory>

class EmulatorLog;
class QUdpSocket;

struct EmulatorOptions
{
    int replyDelayMs = 0;
    int replySpreadMs = 0; // search replies of unit n wait a further (n * 7919) % spread ms
    QString stateDir;
};

// One emulated unit: its sockets on the main and HIS addresses (port 7000), its search
// replies and faults, its behaviour and its state file.
class EmulatedUnit : public QObject
{
    Q_OBJECT
public:
    EmulatedUnit(const UnitConfig &unit, const EmulatorOptions &options, EmulatorLog *log,
                 QObject *parent = nullptr);
    ~EmulatedUnit() override;

    bool bind(QString *error);
    const UnitConfig &unit() const { return m_unit; }

    // The two search replies, as the unit sends them when it hears the search frame.
    QByteArray mainSearchReply() const;
    QByteArray hisSearchReply() const;

    void answerSearch(const QHostAddress &to, quint16 port);
    void writeState();

private:
    void readPending(Board board);
    void receive(Board board, const QByteArray &datagram, const QHostAddress &from, quint16 port);
    void send(const Reply &reply, const QHostAddress &defaultTo, quint16 defaultPort, int extraDelayMs);
    void transmit(Board board, QByteArray bytes, const QHostAddress &to, quint16 port);

    UnitConfig m_unit;
    EmulatorOptions m_options;
    EmulatorLog *m_log;
    std::unique_ptr<UnitBehaviour> m_behaviour;
    QUdpSocket *m_main = nullptr;
    QUdpSocket *m_his = nullptr;
    QHostAddress m_lastPeer;
    quint16 m_lastPort = 0;
    quint64 m_frames = 0;
    QString m_last;
    QByteArray m_writtenState;
};
