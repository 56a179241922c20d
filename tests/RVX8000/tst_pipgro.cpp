// The PIP preview boxes of the RVX5370 and RVX5350 panels offscreen: drags on the wire, the
// unit's positions and the size changes placing the box.
#include "RVX8000/pipgro.h"
#include "rig8000.h"

#include <QMouseEvent>

Q_DECLARE_METATYPE(QList<QPoint>)

namespace {

// Where the mouse goes down; a drag is written as offsets from here.
const QPoint Grab(1000, 600);

struct Rig
{
    explicit Rig(bool rvx5350)
    {
        area.resize(640, 400);
        box = rvx5350 ? new PIPGro5350(&link, &area) : new PIPGro(&link, &area);
        box->DevTypeID(QStringLiteral("127.0.0.2"), 0xA5, 0xFF, QStringLiteral("127.0.0.3"), 0xE0, 0xFF);
        area.show();
    }

    void mouse(QEvent::Type type, QPoint offset, Qt::MouseButton button = Qt::LeftButton)
    {
        const QPoint global = Grab + offset;
        const Qt::MouseButtons held =
            type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::MouseButtons(button);
        QMouseEvent event(type, box->mapFromGlobal(global), global,
                          type == QEvent::MouseMove ? Qt::NoButton : button, held, Qt::NoModifier);
        QApplication::sendEvent(box, &event);
    }
    void drag(const QList<QPoint> &path)
    {
        mouse(QEvent::MouseButtonPress, {});
        for (const QPoint &p : path)
            mouse(QEvent::MouseMove, p);
        mouse(QEvent::MouseButtonRelease, path.isEmpty() ? QPoint() : path.last());
    }
    // The RVX5350 panel names the size slot its own way.
    void setSize(int size)
    {
        if (auto *big = qobject_cast<PIPGro5350 *>(box))
            big->getPIP_SIZ(size);
        else
            box->setRARE_V(size);
    }
    QList<QByteArray> sent() { return Rig8000::takeFrames(spy); }

    RVX5ALL_workdata link;
    QSignalSpy spy{&link, &RVX5ALL_workdata::showCurrentData};
    QWidget area;
    PIPGro *box = nullptr;
};

} // namespace

class TestPipGro : public QObject
{
    Q_OBJECT
private slots:
    void dragSendsBothPositions_data();
    void dragSendsBothPositions();
    void onlyAHeldLeftButtonDrags();
    void unitPositionPlacesBox_data();
    void unitPositionPlacesBox();
    void sizeChangePullsBack_data();
    void sizeChangePullsBack();
};

void TestPipGro::dragSendsBothPositions_data()
{
    QTest::addColumn<bool>("rvx5350");
    QTest::addColumn<int>("size");
    QTest::addColumn<QList<QPoint>>("path");
    QTest::addColumn<QPoint>("at");
    QTest::addColumn<QByteArray>("frames"); // H then V for every move

    // H and V position frames to A5 FF, low byte first: 0, 4, 240, 241, 311, 540, 810, 960,
    // 1128, 1280 and 1440.
    const QByteArray h0 = "a56c1600a5ff01000000000000000000a000006c03ae";
    const QByteArray v0 = "a56c1600a5ff01000000000000000000a100006d03ae";
    const QByteArray h4 = "a56c1600a5ff01000000000000000000a004007003ae";
    const QByteArray v4 = "a56c1600a5ff01000000000000000000a104007103ae";
    const QByteArray h240 = "a56c1600a5ff01000000000000000000a0f0005c04ae";
    const QByteArray v241 = "a56c1600a5ff01000000000000000000a1f1005e04ae";
    const QByteArray h311 = "a56c1600a5ff01000000000000000000a03701a403ae";
    const QByteArray v311 = "a56c1600a5ff01000000000000000000a13701a503ae";
    const QByteArray v540 = "a56c1600a5ff01000000000000000000a11c028b03ae";
    const QByteArray v810 = "a56c1600a5ff01000000000000000000a12a039a03ae";
    const QByteArray h960 = "a56c1600a5ff01000000000000000000a0c0032f04ae";
    const QByteArray h1128 = "a56c1600a5ff01000000000000000000a06804d803ae";
    const QByteArray h1280 = "a56c1600a5ff01000000000000000000a000057103ae";
    const QByteArray h1440 = "a56c1600a5ff01000000000000000000a0a0051104ae";
    auto row = [](const char *name, bool rvx5350, int size, QList<QPoint> path, QPoint at,
                  QByteArrayList frames) {
        QTest::newRow(name) << rvx5350 << size << path << at << frames.join(' ');
    };
    row("5370 medium to the right edge", false, 1, {{266, 0}}, {266, 0}, {h1280, v0});
    row("5370 small to the far corner", false, 0, {{300, 168}}, {300, 168}, {h1440, v810});
    row("5370 small one step truncates", false, 0, {{1, 1}}, {1, 1}, {h4, v4});
    row("5370 large back past the origin stops at 0", false, 2, {{50, 50}, {-20, -30}}, {0, 0},
        {h240, v241, h0, v0});
    row("5350 small to the far right sends 1440 and no more", true, 0, {{100, 100}, {462, 100}, {520, 100}},
        {462, 100}, {h311, v311, h1440, v311, h1440, v311});
    // The box follows the mouse, not its own stopped corner: coming back 100 from beyond the
    // edge moves it 100 from where it stood.
    row("5350 small back from beyond the edge", true, 0, {{500, 0}, {400, 0}}, {362, 0},
        {h1440, v0, h1128, v0});
    row("5350 large stops one short of its size", true, 2, {{400, 400}}, {307, 172}, {h960, v540});
}

