#pragma once

#include <QObject>
#include <QTimer>

class QByteArray;

// Whether the unit answers when asked for its state. Every frame the link sends is shown to
// sent(); a state request opens a window of ReplyWindowMs, and a state reply shown before it
// closes (replied()) keeps the unit "answering". A window that closes unanswered marks it not
// answering until the next reply. Nothing is sent or read here: the watch only sees the
// link's own traffic, so it changes nothing on the wire.
//
// Only the links that ask for state carry one. The RVX3220 panel cannot ask for its unit's
// state (and its link ignores what the unit sends back), so that link has no watch and the
// unit is never taken for silent.
class LinkWatch : public QObject
{
    Q_OBJECT
public:
    static constexpr int ReplyWindowMs = 1000;

    explicit LinkWatch(QObject *parent = nullptr);

    // True until a state request has gone a whole window unanswered: nothing known yet is
    // not a dead unit.
    bool isAnswering() const { return m_answering; }

    // A frame that went out to the unit. Only a state request opens a window; a second request
    // inside an open window keeps its first deadline, so a unit polled faster than the window
    // that never answers is still found out.
    void sent(const QByteArray &frame);
    // A state reply from the unit was shown.
    void replied();

    // True for a control frame whose command code asks the unit for its state.
    static bool asksForState(const QByteArray &frame);

signals:
    void answeringChanged(bool answering);

private:
    void setAnswering(bool answering);

    QTimer m_window;
    bool m_answering = true;
};
