// The panel kit driven through its hooks alone: no link, no socket. Mouse events carry explicit
// global points, so the drags do not depend on where the offscreen windows sit.
#include "SwitcherData/unitcontrol.h"
#include "common/centre.h"
#include "common/keyflash.h"
#include "common/pictureiconengine.h"
#include "common/pipsettingspane.h"
#include "common/tbarsequencer.h"
#include "common/unitstateguard.h"
#include "common/windowdrag.h"
#include "modalanswer.h"

#include <QApplication>
#include <QComboBox>
#include <QElapsedTimer>
#include <QIcon>
#include <QMouseEvent>
#include <QPluginLoader>
#include <QPointer>
#include <QSlider>
#include <QSpinBox>
#include <QTimer>
#include <QtTest>
#include <ctime>
#include <memory>

namespace {

void mouse(QWidget *to, QEvent::Type type, QPoint local, QPoint global)
{
    const Qt::MouseButtons held = type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton;
    QMouseEvent event(type, local, global, Qt::LeftButton, held, Qt::NoModifier);
    QApplication::sendEvent(to, &event);
}

// A unit that writes down the PIP actions it is told, as "<what> <value>".
struct FakeLink : UnitControl
{
    FakeLink() : UnitControl(Family::Rvx3210) {}
    QStringList sent;

protected:
    void perform(const Call &c) override
    {
        switch (c.action) {
        case UnitAction::PipSize:
            sent << QStringLiteral("size %1").arg(c.a);
            break;
        case UnitAction::PipPosition:
            sent << QStringLiteral("%1 %2").arg(QLatin1String(c.a ? "h" : "v")).arg(c.b);
            break;
        case UnitAction::PipBorder:
            sent << QStringLiteral("enable %1").arg(c.a);
            break;
        case UnitAction::PipBorderColor:
            sent << QStringLiteral("color %1").arg(c.a);
            break;
        case UnitAction::PipBorderWidth:
            sent << QStringLiteral("width %1").arg(c.a);
            break;
        default:
            sent << QStringLiteral("other");
        }
    }
};

// A T-bar with its sequencer; what the sequencer does is written down as text.
struct TbarRig
{
    explicit TbarRig(int max = 127)
    {
        slider.setRange(0, max);
        TbarSequencer::Hooks hooks;
        hooks.send = [this](uint8_t d, uint8_t v) { log << QStringLiteral("%1,%2").arg(d).arg(v); };
        hooks.swapBuses = [this] { log << QStringLiteral("swap"); };
        hooks.autoLamp = [this](bool lit) { lamps << lit; };
        seq = new TbarSequencer(&owner, &slider, std::move(hooks));
        QObject::connect(&slider, &QSlider::valueChanged, &owner,
                         [this](int v) { seq->setslider0(v, falg); });
    }
    void sweep(int from, int to)
    {
        for (int v = from; from <= to ? v <= to : v >= to; v += from <= to ? 1 : -1)
            slider.setValue(v);
    }

    QObject owner;
    QSlider slider;
    TbarSequencer *seq = nullptr;
    bool falg = true;
    QStringList log;
    QList<bool> lamps;
};

QStringList frames(int direction, int from, int to)
{
    QStringList out;
    for (int v = from; v <= to; ++v)
        out << QStringLiteral("%1,%2").arg(direction).arg(v);
    return out;
}

} // namespace

class TestPanelKit : public QObject
{
    Q_OBJECT

private slots:
    void dragMovesTarget_data();
    void dragMovesTarget();
    void keepTitleOnScreen_data();
    void keepTitleOnScreen();
    void tbarSecondTopArrivalSwapsNothing();
    void tbarAutoRunsInSteps();
    void tbarAutoSurvivesItsOwner();
    void flashKeyOrder();
    void pipPositionWaitsForSize();
    void pipStateEcho_data();
    void pipStateEcho();
    void picturesLoadedOnceFromThePluginFile();
};