void TestPipGro::dragSendsBothPositions()
{
    QFETCH(bool, rvx5350);
    QFETCH(int, size);
    QFETCH(QList<QPoint>, path);
    QFETCH(QPoint, at);
    QFETCH(QByteArray, frames);
    Rig rig(rvx5350);
    rig.setSize(size);
    rig.drag(path);
    QCOMPARE(rig.box->pos(), at);
    QCOMPARE(rig.sent(), hexList(frames));
    QVERIFY(!rig.box->isDragging());
}

void TestPipGro::onlyAHeldLeftButtonDrags()
{
    Rig rig(false);
    rig.mouse(QEvent::MouseMove, {40, 40});
    rig.mouse(QEvent::MouseButtonPress, {}, Qt::RightButton);
    rig.mouse(QEvent::MouseMove, {40, 40}, Qt::RightButton);
    rig.mouse(QEvent::MouseButtonRelease, {40, 40}, Qt::RightButton);
    rig.drag({{10, 0}});
    rig.mouse(QEvent::MouseMove, {80, 80});
    QCOMPARE(rig.box->pos(), QPoint(10, 0));
    QCOMPARE(rig.sent().size(), 2);
}

void TestPipGro::unitPositionPlacesBox_data()
{
    QTest::addColumn<bool>("rvx5350");
    QTest::addColumn<int>("size");
    QTest::addColumn<int>("h");
    QTest::addColumn<int>("v");
    QTest::addColumn<QPoint>("at");

    auto row = [](const char *name, bool rvx5350, int size, int h, int v, QPoint at) {
        QTest::newRow(name) << rvx5350 << size << h << v << at;
    };
    row("5370 small far corner", false, 0, 1440, 810, {300, 168});
    row("5370 medium far corner", false, 1, 1280, 720, {266, 149});
    row("5370 medium halfway", false, 1, 640, 100, {133, 20});
    row("5350 small truncates", true, 0, 1000, 405, {320, 130});
    row("5350 large far corner", true, 2, 960, 540, {307, 172});
    row("beyond the unit's range stays in the preview", false, 2, 65535, 65535, {200, 112});
}

void TestPipGro::unitPositionPlacesBox()
{
    QFETCH(bool, rvx5350);
    QFETCH(int, size);
    QFETCH(int, h);
    QFETCH(int, v);
    QFETCH(QPoint, at);
    Rig rig(rvx5350);
    rig.setSize(size);
    rig.box->set_H_Vposition_Style(h, v);
    QCOMPARE(rig.box->pos(), at);
    QVERIFY(rig.sent().isEmpty());
}

void TestPipGro::sizeChangePullsBack_data()
{
    QTest::addColumn<bool>("rvx5350");
    QTest::addColumn<int>("from");
    QTest::addColumn<QPoint>("start");
    QTest::addColumn<int>("to");
    QTest::addColumn<QPoint>("at");
    QTest::addColumn<QSize>("box");
    auto row = [](const char *name, bool rvx5350, int from, QPoint start, int to, QPoint at, QSize box) {
        QTest::newRow(name) << rvx5350 << from << start << to << at << box;
    };
    row("5370 both beyond go to the corner", false, 0, {300, 168}, 2, {200, 112}, {200, 112});
    row("5370 only x beyond", false, 0, {250, 50}, 2, {200, 50}, {200, 112});
    row("5370 only y beyond", false, 0, {10, 160}, 1, {10, 149}, {133, 74});
    row("5370 smaller box keeps its place", false, 2, {200, 112}, 0, {200, 112}, {100, 56});
    row("5350 small corner to medium", true, 0, {462, 260}, 1, {410, 230}, {205, 115});
    row("5350 medium corner to large", true, 1, {410, 230}, 2, {307, 172}, {308, 173});
    // Sizes outside the table change nothing.
    row("size 3", false, 1, {250, 140}, 3, {250, 140}, {133, 74});
    row("size -1", true, 0, {400, 200}, -1, {400, 200}, {154, 86});
}

void TestPipGro::sizeChangePullsBack()
{
    QFETCH(bool, rvx5350);
    QFETCH(int, from);
    QFETCH(QPoint, start);
    QFETCH(int, to);
    QFETCH(QPoint, at);
    QFETCH(QSize, box);
    Rig rig(rvx5350);
    rig.setSize(from);
    rig.box->move(start);
    rig.setSize(to);
    QCOMPARE(rig.box->pos(), at);
    QCOMPARE(rig.box->size(), box);
    QVERIFY(rig.sent().isEmpty());
}

QTEST_MAIN(TestPipGro)
#include "tst_pipgro.moc"
