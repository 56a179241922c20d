#pragma once

#include "unitaddress.h"
#include "unitcontrol.h"
#include "unitendpoint.h"

#include <QByteArray>
#include <QHostAddress>
#include <QObject>
#include <QString>
#include <QVector>
#include <cstdint>
#include <deque>
#include <initializer_list>
#include <memory>

class QLoggingCategory;

// The link to one opened unit, as every family shares it: the unit's addresses and device
// address, the send path through the process's port-7000 endpoint, and a receive loop that
// hands each datagram its unit sent to the family's decoder. It holds no device table and
// does no searching: the search is the search window's own object. Every family's link takes
// the operator's actions through UnitControl.
class UnitLink : public QObject, public UnitControl
{
    Q_OBJECT
public:
    static constexpr quint16 Port = 7000;
    using LogCategory = const QLoggingCategory &(*)();
    // Datagrams read per pass of the event loop; the rest wait for the next pass. Reading is
    // cheap, and a panel restyles itself (a millisecond or more) only once per pass, for the
    // newest state read, so a pass stays well under what an operator would notice even when
    // a unit or a stranger floods the port.
    static constexpr int LinkDrainBatch = 32;

    // Datagrams a link keeps for its next passes once its batch is full; beyond that its
    // oldest are dropped, so a unit that floods holds no more than this.
    static constexpr int HeldMax = 4 * LinkDrainBatch;

    // Takes the process's port-7000 endpoint at once (binding it if this is the first link),
    // before any unit address is known.
    UnitLink(Family family, LogCategory log, QObject *parent);
    ~UnitLink() override;

    // True while the endpoint holds local port 7000 for this link.
    bool isBound() const;
    // Lets go of the endpoint; the port is free once no link holds it. From then on nothing
    // is sent or received: a released link must not quietly rebind to a random port by
    // sending.
    void releasePort();
    // The process's endpoint, or nullptr once released.
    UnitEndpoint *endpoint() const { return m_endpoint.get(); }
    // Ties the endpoint to this link's unit alone (see UnitEndpoint::keepTo), for a tool that
    // runs beside a KOVA holding the port.
    bool keepToUnit();

    // The unit's main board: where commands go and the device address they carry. Its
    // datagrams are this link's from now on.
    void bindUnit(const UnitAddress &unit);
    const UnitAddress &unit() const { return m_unit; }
    // Both boards of a unit as the search found them; a family without a HIS board keeps
    // only the main board.
    virtual void bindBoards(const UnitAddress &unit, const UnitAddress &his)
    {
        Q_UNUSED(his)
        bindUnit(unit);
    }

    // The endpoint's side: a datagram this link's unit sent, taken at once while the pass's
    // batch has room and held back for the next pass after that; takeHeld at the start of a
    // pass, endPass at its end. Public so a test or a fuzzer can feed datagrams without a
    // socket.
    void offer(const QByteArray &datagram);
    void takeHeld();
    void endPass();
    bool holdsBack() const { return !m_held.empty(); }
    // Datagrams dropped because more were held back than HeldMax.
    quint64 droppedHeld() const { return m_droppedHeld; }

protected:
    // The addresses whose datagrams are this link's: the main board, and a HIS board where
    // the family has one.
    virtual QVector<QHostAddress> senders() const { return {m_unit.host}; }
    // Tells the endpoint again whose datagrams are this link's (after a board moved).
    void updateRoute();
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
    std::shared_ptr<UnitEndpoint> m_endpoint;
    UnitAddress m_unit;

private:
    void take(const QByteArray &datagram);

    std::deque<QByteArray> m_held;
    int m_takenInPass = 0;
    quint64 m_droppedHeld = 0;
};
