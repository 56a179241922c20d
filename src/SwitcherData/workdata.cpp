#include "workdata.h"

#include "datagramreader.h"
#include "framecodec.h"
#include "searchinterfaces.h"

#include <QDate>
#include <QDateTime>
#include <QDebug>
#include <QUdpSocket>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>
#include <vector>

// Debug lines (every frame sent and decoded) only when asked for, with QT_LOGGING_RULES.
Q_LOGGING_CATEGORY(lcLink, "kova.link", QtInfoMsg)

using FrameCodec::writeHead;
using FrameCodec::writeTail;

namespace {

const char *const SearchReaderName = "kova-search-reader";

uint16_t dataFrame(uint8_t *buf, uint8_t devClass, uint8_t devNum, uint8_t cmd,
                   std::initializer_list<uint8_t> d)
{
    return FrameCodec::dataFrame(buf, devClass, devNum, cmd, d.begin(), int(d.size()));
}
} // namespace

SWITCHER_DATA::SWITCHER_DATA(QObject *parent) : QObject(parent)
{
    m_count = 0;
    m_spare = 0;
    std::memset(m_devices, 0, sizeof(m_devices));
}

void SWITCHER_DATA::initUDPSOCKET()
{
    // Made by the first search, so the unit links, which never search, hold no second
    // socket. An ephemeral port, as the first send would take anyway; binding now lets the receive
    // buffer be enlarged before the first search. A room of a thousand units answers within
    // milliseconds (two datagrams each, main and HIS board) and the default buffer drops
    // most of such a burst.
    m_socket = new QUdpSocket(this);
    if (!m_socket->bind(QHostAddress(QHostAddress::AnyIPv4), 0)) {
        qCDebug(lcLink) << "search socket not bound yet:" << m_socket->errorString();
        connect(m_socket, &QUdpSocket::readyRead, this, &SWITCHER_DATA::ReceiveDatagram);
        return;
    }
    m_socket->setSocketOption(QAbstractSocket::ReceiveBufferSizeSocketOption, ReceiveBuffer);
    // The replies are read on a thread of their own; should none be had, the GUI thread reads
    // them as the socket reports them.
    // A room of a thousand units answers within milliseconds, two datagrams each, and at a
    // stock net.core.rmem_max the kernel holds a few hundred of them: read from the GUI
    // thread, which is still building and painting the window when the first burst comes, a
    // quarter of the units could be lost. Twice a full room is held, and as many bytes as the
    // kernel buffer asked for; a flood beyond that is dropped as the kernel would drop it.
    const DatagramReader::Limits limits{4 * MaxDevices, ReceiveBuffer, 0};
    const int fd = fcntl(int(m_socket->socketDescriptor()), F_DUPFD_CLOEXEC, 0);
    if (fd < 0 || !DatagramReader::start(fd, this, SearchReaderName, limits, [this] { ReceiveDatagram(); })) {
        if (fd >= 0)
            close(fd);
        connect(m_socket, &QUdpSocket::readyRead, this, &SWITCHER_DATA::ReceiveDatagram);
    }
}

uint16_t SWITCHER_DATA::None_Char_Data(uint8_t *buf, uint8_t devClass, uint8_t devNum, uint8_t cmd)
{
    return dataFrame(buf, devClass, devNum, cmd, {});
}

uint16_t SWITCHER_DATA::Single_Char_Data(uint8_t *buf, uint8_t devClass, uint8_t devNum, uint8_t cmd,
                                         uint8_t d1)
{
    return dataFrame(buf, devClass, devNum, cmd, {d1});
}

uint16_t SWITCHER_DATA::Double_Char_Data(uint8_t *buf, uint8_t devClass, uint8_t devNum, uint8_t cmd,
                                         uint8_t d1, uint8_t d2)
{
    return dataFrame(buf, devClass, devNum, cmd, {d1, d2});
}

uint16_t SWITCHER_DATA::Three_Char_Data(uint8_t *buf, uint8_t devClass, uint8_t devNum, uint8_t cmd,
                                        uint8_t d1, uint8_t d2, uint8_t d3)
{
    return dataFrame(buf, devClass, devNum, cmd, {d1, d2, d3});
}

uint16_t SWITCHER_DATA::Four_Char_Data(uint8_t *buf, uint8_t devClass, uint8_t devNum, uint8_t cmd,
                                       uint8_t d1, uint8_t d2, uint8_t d3, uint8_t d4)
{
    return dataFrame(buf, devClass, devNum, cmd, {d1, d2, d3, d4});
}