// A window at (100, 100) holds a strip (0,0 400x30) holding a child (0,20 50x10). The drag is
// installed on `handle`, events go to `at`; the press is global (500, 500).
void TestPanelKit::dragMovesTarget_data()
{
    QTest::addColumn<QString>("handle");
    QTest::addColumn<int>("target");
    QTest::addColumn<int>("band");
    QTest::addColumn<QString>("at");
    QTest::addColumn<QPoint>("press");
    QTest::addColumn<QList<QPoint>>("locals");
    QTest::addColumn<QList<QPoint>>("globals");
    QTest::addColumn<QPoint>("windowShift");
    QTest::addColumn<QPoint>("stripShift");

    const int parent = int(WindowDrag::Target::Parent);
    const int window = int(WindowDrag::Target::Window);
    const int handle = int(WindowDrag::Target::Handle);
    const QPoint p(10, 10);
    // Each move goes from the point of the one before, not from the press.
    QTest::newRow("parent follows each step")
        << "strip" << parent << 0 << "strip" << p << QList<QPoint>{p, p}
        << QList<QPoint>{{510, 520}, {505, 525}} << QPoint(5, 25) << QPoint();
    QTest::newRow("window of a grandchild") << "child" << window << 0 << "child" << p << QList<QPoint>{p}
                                            << QList<QPoint>{{530, 490}} << QPoint(30, -10) << QPoint();
    QTest::newRow("parent of a grandchild is the strip")
        << "child" << parent << 0 << "child" << p << QList<QPoint>{p} << QList<QPoint>{{530, 490}} << QPoint()
        << QPoint(30, -10);
    // Events the child leaves unhandled reach the strip.
    QTest::newRow("through an unhandled child")
        << "strip" << parent << 0 << "child" << QPoint(5, 5) << QList<QPoint>{{5, 5}}
        << QList<QPoint>{{520, 500}} << QPoint(20, 0) << QPoint();
    // Only the title band drags; a move below it does not take the point either.
    QTest::newRow("band: below, then inside")
        << "window" << handle << 30 << "window" << p << QList<QPoint>{{10, 40}, {10, 10}}
        << QList<QPoint>{{540, 560}, {550, 505}} << QPoint(50, 5) << QPoint();
    // The band is measured in the handle: the child's y 5 is 25 there, its y 15 is 35.
    QTest::newRow("band in the handle's terms")
        << "window" << handle << 30 << "child" << QPoint(5, 5) << QList<QPoint>{{5, 15}, {5, 5}}
        << QList<QPoint>{{520, 520}, {510, 500}} << QPoint(10, 0) << QPoint();
}

void TestPanelKit::dragMovesTarget()
{
    QFETCH(QString, handle);
    QFETCH(int, target);
    QFETCH(int, band);
    QFETCH(QString, at);
    QFETCH(QPoint, press);
    QFETCH(QList<QPoint>, locals);
    QFETCH(QList<QPoint>, globals);
    QFETCH(QPoint, windowShift);
    QFETCH(QPoint, stripShift);

    QWidget window;
    window.setGeometry(100, 100, 400, 300);
    auto *strip = new QWidget(&window);
    strip->setGeometry(0, 0, 400, 30);
    auto *child = new QWidget(strip);
    child->setGeometry(0, 20, 50, 10);
    const QMap<QString, QWidget *> named{{"window", &window}, {"strip", strip}, {"child", child}};
    WindowDrag *drag = WindowDrag::install(named.value(handle), WindowDrag::Target(target), band);
    QWidget *to = named.value(at);

    const QPoint windowAt = window.pos();
    const QPoint stripAt = strip->pos();
    mouse(to, QEvent::MouseButtonPress, press, {500, 500});
    QVERIFY(drag->dragging());
    for (int i = 0; i < globals.size(); ++i)
        mouse(to, QEvent::MouseMove, locals.at(i), globals.at(i));
    QCOMPARE(window.pos() - windowAt, windowShift);
    QCOMPARE(strip->pos() - stripAt, stripShift);

    // After the release nothing moves any more.
    mouse(to, QEvent::MouseButtonRelease, press, globals.last());
    QVERIFY(!drag->dragging());
    mouse(to, QEvent::MouseMove, press, globals.last() + QPoint(40, 40));
    QCOMPARE(window.pos() - windowAt, windowShift);
    QCOMPARE(strip->pos() - stripAt, stripShift);
}

void TestPanelKit::keepTitleOnScreen_data()
{
    QTest::addColumn<QRect>("centred");
    QTest::addColumn<QRect>("available");
    QTest::addColumn<QPoint>("topLeft");
    QTest::newRow("fits: stays centred")
        << QRect(260, 140, 1400, 800) << QRect(0, 0, 1920, 1080) << QPoint(260, 140);
    // 1366 x 768: the RVX3210 panel's centring puts it at -17, -16.
    QTest::newRow("wider and taller: close key and band on screen")
        << QRect(-17, -16, 1400, 800) << QRect(0, 0, 1366, 768) << QPoint(-34, 0);
    QTest::newRow("panel under a top bar of 28")
        << QRect(-17, -16, 1400, 800) << QRect(0, 28, 1366, 740) << QPoint(-34, 28);
    QTest::newRow("fits, but past the bottom")
        << QRect(100, 500, 1000, 600) << QRect(0, 0, 1280, 1024) << QPoint(100, 424);
    QTest::newRow("second screen to the right")
        << QRect(1700, -20, 1000, 600) << QRect(1920, 0, 1280, 1024) << QPoint(1920, 0);
}

