#pragma once

#include "emuframe.h"
#include "unitconfig.h"

#include <QHostAddress>
#include <QList>
#include <QObject>
#include <QPair>
#include <QString>
#include <QStringList>
#include <functional>

// Which of a unit's two network endpoints a frame arrived at or leaves from.
enum class Board
{
    Main,
    His,
};

// One datagram a unit sends. It leaves from the board's own address, port 7000, and goes
// to the sender of the frame being answered unless `to`/`port` say otherwise.
struct Reply
{
    Board board = Board::Main;
    QByteArray bytes;
    int delayMs = 0;  // on top of the emulator's --reply-delay
    QHostAddress to;  // null: the sender of the frame being answered (or the last peer)
    quint16 port = 0; // 0: that sender's port
};

using StateLines = QList<QPair<QString, QString>>;

// What a model family does with the frames its units receive. One object per unit, made by
// the family registry from the unit's child type. The emulator has already logged the frame,
// checked its checksum (frames with a bad sum never get here) and answered the search frame;
// a family only handles the control commands.
class UnitBehaviour : public QObject
{
    Q_OBJECT
public:
    explicit UnitBehaviour(const UnitConfig &unit, QObject *parent = nullptr);
    ~UnitBehaviour() override;

    // A control frame that arrived at `board`. `data` is the bytes between the command code
    // and the checksum; `frame` is the whole datagram. Return the replies to send.
    virtual QList<Reply> handle(Board board, uint8_t command, const QByteArray &data,
                                const QByteArray &frame);

    // The unit's state as key=value lines, written to <state-dir>/<main-ip>.state after
    // every frame and after every stateChanged(). Keys must not contain "=" or newlines.
    virtual StateLines state() const;

    const UnitConfig &unit() const { return m_unit; }

    // Set by the emulator: sends an unsolicited reply, and rewrites the state file.
    void setHost(std::function<void(const Reply &)> send, std::function<void()> changed);

protected:
    // A frame that leaves from the given board: device address A5 FF for the main board,
    // <HIS class> FF for the HIS board, frame kind 0x01.
    QByteArray frameFrom(Board board, uint8_t command, const QByteArray &data) const;
    Reply reply(Board board, uint8_t command, const QByteArray &data) const;

    // For state that changes without a frame (a timer, a transition running out).
    void send(const Reply &reply);
    void stateChanged();

    // A code the unit did not know, kept once: a stream of unknown frames must not grow the
    // unit or its state file. appendUnknown() lists them under "unknown".
    void noteUnknown(const QString &code);
    void appendUnknown(StateLines &lines) const;

private:
    UnitConfig m_unit;
    std::function<void(const Reply &)> m_send;
    std::function<void()> m_changed;
    QStringList m_unknown;
};