uint16_t SWITCHER_DATA::Set_ipCom(uint8_t *buf, uint8_t devClass, uint8_t devNum, uint8_t cmd,
                                  const SET_DEV_IP &rec)
{
    buf[0] = 0xA5;
    buf[1] = 0x6C;
    buf[2] = QLOBYTE(32);
    buf[3] = QHIBYTE(32);
    buf[4] = devClass;
    buf[5] = devNum;
    int pos = 6;
    // The units expect kind 0x00 from a main board and 0x01 from a HIS board; for any other
    // class the kind byte is left out and everything after it moves one place forward.
    if (devClass == 0xA5)
        buf[pos++] = 0x00;
    else if (devClass == 0xE0)
        buf[pos++] = 0x01;
    std::memset(buf + pos, 0, 9);
    pos += 9;
    buf[pos++] = cmd;
    std::memcpy(buf + pos, &rec, sizeof(rec));
    // The sum always covers bytes 0-28 as they stand. With the kind byte left out, byte 28
    // is still the caller's (zeroed) buffer and the sum and end byte sit one place earlier.
    const uint16_t sum = CalcCheckSum(buf, 29);
    const int sumAt = pos + int(sizeof(rec));
    buf[sumAt] = QLOBYTE(sum);
    buf[sumAt + 1] = QHIBYTE(sum);
    buf[sumAt + 2] = 0xAE;
    return 32;
}

namespace {

// Fills the search frame; `now` is asked once per field, as the unit's clock bytes are read
// one by one (a second boundary between two fields is accepted).
template <typename Clock> uint16_t fillSearchFrame(uint8_t *buf, Clock now)
{
    int pos = writeHead(buf, 27, 0x81, 0xFF, 0xFF);
    buf[pos++] = SWITCHER_DATA::TimeCRC(uint8_t(now().date().year() % 100));
    buf[pos++] = SWITCHER_DATA::TimeCRC(uint8_t(now().date().month()));
    buf[pos++] = SWITCHER_DATA::TimeCRC(uint8_t(now().date().day()));
    buf[pos++] = SWITCHER_DATA::TimeCRC(uint8_t(now().date().dayOfWeek()));
    buf[pos++] = SWITCHER_DATA::TimeCRC(uint8_t(now().time().hour()));
    buf[pos++] = SWITCHER_DATA::TimeCRC(uint8_t(now().time().minute()));
    buf[pos++] = SWITCHER_DATA::TimeCRC(uint8_t(now().time().second()));
    return writeTail(buf, pos);
}

} // namespace

uint16_t SWITCHER_DATA::SendBroadcastBuf(uint8_t *buf)
{
    return fillSearchFrame(buf, [] { return QDateTime::currentDateTime(); });
}

uint16_t SWITCHER_DATA::searchFrameAt(uint8_t *buf, const QDateTime &when)
{
    return fillSearchFrame(buf, [&when] { return when; });
}

void SWITCHER_DATA::setSearcheQuipment()
{
    uint8_t buf[128] = {};
    const uint16_t len = SendBroadcastBuf(buf);
    if (len <= 0)
        return;
    const QByteArray frame(reinterpret_cast<const char *>(buf), len);
    qCDebug(lcLink) << "SendBroadcastBuf" << frame.toHex(' ');

    m_count = 0;
    m_names.clear();
    std::memset(m_devices, 0, sizeof(m_devices));
    // A fragment left from the last search could hold a start pattern whose length waits
    // for bytes that never come, and would swallow the new replies until it overflowed.
    m_recvBuf.clear();

    if (!m_socket)
        initUDPSOCKET();
    // Once out of every link that can broadcast, from the one socket, so the replies of every
    // network arrive where the reader waits. With no such link the routing table decides, as
    // for any datagram: nowhere without a route (nothing is listed), or the loopback of a
    // private namespace that routes the broadcast there.
    const QList<SearchInterfaces::Link> links = SearchInterfaces::usable();
    const int fd = int(m_socket->socketDescriptor());
    if (links.isEmpty() || fd < 0) {
        m_socket->writeDatagram(frame, QHostAddress::Broadcast, Port);
        return;
    }
    for (const SearchInterfaces::Link &link : links) {
        const bool sent = SearchInterfaces::sendBroadcast(fd, link, frame, Port);
        qCDebug(lcLink) << "search out of" << link.name << link.address.toString()
                        << (sent ? "sent" : "refused");
    }
}