void TestPanelKit::keepTitleOnScreen()
{
    QFETCH(QRect, centred);
    QFETCH(QRect, available);
    QFETCH(QPoint, topLeft);
    const QRect placed = ::keepTitleOnScreen(centred, available);
    QCOMPARE(placed.topLeft(), topLeft);
    QCOMPARE(placed.size(), centred.size());
    // The band's right end, where the close key sits, is on the screen.
    QVERIFY(available.contains(placed.topRight()));
}

void TestPanelKit::tbarSecondTopArrivalSwapsNothing()
{
    TbarRig rig;
    rig.sweep(1, 127);
    rig.log.clear();
    // Half way back and up again: the transition was already counted at the top.
    rig.sweep(126, 120);
    rig.sweep(121, 127);
    QCOMPARE(rig.log.count(QStringLiteral("swap")), 0);
    QCOMPARE(rig.log.mid(rig.log.size() - 2), (QStringList{"1,128", "0,0"}));
}

void TestPanelKit::tbarAutoRunsInSteps()
{
    TbarRig rig;
    QElapsedTimer t;
    t.start();
    rig.seq->btnAuto_and_slider();
    // Up to 126 only, so the top end (and its swap) is left to the unit.
    QCOMPARE(rig.slider.value(), 126);
    QCOMPARE(rig.log, frames(1, 1, 126));
    // Lit on leaving the bottom, and still lit: 126 is no end.
    QCOMPARE(rig.lamps, QList<bool>{true});
    QVERIFY2(t.elapsed() >= 125 * 20, qPrintable(QString::number(t.elapsed())));

    // From the top: down to 1, then 0 ends the return stroke.
    rig.slider.setValue(127);
    rig.log.clear();
    rig.seq->btnAuto_and_slider();
    QCOMPARE(rig.slider.value(), 0);
    QCOMPARE(rig.log.mid(rig.log.size() - 3), (QStringList{"swap", "0,128", "1,0"}));
    QCOMPARE(rig.log.size(), 126 + 3);
}

void TestPanelKit::tbarAutoSurvivesItsOwner()
{
    auto rig = std::make_unique<TbarRig>();
    QPointer<TbarSequencer> seq = rig->seq;
    // The owner goes in the middle of the run, as a panel closed during AUTO does.
    QTimer::singleShot(100, this, [&] { delete seq.data(); });
    seq->btnAuto_and_slider();
    QVERIFY(seq.isNull());
    const int reached = rig->slider.value();
    QVERIFY2(reached > 0 && reached < 126, qPrintable(QString::number(reached)));
}

void TestPanelKit::flashKeyOrder()
{
    QObject owner;
    QStringList steps;
    auto lamp = [&](bool lit) { steps << (lit ? "lit" : "unlit"); };
    QStringList seenDuringWait;
    QTimer::singleShot(60, this, [&] { seenDuringWait = steps; });

    QElapsedTimer t;
    t.start();
    const std::clock_t cpu = std::clock();
    QVERIFY(flashKey(
        &owner, 200, lamp, [&] { steps << "send"; }, [&] { steps << "swap"; }));
    const double cpuMs = 1000.0 * double(std::clock() - cpu) / CLOCKS_PER_SEC;
    QVERIFY(t.elapsed() >= 195);
    // The wait sleeps in the event loop: the timer ran in it, and the core was not spun.
    QVERIFY2(cpuMs < 0.5 * t.elapsed(), qPrintable(QString::number(cpuMs)));
    QCOMPARE(seenDuringWait, (QStringList{"lit", "send"}));
    QCOMPARE(steps, (QStringList{"lit", "send", "swap", "unlit"}));

    steps.clear();
    QVERIFY(lightWaitActUnlight(&owner, 20, lamp, [&] { steps << "act"; }));
    QCOMPARE(steps, (QStringList{"lit", "act", "unlit"}));

    // The owner freed during the wait: nothing acts, nothing touches the lamp again.
    auto *gone = new QObject;
    steps.clear();
    QTimer::singleShot(30, this, [&] { delete gone; });
    QVERIFY(!lightWaitActUnlight(gone, 300, lamp, [&] { steps << "act"; }));
    QCOMPARE(steps, QStringList{"lit"});
}

