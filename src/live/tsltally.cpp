#include "tsltally.h"

#include <algorithm>

namespace {

void putU16(char *at, int v)
{
    at[0] = char(v & 0xFF);
    at[1] = char((v >> 8) & 0xFF);
}

// Version, flags and screen, index, control and text length follow the byte count.
constexpr int HeadAfterCount = 10;
constexpr int Head = 2 + HeadAfterCount;
// The byte count is 16 bits wide.
constexpr int MaxText = 0xFFFF - HeadAfterCount;

} // namespace

TslTally::TslTally(QObject *parent) : QObject(parent)
{
    m_refresh.setInterval(RefreshMs);
    connect(&m_refresh, &QTimer::timeout, this, [this] { sendAll(m_targets); });
}

QByteArray TslTally::packet(int index, int control, const QByteArray &text, int screen)
{
    const int length = qMin(text.size(), MaxText);
    QByteArray p(Head + length, '\0');
    char *d = p.data();
    putU16(d, HeadAfterCount + length);
    // d[2] version and d[3] flags: zero.
    putU16(d + 4, screen);
    putU16(d + 6, index);
    putU16(d + 8, control);
    putU16(d + 10, length);
    std::copy(text.constData(), text.constData() + length, d + Head);
    return p;
}

int TslTally::control(bool programme, bool preview)
{
    const int rightHand = programme ? Red : Off;
    const int text = programme ? Red : Off;
    const int leftHand = preview ? Green : Off;
    return rightHand | text << 2 | leftHand << 4 | Brightness << 6;
}

QByteArray TslTally::asciiText(const QString &label)
{
    QByteArray out(label.size(), '?');
    for (int i = 0; i < label.size(); ++i) {
        const ushort c = label.at(i).unicode();
        if (c >= 0x20 && c < 0x7F)
            out[i] = char(c);
    }
    return out;
}

void TslTally::setTargets(const QList<TslTarget> &targets)
{
    QList<TslTarget> added;
    for (const TslTarget &t : targets)
        if (!m_targets.contains(t))
            added << t;
    m_targets = targets;
    keepRefreshing();
    sendAll(added);
}

void TslTally::setPlace(int screen, int indexOffset)
{
    m_screen = qBound(0, screen, 0xFFFF);
    m_indexOffset = qBound(0, indexOffset, 0xFFFF - 1);
}

void TslTally::setInputs(const QStringList &labels)
{
    m_labels = labels;
    keepRefreshing();
    update();
}

void TslTally::setTally(int programme, int preview)
{
    m_programme = programme;
    m_preview = preview;
    update();
}

void TslTally::setLive(bool live)
{
    m_live = live;
    update();
}

TslTally::Display TslTally::wanted(int input) const
{
    return {control(m_live && input == m_programme, m_live && input == m_preview),
            asciiText(m_labels.at(input - 1))};
}

void TslTally::update()
{
    QVector<Display> next;
    next.reserve(m_labels.size());
    for (int input = 1; input <= m_labels.size(); ++input)
        next << wanted(input);
    for (int i = 0; i < next.size(); ++i)
        if (i >= m_shown.size() || next.at(i) != m_shown.at(i))
            send(i + 1, next.at(i), m_targets);
    const int dark = control(false, false);
    for (int i = next.size(); i < m_shown.size(); ++i)
        if (m_shown.at(i).control != dark)
            send(i + 1, {dark, m_shown.at(i).text}, m_targets);
    m_shown = next;
}

void TslTally::sendAll(const QList<TslTarget> &to)
{
    for (int i = 0; i < m_shown.size(); ++i)
        send(i + 1, m_shown.at(i), to);
}

void TslTally::send(int index, const Display &display, const QList<TslTarget> &to)
{
    if (to.isEmpty())
        return;
    const QByteArray p = packet(m_indexOffset + index, display.control, display.text, m_screen);
    for (const TslTarget &t : to)
        m_socket.writeDatagram(p, t.host, t.port);
}

void TslTally::keepRefreshing()
{
    if (m_targets.isEmpty() || m_labels.isEmpty())
        m_refresh.stop();
    else if (!m_refresh.isActive())
        m_refresh.start();
}