void SWITCHER_DATA::ReceiveDatagram()
{
    if (!m_socket)
        return;
    if (auto *reader = static_cast<DatagramReader *>(
            findChild<QObject *>(QLatin1String(SearchReaderName), Qt::FindDirectChildrenOnly))) {
        std::vector<DatagramReader::Datagram> batch;
        reader->take(DrainBatch, &batch);
        for (const DatagramReader::Datagram &d : batch)
            MYanalysis(d.sender, d.bytes, d.bytes.size());
        return;
    }
    for (int n = 0; n < DrainBatch && m_socket->hasPendingDatagrams(); ++n) {
        const qint64 pending = m_socket->pendingDatagramSize();
        QByteArray datagram(int(qMax<qint64>(pending, 0)), Qt::Uninitialized);
        QHostAddress sender;
        quint16 port = 0;
        const qint64 got = m_socket->readDatagram(datagram.data(), datagram.size(), &sender, &port);
        // An empty datagram carries nothing to decode, but it must still be read: left at the
        // head of the queue it would end every later pass before the replies behind it.
        if (got <= 0)
            continue;
        MYanalysis(sender, datagram, int(got));
    }
    // Whatever is left of a flood waits for the next pass, after paints and clicks have had
    // theirs: the socket is still readable, so its notifier fires again. No extra call is
    // queued, since a readyRead that finds nothing to read would leave the socket deaf.
}

void SWITCHER_DATA::MYanalysis(const QHostAddress &sender, const QByteArray &data, int count)
{
    m_recvBuf.append(data.constData(), qBound(0, count, data.size()));
    if (m_recvBuf.size() < MinFrame)
        return;
    if (m_recvBuf.size() > MaxFrame || uint8_t(m_recvBuf.at(16)) != 0xFF) {
        m_recvBuf.clear();
        return;
    }
    QByteArray frame;
    if (FrameCodec::joinFrames(m_recvBuf, &frame) == FrameCodec::Scan::Incomplete)
        return;
    if (FrameCodec::checksumOk(frame))
        Get_Bind_Dev(sender, frame);
    m_recvBuf.clear();
}

void SWITCHER_DATA::Get_Bind_Dev(const QHostAddress &sender, const QByteArray &frame)
{
    using FrameCodec::byteAt;
    const int n = frame.size();
    if (n < MinFrame)
        return;
    const uint8_t devClass = byteAt(frame, 4);
    const uint8_t devNum = byteAt(frame, 5);
    const uint8_t unitId[3] = {byteAt(frame, n - 6), byteAt(frame, n - 5), byteAt(frame, n - 4)};

    if (devClass == 0xA5 && devNum == 0xFF) {
        const QList<QByteArray> pieces = frame.split(char(0xFF));
        if (pieces.size() < 3)
            return;
        // The third piece is the byte after the command code and the name up to "-".
        const QByteArray name = pieces.at(2).split('-').first().mid(1);
        if (name.isEmpty())
            return;
        if (m_count >= MaxDevices) {
            qCDebug(lcLink) << "device table full, reply dropped from" << sender.toString();
            return;
        }
        DevInfo_DATA &rec = m_devices[m_count];
        std::memset(&rec, 0, sizeof(rec));
        std::memcpy(rec.name, name.constData(), size_t(qMin(name.size(), int(sizeof(rec.name)))));
        rec.ip = sender.toIPv4Address();
        rec.devClass = devClass;
        rec.devNum = devNum;
        rec.childType = byteAt(frame, 14);
        std::memcpy(rec.unitId, unitId, 3);
        ++m_count;
        emit sigend_datapack();
        qCDebug(lcLink) << "addrIP:" << dottedIp(rec.ip) << "data:" << frame.toHex(' ');
        return;
    }

    if ((devClass == 0xE0 || devClass == 0xE5) && devNum >= 0xFF) {
        for (int i = 0; i < m_count; ++i) {
            DevInfo_DATA &rec = m_devices[i];
            if (std::memcmp(rec.unitId, unitId, 3) != 0)
                continue;
            rec.ip2 = sender.toIPv4Address();
            rec.devClass2 = devClass;
            rec.devNum2 = devNum;
        }
    }
}
