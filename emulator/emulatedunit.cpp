#include "emulatedunit.h"

#include "emulatorlog.h"
#include "familyregistry.h"
#include "nextdatagram.h"
#include "unitplan.h"

#include <QDir>
#include <QSaveFile>
#include <QTimer>
#include <QUdpSocket>

namespace {
constexpr quint16 kPort = 7000;
constexpr int kSplitAt = 19;
constexpr uint8_t kReplySkippedByte = 0x01;
// Text after the "-" that ends the name; the receiver does not read it.
const QByteArray kNameTail = QByteArrayLiteral("V1.00");

QString peerText(const QHostAddress &address, quint16 port)
{
    return QStringLiteral("%1:%2").arg(address.toString()).arg(port);
}

QString boardName(Board board)
{
    return board == Board::Main ? QStringLiteral("main") : QStringLiteral("his");
}
} // namespace

EmulatedUnit::EmulatedUnit(const UnitConfig &unit, const EmulatorOptions &options, EmulatorLog *log,
                           QObject *parent)
    : QObject(parent), m_unit(unit), m_options(options), m_log(log), m_behaviour(FamilyRegistry::create(unit))
{
    m_behaviour->setHost([this](const Reply &r) { send(r, m_lastPeer, m_lastPort, 0); },
                         [this]() { writeState(); });
}

EmulatedUnit::~EmulatedUnit() = default;

bool EmulatedUnit::bind(QString *error)
{
    const auto open = [this, error](const QHostAddress &address, Board board) -> QUdpSocket * {
        auto *socket = new QUdpSocket(this);
        // The wildcard socket on port 7000 shares the port; a socket bound to the unit's own
        // address is the more specific match, so unicast to that address lands here.
        if (!socket->bind(address, kPort, QUdpSocket::ShareAddress | QUdpSocket::ReuseAddressHint)) {
            *error = QStringLiteral("cannot bind %1:%2: %3")
                         .arg(address.toString())
                         .arg(kPort)
                         .arg(socket->errorString());
            delete socket;
            return nullptr;
        }
        connect(socket, &QUdpSocket::readyRead, this, [this, board]() { readPending(board); });
        return socket;
    };
    m_main = open(m_unit.mainIp, Board::Main);
    if (!m_main)
        return false;
    if (m_unit.hasHis()) {
        m_his = open(m_unit.hisIp, Board::His);
        if (!m_his)
            return false;
    }
    return true;
}

QByteArray EmulatedUnit::mainSearchReply() const
{
    QByteArray data;
    data.append(char(kReplySkippedByte));
    data.append(m_unit.name.toLatin1());
    data.append('-');
    data.append(kNameTail);
    data.append(m_unit.id);
    QByteArray frame =
        EmuFrame::build(EmuFrame::kMainClass, EmuFrame::kDeviceNumber, EmuFrame::kSearchCommand, data);
    frame[14] = char(m_unit.childType);
    EmuFrame::reseal(frame);
    return frame;
}

QByteArray EmulatedUnit::hisSearchReply() const
{
    QByteArray frame = mainSearchReply();
    frame[4] = char(m_unit.hisClass);
    EmuFrame::reseal(frame);
    return frame;
}

void EmulatedUnit::answerSearch(const QHostAddress &to, quint16 port)
{
    if (m_unit.has(Fault::Silent))
        return;
    QList<Reply> replies;
    Reply main;
    main.board = Board::Main;
    main.bytes = mainSearchReply();
    replies.append(main);
    if (m_unit.has(Fault::Duplicate))
        replies.append(main);
    if (m_unit.hasHis()) {
        Reply his;
        his.board = Board::His;
        his.bytes = hisSearchReply();
        if (m_unit.has(Fault::HisFirst))
            replies.prepend(his);
        else
            replies.append(his);
    }
    const int spread = m_options.replySpreadMs > 0
                           ? int((quint64(m_unit.index) * 7919u) % quint64(m_options.replySpreadMs))
                           : 0;
    for (const Reply &r : replies)
        send(r, to, port, spread);
}

void EmulatedUnit::readPending(Board board)
{
    QUdpSocket *socket = board == Board::Main ? m_main : m_his;
    QByteArray datagram;
    QHostAddress from;
    quint16 port = 0;
    while (socket->hasPendingDatagrams() && nextDatagram(socket, &datagram, &from, &port))
        receive(board, datagram, from, port);
}

