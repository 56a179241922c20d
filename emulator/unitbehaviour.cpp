#include "unitbehaviour.h"

UnitBehaviour::UnitBehaviour(const UnitConfig &unit, QObject *parent) : QObject(parent), m_unit(unit) {}

UnitBehaviour::~UnitBehaviour() = default;

QList<Reply> UnitBehaviour::handle(Board, uint8_t, const QByteArray &, const QByteArray &)
{
    return {};
}

StateLines UnitBehaviour::state() const
{
    return {};
}

void UnitBehaviour::setHost(std::function<void(const Reply &)> send, std::function<void()> changed)
{
    m_send = std::move(send);
    m_changed = std::move(changed);
}

QByteArray UnitBehaviour::frameFrom(Board board, uint8_t command, const QByteArray &data) const
{
    const uint8_t cls = board == Board::Main ? EmuFrame::kMainClass : m_unit.hisClass;
    return EmuFrame::build(cls, EmuFrame::kDeviceNumber, command, data);
}

Reply UnitBehaviour::reply(Board board, uint8_t command, const QByteArray &data) const
{
    Reply r;
    r.board = board;
    r.bytes = frameFrom(board, command, data);
    return r;
}

void UnitBehaviour::send(const Reply &reply)
{
    if (m_send)
        m_send(reply);
}

void UnitBehaviour::stateChanged()
{
    if (m_changed)
        m_changed();
}

void UnitBehaviour::noteUnknown(const QString &code)
{
    if (!m_unknown.contains(code))
        m_unknown << code;
}

void UnitBehaviour::appendUnknown(StateLines &lines) const
{
    if (!m_unknown.isEmpty())
        lines.append({"unknown", m_unknown.join(QLatin1Char(' '))});
}
