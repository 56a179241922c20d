#pragma once

// What the 8000-series widget tests share: the frames a link built, the key lamps by colour,
// state payloads changed from a unit at rest, and a rig around a whole panel bound to A5 FF.
#include "SwitcherData/rvx5all_workdata.h"

#include <QAbstractButton>
#include <QByteArray>
#include <QLabel>
#include <QList>
#include <QPushButton>
#include <QSignalSpy>
#include <QSlider>
#include <QString>
#include <QTimer>
#include <QWidget>
#include <QtTest>
#include <initializer_list>
#include <utility>

namespace Rig8000 {

// Frames to A5 FF, by what they carry.
inline constexpr char ReadState[] = "a56c1400a5ff01000000000000000000491303ae";
inline constexpr char Cut[] = "a56c1400a5ff01000000000000000000834d03ae";
inline constexpr char Auto[] = "a56c1400a5ff01000000000000000000844e03ae";
inline constexpr char SetWipe[] = "a56c1400a5ff010000000000000000008f5903ae";

// The sheet of a settings key that is not lit.
inline const QString Unlit = QStringLiteral(
    "background-color: qlineargradient(x1: 0, y1: 0, x2: 0, y2: 1,  stop: 0 #dadbde,stop: 0.4 #E4DBE8,stop: "
    "0.6 #f6f7fa,stop: 1 #D0D1D4);;color: rgb(0,0,0);border-radius: 7px;border: 2px groove "
    "gray;border-style: "
    "outset;");

// Everything `spy` (on showCurrentData) saw since the last call, in order.
inline QList<QByteArray> takeFrames(QSignalSpy &spy)
{
    QList<QByteArray> out;
    for (const QList<QVariant> &args : qAsConst(spy))
        out << args.at(0).toByteArray();
    spy.clear();
    return out;
}

// The state payload `rest` (hex) with the bytes at the given offsets changed.
inline QByteArray payload(const char *rest, std::initializer_list<std::pair<int, int>> changes)
{
    QByteArray p = QByteArray::fromHex(rest);
    for (const auto &[at, value] : changes)
        p[at] = char(value);
    return p;
}

inline bool isRed(const QWidget *key)
{
    return key->styleSheet().contains(QLatin1String("stop: 0 #D22E00"));
}
inline bool isGreen(const QWidget *key)
{
    return key->styleSheet().contains(QLatin1String("stop: 0 #19FA00"));
}
inline bool isOff(const QWidget *key)
{
    return key->styleSheet().contains(QLatin1String("stop: 0.6 #f6f7fa"));
}

// Presses the key and tells whether it was lit while its press ran. A key that does nothing
// returns at once; the probe still gets its turn before the answer.
inline bool litWhilePressed(QPushButton *key)
{
    bool fired = false;
    bool lit = false;
    QTimer::singleShot(60, key, [&] {
        fired = true;
        lit = key->styleSheet() != Unlit;
    });
    key->click();
    if (!QTest::qWaitFor([&] { return fired; }))
        return false;
    return lit;
}

// A panel shown and bound to A5 FF (its HIS board E0 FF), with what it sent on binding taken.
template <class Panel, class Key = QPushButton> struct PanelRig
{
    PanelRig()
    {
        panel.DevTypeID(QStringLiteral("127.0.0.2"), 0xA5, 0xFF, QStringLiteral("127.0.0.3"), 0xE0, 0xFF);
        panel.show();
        sent();
    }
    Key *key(const QString &name) const { return panel.template findChild<Key *>(name); }
    QLabel *label(const char *name) const { return panel.template findChild<QLabel *>(QLatin1String(name)); }
    QSlider *slider(const char *name) const
    {
        return panel.template findChild<QSlider *>(QLatin1String(name));
    }
    QString text(const char *name) const { return label(name)->text(); }
    // Everything the panel built since the last call, in order.
    QList<QByteArray> sent() { return takeFrames(spy); }
    void state(const QByteArray &data) { emit panel.link()->on_signals_3210Data(data); }
    // Clicks the keys named, blank-separated, in order.
    void press(const QString &keys)
    {
        for (const QString &name : keys.split(QLatin1Char(' '), Qt::SkipEmptyParts))
            key(name)->click();
    }

    Panel panel;
    QSignalSpy spy{panel.link(), &RVX5ALL_workdata::showCurrentData};
};

} // namespace Rig8000