void EmulatedUnit::receive(Board board, const QByteArray &datagram, const QHostAddress &from, quint16 port)
{
    m_log->line(EmulatorLog::frameLine("rx", m_unit.mainIp.toString(), boardName(board), datagram,
                                       QStringLiteral("from"), peerText(from, port)));
    m_lastPeer = from;
    m_lastPort = port;
    ++m_frames;
    const EmuFrame::Parsed p = EmuFrame::parse(datagram);
    m_last = QStringLiteral("%1 0x%2 %3 %4")
                 .arg(boardName(board))
                 .arg(p.command, 2, 16, QLatin1Char('0'))
                 .arg(EmuFrame::hex(p.data), !p.framed      ? QStringLiteral("malformed")
                                             : p.checksumOk ? QStringLiteral("ok")
                                                            : QStringLiteral("bad"));
    if (p.framed && p.checksumOk) {
        if (p.command == EmuFrame::kSearchCommand) {
            answerSearch(from, port);
        } else if (!m_unit.has(Fault::Silent)) {
            const QList<Reply> replies = m_behaviour->handle(board, p.command, p.data, datagram);
            for (const Reply &r : replies)
                send(r, from, port, 0);
        } else {
            m_behaviour->handle(board, p.command, p.data, datagram);
        }
    }
    writeState();
}

void EmulatedUnit::send(const Reply &reply, const QHostAddress &defaultTo, quint16 defaultPort,
                        int extraDelayMs)
{
    if (m_unit.has(Fault::Silent))
        return;
    const QHostAddress to = reply.to.isNull() ? defaultTo : reply.to;
    const quint16 port = reply.port != 0 ? reply.port : defaultPort;
    if (to.isNull() || port == 0)
        return;
    const int delay = m_options.replyDelayMs + reply.delayMs + extraDelayMs;
    if (delay <= 0) {
        transmit(reply.board, reply.bytes, to, port);
        return;
    }
    // Single-shot timers of equal time-out fire in the order they were started, so replies
    // keep their order (his-first depends on that).
    const Board board = reply.board;
    const QByteArray bytes = reply.bytes;
    QTimer::singleShot(delay, this, [this, board, bytes, to, port]() { transmit(board, bytes, to, port); });
}

void EmulatedUnit::transmit(Board board, QByteArray bytes, const QHostAddress &to, quint16 port)
{
    QUdpSocket *socket = board == Board::His && m_his ? m_his : m_main;
    if (board == Board::His && !m_his)
        board = Board::Main;
    if (m_unit.has(Fault::BadChecksum) && bytes.size() >= 3)
        bytes[bytes.size() - 3] = char(uint8_t(bytes.at(bytes.size() - 3)) + 1);
    m_log->line(EmulatorLog::frameLine("tx", m_unit.mainIp.toString(), boardName(board), bytes,
                                       QStringLiteral("to"), peerText(to, port)));
    if (m_unit.has(Fault::Split) && bytes.size() > kSplitAt) {
        socket->writeDatagram(bytes.left(kSplitAt), to, port);
        socket->writeDatagram(bytes.mid(kSplitAt), to, port);
    } else {
        socket->writeDatagram(bytes, to, port);
    }
}

void EmulatedUnit::writeState()
{
    if (m_options.stateDir.isEmpty())
        return;
    StateLines lines;
    lines.append(
        {QStringLiteral("type"), QStringLiteral("0x%1").arg(m_unit.childType, 2, 16, QLatin1Char('0'))});
    lines.append({QStringLiteral("family"), FamilyRegistry::family(m_unit.childType)});
    lines.append({QStringLiteral("name"), m_unit.name});
    lines.append({QStringLiteral("id"), EmuFrame::hex(m_unit.id)});
    lines.append({QStringLiteral("main"), m_unit.mainIp.toString()});
    lines.append({QStringLiteral("his"), m_unit.hasHis() ? m_unit.hisIp.toString() : QString()});
    lines.append(
        {QStringLiteral("hisclass"), QStringLiteral("0x%1").arg(m_unit.hisClass, 2, 16, QLatin1Char('0'))});
    lines.append({QStringLiteral("frames"), QString::number(m_frames)});
    lines.append({QStringLiteral("last"), m_last});
    lines.append(m_behaviour->state());
    QByteArray text;
    for (const auto &l : lines)
        text += l.first.toUtf8() + '=' + l.second.toUtf8() + '\n';
    if (text == m_writtenState)
        return;
    QSaveFile file(QDir(m_options.stateDir).filePath(m_unit.mainIp.toString() + QStringLiteral(".state")));
    if (!file.open(QIODevice::WriteOnly))
        return;
    file.write(text);
    if (file.commit())
        m_writtenState = text;
}
