#pragma once

// What the 8000-series widget tests share: the frames a link built, the key lamps by colour,
// state payloads changed from a unit at rest, and a rig around a whole panel bound to A5 FF.
#include "SwitcherData/rvx5all_workdata.h"
#include "testframes.h"

#include <QAbstractButton>
#include <QByteArray>
#include <QElapsedTimer>
#include <QLabel>
#include <QList>
#include <QPushButton>
#include <QRandomGenerator>
#include <QSignalSpy>
#include <QSlider>
#include <QString>
#include <QTimer>
#include <QWidget>
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

// A press of a settings key: lit for `waitMs`, then unlit, with `frames` (hex) on the wire
// `spy` watches.
inline void checkFlash(QPushButton *key, int waitMs, QSignalSpy &spy, const QByteArray &frames)
{
    QElapsedTimer took;
    took.start();
    QVERIFY(litWhilePressed(key));
    QVERIFY(took.elapsed() >= waitMs * 95 / 100);
    QCOMPARE(key->styleSheet(), Unlit);
    QCOMPARE(takeFrames(spy), hexList(frames));
}

// The table of settings-key flashes (key, wait, frames sent), begun with the RESET and fan
// keys both settings fronts have; the others only flash, for the common wait.
inline void flashTable(std::initializer_list<std::pair<const char *, const char *>> flashOnly)
{
    QTest::addColumn<QByteArray>("key");
    QTest::addColumn<int>("waitMs");
    QTest::addColumn<QByteArray>("frames");

    QTest::newRow("RESET") << QByteArray("btn_reset") << 200
                           << QByteArray("a56c1400a5ff010000000000000000000bd502ae");
    QTest::newRow("fan") << QByteArray("btn_fan") << 600 << QByteArray();
    for (const auto &[row, key] : flashOnly)
        QTest::newRow(row) << QByteArray(key) << 200 << QByteArray();
}

