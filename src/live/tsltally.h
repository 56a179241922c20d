#pragma once

#include "tsltarget.h"

#include <QByteArray>
#include <QList>
#include <QObject>
#include <QStringList>
#include <QTimer>
#include <QUdpSocket>
#include <QVector>

// Tally for other studio equipment (multiviewers, camera lights) as UMD display messages over
// UDP, one display message per datagram so a listener that reads only the first message of a
// packet still sees every input. Each input of the open panel is one display: its number is
// the index, its label the text; the programme input's right-hand and text tallies are red, the
// preview input's left-hand tally green, an input on both gets both, and the rest are off.
// Brightness is full on every message, the dark ones included, so a display that dims a
// message to its brightness keeps showing the label of an input that is off air.
//
// What changed goes out at once; every input goes out again every RefreshMs while there are
// targets and inputs, so a listener started late, or one that lost a datagram, catches up.
// With no targets nothing is sent at all.
class TslTally : public QObject
{
    Q_OBJECT
public:
    static constexpr int RefreshMs = 2000;
    // The two-bit tally values, and the brightness every message carries.
    static constexpr int Off = 0;
    static constexpr int Red = 1;
    static constexpr int Green = 2;
    static constexpr int Brightness = 3;

    explicit TslTally(QObject *parent = nullptr);

    // The screen this tally's messages name, and what is added to each input number to make
    // its display index. A lone unit keeps screen 0 and offset 0; each further unit of a
    // production gets its own screen and offset, so a listener that reads only the index can
    // still tell the units apart.
    void setPlace(int screen, int indexOffset);
    int screen() const { return m_screen; }
    int indexOffset() const { return m_indexOffset; }

    // Where the messages go. A target new to the list is told every input at once.
    void setTargets(const QList<TslTarget> &targets);
    const QList<TslTarget> &targets() const { return m_targets; }
    // The open panel's inputs in order, as the panel labels them; input n is display index n.
    // An input dropped from the list is sent dark once if it was lit, so no lamp stays on.
    void setInputs(const QStringList &labels);
    // Input numbers from 1; 0, or any number that is not an input (the bars), lights nothing.
    void setTally(int programme, int preview);
    // False while no panel is open or the unit does not answer: every tally goes dark, though
    // the labels are still sent. Starts false.
    void setLive(bool live);

    // One display message, all integers low byte first: byte count after the count itself,
    // version 0, flags 0 (ASCII text, no screen control), screen, index, control, text
    // length, text.
    static QByteArray packet(int index, int control, const QByteArray &text, int screen = 0);
    // The control word: right-hand tally in bits 0-1, text tally 2-3, left-hand tally 4-5,
    // brightness 6-7.
    static int control(bool programme, bool preview);
    // The label as ASCII; characters outside printable ASCII become '?'.
    static QByteArray asciiText(const QString &label);

private:
    struct Display
    {
        int control;
        QByteArray text;
        bool operator!=(const Display &o) const { return control != o.control || text != o.text; }
    };

    Display wanted(int input) const;
    void update();
    void sendAll(const QList<TslTarget> &to);
    void send(int index, const Display &display, const QList<TslTarget> &to);
    void keepRefreshing();

    QUdpSocket m_socket;
    QTimer m_refresh;
    QList<TslTarget> m_targets;
    QStringList m_labels;
    int m_screen = 0;
    int m_indexOffset = 0;
    int m_programme = 0;
    int m_preview = 0;
    bool m_live = false;
    // What the targets were last told, per input (index - 1).
    QVector<Display> m_shown;
};
