#pragma once

// What the 8000-series widget tests share: the frames a link built, the key lamps by colour,
// state payloads changed from a unit at rest, and a rig around a whole panel bound to A5 FF.
#include "SwitcherData/rvx5all_workdata.h"
#include "testframes.h"

#include <QElapsedTimer>
#include <QLabel>
#include <QPushButton>
#include <QRandomGenerator>
#include <QSignalSpy>
#include <QSlider>
#include <QTimer>
#include <QtTest>
#include <functional>
#include <initializer_list>
#include <utility>

namespace Rig8000 {

// Frames to A5 FF, by what they carry.
inline constexpr char ReadState[] = "a56c1400a5ff01000000000000000000491303ae";
inline constexpr char Cut[] = "a56c1400a5ff01000000000000000000834d03ae";
inline constexpr char Auto[] = "a56c1400a5ff01000000000000000000844e03ae";
inline constexpr char SetWipe[] = "a56c1400a5ff010000000000000000008f5903ae";

// A unit at rest: PGM 1, PVW 2, MIX, CH1 IN1 at 50, CH2 IN2 at 60, FADE, wipe U, FTB off,
// PIP off, border 0/0/2, size L at 0/0, STILL off, rate 0, 1080P60, mute off.
inline constexpr char Rest[] = "0102010332043c020200000000020200000000000007000000";

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
inline QByteArray payload(std::initializer_list<std::pair<int, int>> changes, const char *rest = Rest)
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
        lit = isGreen(key);
    });
    key->click();
    return QTest::qWaitFor([&] { return fired; }) && lit;
}

// The settings keys both settings fronts have (RESET, fan), then the `flashOnly` ones: a press
// is lit for its wait, then unlit, with the frames (hex) on the wire.
inline void flashTable(std::initializer_list<const char *> flashOnly)
{
    QTest::addColumn<QByteArray>("key");
    QTest::addColumn<int>("waitMs");
    QTest::addColumn<QByteArray>("frames");
    QTest::newRow("btn_reset") << QByteArray("btn_reset") << 200
                               << QByteArray("a56c1400a5ff010000000000000000000bd502ae");
    QTest::newRow("btn_fan") << QByteArray("btn_fan") << 600 << QByteArray();
    for (const char *key : flashOnly)
        QTest::newRow(key) << QByteArray(key) << 200 << QByteArray();
}

inline void checkFlash(QPushButton *key, QSignalSpy &spy)
{
    QFETCH(int, waitMs);
    QFETCH(QByteArray, frames);
    QElapsedTimer took;
    took.start();
    QVERIFY(litWhilePressed(key));
    QVERIFY(took.elapsed() >= waitMs * 95 / 100);
    QVERIFY(isOff(key));
    QCOMPARE(takeFrames(spy), hexList(frames));
}

// The `count` keys under `parent` take no focus and are no default: Space or Return on the
// keyboard never presses one behind the operator's back.
inline void checkKeysLeaveTheKeyboard(QWidget *parent, int count)
{
    const QList<QPushButton *> keys = parent->findChildren<QPushButton *>();
    QCOMPARE(keys.size(), count);
    for (QPushButton *key : keys) {
        QVERIFY2(!key->isDefault() && !key->autoDefault(), qPrintable(key->objectName()));
        QCOMPARE(key->focusPolicy(), Qt::NoFocus);
    }
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
    Key *key(const char *name) const { return panel.template findChild<Key *>(QLatin1String(name)); }
    QSlider *slider(const char *name) const
    {
        return panel.template findChild<QSlider *>(QLatin1String(name));
    }
    QString text(const char *name) const
    {
        return panel.template findChild<QLabel *>(QLatin1String(name))->text();
    }
    QList<QByteArray> sent() { return takeFrames(spy); }
    // A state record as the link hands it on: its bytes, then the state decoded.
    void state(const QByteArray &data)
    {
        RVX5ALL_workdata *link = panel.link();
        emit link->on_signals_3210Data(data);
        emit link->stateReported(UnitState::decode(link->stateLayout(), data));
    }
    // Clicks the keys named, blank-separated, in order; "name=value" moves a slider.
    void press(const QString &keys)
    {
        for (const QString &k : keys.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
            const QStringList to = k.split(QLatin1Char('='));
            if (to.size() == 2)
                slider(to[0].toLatin1().constData())->setValue(to[1].toInt());
            else
                key(k.toLatin1().constData())->click();
        }
    }
    // Binding asks the unit for its state, once.
    static void checkBindingAsksForState()
    {
        Panel p;
        QSignalSpy spy(p.link(), &RVX5ALL_workdata::showCurrentData);
        p.DevTypeID(QStringLiteral("127.0.0.2"), 0xA5, 0xFF, QStringLiteral("127.0.0.3"), 0xE0, 0xFF);
        QCOMPARE(takeFrames(spy), hexList(ReadState));
        QCOMPARE(p.link()->on_HIS_IP(), QStringLiteral("127.0.0.3"));
    }

    Panel panel;
    QSignalSpy spy{panel.link(), &RVX5ALL_workdata::showCurrentData};
};

// Whatever a unit or a stranger reports, of any length: shown or ignored, never answered.
// `fix` may set bytes that would otherwise be answered.
template <class Rig>
void checkRandomPayloadsSendNothing(quint32 seed, const std::function<void(QByteArray &)> &fix = {})
{
    Rig rig;
    QRandomGenerator random(seed);
    for (int i = 0; i < 2000; ++i) {
        QByteArray data(int(random.bounded(40)), Qt::Uninitialized);
        for (char &c : data)
            c = char(random.bounded(256));
        if (fix)
            fix(data);
        rig.state(data);
    }
    QCOMPARE(rig.sent(), QList<QByteArray>());
}

} // namespace Rig8000
