#include "unitlink.h"

#include "framecodec.h"

#include <QLoggingCategory>
#include <QUdpSocket>

UnitLink::UnitLink(Family family, LogCategory log, QAbstractSocket::BindMode bindMode, QObject *parent)
    : SWITCHER_DATA(parent), UnitControl(family), m_log(log), m_bindMode(bindMode)
{
    initUdp();
}

void UnitLink::initUdp()
{
    m_udp = new QUdpSocket(this);
    // Bound once, before any unit address is known, on the IPv4 wildcard, so the unit's
    // replies arrive on port 7000 of any local address.
    if (!m_udp->bind(QHostAddress::AnyIPv4, Port, m_bindMode))
        qCWarning(m_log) << "could not take UDP port" << Port
                         << "- the unit's replies will not arrive:" << m_udp->errorString();
    connect(m_udp, &QUdpSocket::readyRead, this, &UnitLink::ReceiveData);
}

bool UnitLink::isBound() const
{
    return m_udp && m_udp->state() == QAbstractSocket::BoundState && m_udp->localPort() == Port;
}

void UnitLink::releasePort()
{
    if (m_udp)
        m_udp->close();
    m_released = true;
}

void UnitLink::ReceiveData()
{
    if (!m_udp || m_released)
        return;
    QByteArray datagram;
    for (int n = 0; n < LinkDrainBatch && m_udp->hasPendingDatagrams(); ++n) {
        datagram.resize(int(qMax<qint64>(m_udp->pendingDatagramSize(), 0)));
        const qint64 got = m_udp->readDatagram(datagram.data(), datagram.size());
        // An empty or failed read has consumed its datagram; the ones behind it still count.
        if (got <= 0)
            continue;
        datagramArrived(datagram, int(got));
    }
    passEnded();
    // Whatever is left of a flood waits for the next pass, after paints and clicks have had
    // theirs: the socket is still readable, so its notifier fires again. No extra call is
    // queued, since a readyRead that finds nothing to read would leave the socket deaf.
}

void UnitLink::sendFrame(const uint8_t *buf, uint16_t len, const QHostAddress &host, const char *label)
{
    if (len == 0)
        return;
    const QByteArray frame(reinterpret_cast<const char *>(buf), len);
    if (label)
        qCDebug(m_log).noquote() << QString::fromUtf8(label) << frame.toHex(' ');
    if (m_udp && !m_released)
        m_udp->writeDatagram(frame, host, Port);
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