// The `count` keys (-1: however many) under `parent` take no focus and are no default: Space
// or Return on the keyboard never presses one behind the operator's back.
inline void checkKeysLeaveTheKeyboard(QWidget *parent, int count)
{
    const QList<QPushButton *> keys = parent->findChildren<QPushButton *>();
    if (count >= 0)
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

// The checks the panels with PGM and PVW rows share. Each is a whole test's body over a fresh
// rig of the panel's own.

// Whatever a unit or a stranger reports, of any length: shown or ignored, never answered.
// `fix` may set bytes that would otherwise be answered.
template <class Rig>
void checkRandomPayloadsSendNothing(quint32 seed, int count,
                                    const std::function<void(QByteArray &)> &fix = {})
{
    Rig rig;
    QRandomGenerator random(seed);
    for (int i = 0; i < count; ++i) {
        QByteArray data(int(random.bounded(40)), Qt::Uninitialized);
        for (char &c : data)
            c = char(random.bounded(256));
        if (fix)
            fix(data);
        rig.state(data);
    }
    QCOMPARE(rig.sent(), QList<QByteArray>());
}

// CH1 shows `first` and steps through the main source list to `labels`, each step sent by its
// code, and comes back round; its key is unlit after the wait.
template <class Rig> void checkMainSourcesCycleBack(const QString &first, const QStringList &labels)
{
    Rig rig;
    QCOMPARE(rig.text("label_ch1"), first);
    QStringList shown;
    for (int i = 0; i < labels.size(); ++i) {
        rig.press("btn_ch1");
        shown << rig.text("label_ch1");
    }
    QCOMPARE(shown, labels);
    QCOMPARE(rig.sent(),
             hexList("a56c1500a5ff01000000000000000000b9038703ae a56c1500a5ff01000000000000000000b9048803ae "
                     "a56c1500a5ff01000000000000000000b9058903ae a56c1500a5ff01000000000000000000b9068a03ae "
                     "a56c1500a5ff01000000000000000000b9088c03ae a56c1500a5ff01000000000000000000b9008403ae "
                     "a56c1500a5ff01000000000000000000b9078b03ae"));
    QVERIFY(isOff(rig.key("btn_ch1")));
}

// FTB reported on (`ftbOn`) blinks; off (`ftbOff`) is shown, but the blink started goes on
// until FTB is pressed twice.
template <class Rig> void checkFtbStateRule(const QByteArray &ftbOn, const QByteArray &ftbOff)
{
    Rig rig;
    rig.state(ftbOn);
    QVERIFY(rig.panel.ftbBlinking());
    rig.state(ftbOff);
    QVERIFY(isOff(rig.key("btn_ftb")));
    QVERIFY(rig.panel.ftbBlinking());
    rig.press("btn_ftb");
    QVERIFY(isRed(rig.key("btn_ftb")));
    QVERIFY(rig.panel.ftbBlinking());
    rig.press("btn_ftb");
    QVERIFY(!rig.panel.ftbBlinking());
    QVERIFY(isOff(rig.key("btn_ftb")));
}

// CUT lights for a moment and swaps the buses; with PIP on (`pipOn` goes out) a CUT changes
// the inset and the buses stay.
template <class Rig> void checkCutLampAndInset(const char *pipOn)
{
    Rig rig;
    rig.state(hex("0102"));
    rig.press("btn_cut");
    QVERIFY(isRed(rig.key("btn_cut")));
    QVERIFY(isRed(rig.key("btn_pgm2")) && isGreen(rig.key("btn_pvw1")));
    QTRY_VERIFY(isOff(rig.key("btn_cut")));
    rig.press("btn_pip btn_cut");
    QVERIFY(isRed(rig.key("btn_pgm2")) && isGreen(rig.key("btn_pvw1")));
    QCOMPARE(rig.sent(), hexList(QByteArray(Cut) + ' ' + pipOn + ' ' + Cut));
}

// AUTO does nothing while the fader stands between its ends.
template <class Rig> void checkAutoOnlyFromAnEnd()
{
    Rig rig;
    QSlider *tbar = rig.slider("slider_video");
    tbar->setValue(64);
    rig.sent();
    rig.press("btn_auto");
    QCOMPARE(rig.sent(), QList<QByteArray>());
    QCOMPARE(tbar->value(), 64);
}

// AUTO after `state` (PGM 1, PVW 2, PIP on): the run reaches `top`, the fader comes back to
// its full range at the top, the unit hears AUTO only, and the buses change places although
// PIP is on.
template <class Rig> void checkAutoRun(Rig &rig, const QByteArray &state, int top)
{
    rig.state(state);
    QSlider *tbar = rig.slider("slider_video");
    int highest = 0;
    // The run's own travel, before the fader gets its full range back.
    const QMetaObject::Connection watch =
        QObject::connect(tbar, &QSlider::valueChanged, tbar, [&highest, tbar](int v) {
            if (tbar->maximum() != 127)
                highest = qMax(highest, v);
        });
    rig.press("btn_auto");
    QObject::disconnect(watch);
    QCOMPARE(highest, top);
    QCOMPARE(tbar->maximum(), 127);
    QCOMPARE(tbar->value(), 127);
    QCOMPARE(rig.sent(), hexList(Auto));
    QVERIFY(isRed(rig.key("btn_pgm2")) && isGreen(rig.key("btn_pvw1")));
    QVERIFY(isOff(rig.key("btn_auto")));
}

// T-bar strokes: away from an end lights AUTO, an end reached swaps the buses; each move goes
// out as the fader's value.
template <class Rig> void checkTbarStrokes()
{
    Rig rig;
    rig.state(hex("0102"));
    QSlider *tbar = rig.slider("slider_video");
    tbar->setValue(10);
    QVERIFY(isRed(rig.key("btn_auto")));
    tbar->setValue(127);
    QVERIFY(isOff(rig.key("btn_auto")));
    QVERIFY(isRed(rig.key("btn_pgm2")) && isGreen(rig.key("btn_pvw1")));
    tbar->setValue(27);
    tbar->setValue(0);
    QVERIFY(isRed(rig.key("btn_pgm1")) && isGreen(rig.key("btn_pvw2")));
    QCOMPARE(rig.sent(), hexList("a56c1600a5ff0100000000000000000082010a5903ae "
                                 "a56c1600a5ff01000000000000000000820180cf03ae "
                                 "a56c1600a5ff010000000000000000008200004e03ae "
                                 "a56c1600a5ff01000000000000000000820064b203ae "
                                 "a56c1600a5ff01000000000000000000820080ce03ae "
                                 "a56c1600a5ff010000000000000000008201004f03ae"));
}

// A key of the keyboard does what the click on `click` (none: nothing) does, on the wire and
// on every lamp.
template <class Rig> void checkKeyAsClick(int key, int modifiers, const QString &click)
{
    auto lamps = [](Rig &rig) {
        QStringList out;
        for (QPushButton *k : rig.panel.template findChildren<QPushButton *>())
            out << k->objectName() + QLatin1Char('=') + k->styleSheet();
        return out;
    };
    Rig byKey;
    Rig byClick;
    for (Rig *rig : {&byKey, &byClick})
        rig->state(hex("0102"));
    QTest::keyClick(&byKey.panel, Qt::Key(key), Qt::KeyboardModifiers(modifiers));
    if (!click.isEmpty())
        byClick.press(click);
    QCOMPARE(byKey.sent(), byClick.sent());
    QCOMPARE(lamps(byKey), lamps(byClick));
    QVERIFY(byKey.panel.isVisible());
}

} // namespace Rig8000
