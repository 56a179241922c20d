#include "unitlink.h"

#include "framecodec.h"
#include "unitendpoint.h"

#include <QLoggingCategory>

UnitLink::UnitLink(Family family, LogCategory log, QObject *parent)
    : QObject(parent), UnitControl(family), m_log(log), m_endpoint(UnitEndpoint::shared())
{}

UnitLink::~UnitLink()
{
    releasePort();
}

bool UnitLink::isBound() const
{
    return m_endpoint && m_endpoint->isBound();
}

void UnitLink::releasePort()
{
    if (!m_endpoint)
        return;
    m_endpoint->forget(this);
    m_endpoint.reset();
    m_held.clear();
}

bool UnitLink::keepToUnit()
{
    return m_endpoint && m_endpoint->keepTo(m_unit.host);
}

void UnitLink::bindUnit(const UnitAddress &unit)
{
    m_unit = unit;
    updateRoute();
}

void UnitLink::updateRoute()
{
    if (m_endpoint)
        m_endpoint->route(this, senders());
}

void UnitLink::offer(const QByteArray &datagram)
{
    if (!m_held.empty() || m_takenInPass >= LinkDrainBatch) {
        // This pass's batch is full: the rest waits for the next pass, after paints and
        // clicks have had theirs. A flood keeps only its newest datagrams.
        if (int(m_held.size()) >= HeldMax) {
            m_held.pop_front();
            ++m_droppedHeld;
        }
        m_held.push_back(datagram);
        return;
    }
    take(datagram);
}

void UnitLink::takeHeld()
{
    while (!m_held.empty() && m_takenInPass < LinkDrainBatch) {
        const QByteArray datagram = std::move(m_held.front());
        m_held.pop_front();
        take(datagram);
    }
}

void UnitLink::take(const QByteArray &datagram)
{
    ++m_takenInPass;
    datagramArrived(datagram, datagram.size());
}

void UnitLink::endPass()
{
    if (m_takenInPass == 0)
        return;
    m_takenInPass = 0;
    passEnded();
}

void UnitLink::sendFrame(const uint8_t *buf, uint16_t len, const QHostAddress &host, const char *label)
{
    if (len == 0)
        return;
    const QByteArray frame(reinterpret_cast<const char *>(buf), len);
    if (label)
        qCDebug(m_log).noquote() << QString::fromUtf8(label) << frame.toHex(' ');
    if (m_endpoint)
        m_endpoint->send(frame, host, Port);
    frameSent(frame);
}

void UnitLink::sendBuilt(const char *label, const UnitAddress &to, uint8_t cmd,
                         std::initializer_list<uint8_t> data)
{
    if (data.size() > 4)
        return;
    uint8_t buf[128] = {};
    sendFrame(buf, FrameCodec::dataFrame(buf, to.devClass, to.devNum, cmd, data.begin(), int(data.size())),
              to.host, label);
}

void UnitLink::sendMain(const char *label, uint8_t cmd, std::initializer_list<uint8_t> data)
{
    sendBuilt(label, m_unit, cmd, data);
}