void TestPanelKit::pipPositionWaitsForSize()
{
    FakeLink link;
    PipSettingsPane pane(nullptr, &link, PipSettingsPane::Echo::Send, PipSettingsPane::Position::NeedsSize);
    {
        ModalWatch watch;
        pane.hPosition()->setValue(100);
        pane.vPosition()->setValue(100);
        QCOMPARE(watch.boxes, (QStringList{"Warning|please choose Size", "Warning|please choose Size"}));
        // A unit's record shown meanwhile raises no box.
        const UnitStateGuard showingUnitState;
        pane.set_Hposition_Style(0, 50);
        QCOMPARE(watch.boxes.size(), 2);
    }
    QCOMPARE(link.sent, QStringList{});

    pane.sizeList()->setCurrentIndex(1);
    pane.hPosition()->setValue(120);
    QCOMPARE(link.sent, (QStringList{"size 1", "h 120"}));

    // Where a position needs no size, it goes out at once; every change reaches the sender of
    // its own command with its value.
    FakeLink free;
    PipSettingsPane anyTime(nullptr, &free, PipSettingsPane::Echo::Send, PipSettingsPane::Position::Free);
    anyTime.vPosition()->setValue(30);
    anyTime.hPosition()->setValue(300);
    anyTime.borderEnable()->setCurrentIndex(1);
    anyTime.borderColor()->setCurrentIndex(2);
    anyTime.borderWidth()->setValue(6);
    QCOMPARE(free.sent, (QStringList{"v 30", "h 300", "enable 1", "color 2", "width 6"}));
}

void TestPanelKit::pipStateEcho_data()
{
    QTest::addColumn<int>("echo");
    QTest::addColumn<QStringList>("sent");
    // Small at 1440/810 first, then a record: Large, border on, Red, width 5, H 0x0140 and
    // V 0x02ff, which the Large range already holds at 540.
    QTest::newRow("RVX3210 family sends back")
        << int(PipSettingsPane::Echo::Send)
        << QStringList{"h 960", "v 540", "size 2", "enable 1", "color 1", "width 5", "h 320"};
    QTest::newRow("8000 series only shows") << int(PipSettingsPane::Echo::Quiet) << QStringList{};
}

void TestPanelKit::pipStateEcho()
{
    QFETCH(int, echo);
    QFETCH(QStringList, sent);
    FakeLink link;
    PipSettingsPane pane(nullptr, &link, PipSettingsPane::Echo(echo), PipSettingsPane::Position::NeedsSize);
    pane.sizeList()->setCurrentIndex(0);
    pane.hPosition()->setValue(1440);
    pane.vPosition()->setValue(810);
    link.sent.clear();

    const UnitStateGuard showingUnitState;
    pane.set_Size_Style(2);
    pane.set_BorderEnable_Style(1);
    pane.set_BorderColor_Style(1);
    pane.set_BorderWidth_Style(5);
    pane.set_Hposition_Style(0x01, 0x40);
    pane.set_Vposition_Style(0x02, 0xff);
    QCOMPARE(link.sent, sent);
    // Shown either way, the size bounding the positions.
    QCOMPARE(pane.sizeList()->currentIndex(), 2);
    QCOMPARE(pane.hPosition()->maximum(), 960);
    QCOMPARE(pane.vPosition()->maximum(), 540);
    QCOMPARE(pane.hPosition()->value(), 320);
    QCOMPARE(pane.vPosition()->value(), 540);
    QCOMPARE(pane.borderEnable()->currentIndex(), 1);
    QCOMPARE(pane.borderColor()->currentIndex(), 1);
    QCOMPARE(pane.borderWidth()->value(), 5);

    // Values out of range are no state: ignored, shown nowhere, sent nowhere.
    link.sent.clear();
    pane.set_Size_Style(3);
    pane.set_BorderEnable_Style(2);
    QCOMPARE(pane.sizeList()->currentIndex(), 2);
    QCOMPARE(pane.borderEnable()->currentIndex(), 1);
    QCOMPARE(link.sent, QStringList{});
}

// A restyle makes a new icon of its key's picture: each must share the one picture loaded for
// the file, not decode it again. And the engine must come from its plugin file: built in, Qt 5
// reads its description again on every plugin query, half the cost of a restyle.
void TestPanelKit::picturesLoadedOnceFromThePluginFile()
{
    PictureIconEngine::install();
    QVERIFY2(!PictureIconEngine::pluginFolder().isEmpty(), "the plugin file was not found or did not load");
    QVERIFY(QCoreApplication::libraryPaths().contains(PictureIconEngine::pluginFolder()));
    for (const QStaticPlugin &plugin : QPluginLoader::staticPlugins())
        QVERIFY(plugin.metaData().value(QLatin1String("className")).toString() !=
                QLatin1String("PictureIconPlugin"));
    for (const char *file : {":/images/red/png/3.png", ":/images/white/CUT.bmp"}) {
        const QIcon first(QString::fromLatin1(file)), second(QString::fromLatin1(file));
        const QSize size = first.availableSizes().value(0);
        QVERIFY2(!size.isEmpty(), file);
        QCOMPARE(first.pixmap(size).cacheKey(), second.pixmap(size).cacheKey());
    }
}

QTEST_MAIN(TestPanelKit)
#include "tst_panelkit.moc"
