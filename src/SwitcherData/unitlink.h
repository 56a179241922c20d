#pragma once

#include "unitaddress.h"
#include "unitcontrol.h"
#include "workdata.h"

#include <QAbstractSocket>
#include <QByteArray>
#include <QString>
#include <cstdint>
#include <initializer_list>

class QLoggingCategory;
class QUdpSocket;

// The link to one opened unit, as every family shares it: one socket on port 7000 that sends
// the commands and receives the replies, the unit's address and device address, the send
// path and a receive loop that hands each datagram to the family's decoder. Every family's
// link takes the operator's actions through UnitControl.
class UnitLink : public SWITCHER_DATA, public UnitControl
{
    Q_OBJECT
public:
    using LogCategory = const QLoggingCategory &(*)();
    // Datagrams read per pass of the event loop; the rest wait for the next pass. Reading is
    // cheap, and a panel restyles itself (a millisecond or more) only once per pass, for the
    // newest state read, so a pass stays well under what an operator would notice even when
    // a unit or a stranger floods the port.
    static constexpr int LinkDrainBatch = 32;

    // Binds port 7000 at once, before any unit address is known, on every IPv4 address.
    UnitLink(Family family, LogCategory log, QAbstractSocket::BindMode bindMode, QObject *parent);

    // True while the socket holds local port 7000.
    bool isBound() const;
    // Closes the socket so another link object (the next panel) can take port 7000. From
    // then on nothing is sent or received: a released link must not quietly rebind to a
    // random port by sending.
    void releasePort();
    QUdpSocket *socket() const { return m_udp; }

    // The unit's main board: where commands go and the device address they carry.
    void bindUnit(const UnitAddress &unit) { m_unit = unit; }
    const UnitAddress &unit() const { return m_unit; }
    // Both boards of a unit as the search found them; a family without a HIS board keeps
    // only the main board.
    virtual void bindBoards(const UnitAddress &unit, const UnitAddress &his)
    {
        Q_UNUSED(his)
        bindUnit(unit);
    }

public slots:
    // Reads the waiting datagrams in bounded batches (see DrainBatch) and hands each to
    // datagramArrived. An empty datagram is read and dropped.
    void ReceiveData();

protected:
    void initUdp();
    virtual void datagramArrived(const QByteArray &datagram, int length) = 0;
    // Called after each batch read from the socket, once its datagrams have all arrived.
    virtual void passEnded() {}
    // Called with every frame that went out (or would have, had the link been released).
    virtual void frameSent(const QByteArray &frame) { Q_UNUSED(frame) }

    // Logs the frame under `label` (no line when label is null) and sends it to port 7000
    // of `host`. A length of 0 sends and logs nothing.
    void sendFrame(const uint8_t *buf, uint16_t len, const QHostAddress &host, const char *label);
    // A command frame of up to four data bytes to the unit's main board.
    void sendMain(const char *label, uint8_t cmd, std::initializer_list<uint8_t> data = {});
    void sendBuilt(const char *label, const UnitAddress &to, uint8_t cmd,
                   std::initializer_list<uint8_t> data);

    LogCategory m_log;
    QAbstractSocket::BindMode m_bindMode;
    QUdpSocket *m_udp = nullptr;
    bool m_released = false;
    UnitAddress m_unit;
};
