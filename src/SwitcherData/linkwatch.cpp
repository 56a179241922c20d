#include "linkwatch.h"

#include "framecodec.h"
#include "protocol.h"

#include <QByteArray>

LinkWatch::LinkWatch(QObject *parent) : QObject(parent)
{
    m_window.setSingleShot(true);
    m_window.setInterval(ReplyWindowMs);
    connect(&m_window, &QTimer::timeout, this, [this] { setAnswering(false); });
}

bool LinkWatch::asksForState(const QByteArray &frame)
{
    return frame.size() >= FrameCodec::MinFrame && FrameCodec::byteAt(frame, 16) == Protocol::CmdReadState;
}

void LinkWatch::sent(const QByteArray &frame)
{
    if (asksForState(frame) && !m_window.isActive())
        m_window.start();
}

void LinkWatch::replied()
{
    m_window.stop();
    setAnswering(true);
}

void LinkWatch::setAnswering(bool answering)
{
    if (m_answering == answering)
        return;
    m_answering = answering;
    emit answeringChanged(answering);
}
