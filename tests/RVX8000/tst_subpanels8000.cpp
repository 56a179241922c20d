// The 8000-series sub-panels offscreen, with what they send checked against literal frames:
// the output format list (a choice goes out as its position; the unit's format selects its
// entry and is echoed only when it differs), the PIP settings (ranges by size, the warning
// before a size is chosen, the unit's values shown quietly) and the F1 strip's keys.
#include "RVX3210/plane_right.h"
#include "RVX8000/f1qwidget.h"
#include "RVX8000/pip_body.h"
#include "RVX8000/resobody.h"
#include "SwitcherData/rvx3210_workdata.h"
#include "modalanswer.h"
#include "rig8000.h"

#include <QComboBox>
#include <QSpinBox>

namespace {

struct Link
{
    Link() { link.get_DevTypeID(QStringLiteral("127.0.0.2"), 0xA5, 0xFF); }
    QList<QByteArray> sent() { return Rig8000::takeFrames(spy); }
    RVX5ALL_workdata link;
    QSignalSpy spy{&link, &RVX5ALL_workdata::showCurrentData};
};

} // namespace

class TestSubpanels8000 : public QObject
{
    Q_OBJECT
private slots:
    void unitFormat_data();
    void unitFormat();
    void pipChangesSent();
    void pipSizeBoundsPositions();
    void pipPositionWaitsForSize();
    void pipUnitValuesShownQuietly();
    void pipBorderFromUnit_data();
    void pipBorderFromUnit();
    void f1KeysOnlyFlash();
};

void TestSubpanels8000::unitFormat_data()
{
    QTest::addColumn<int>("shown");
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("after");
    QTest::addColumn<QByteArray>("frames");
    auto row = [](const char *name, int shown, int code, const char *after, const char *frames = "") {
        QTest::newRow(name) << shown << code << QString(after) << QByteArray(frames);
    };
    row("1080P50 over 1080P60: echoed", 0, 11, "1080P50", "a56c1500a5ff01000000000000000000a30b7903ae");
    row("1080P25 over 1080I50: echoed", 3, 13, "1080P25", "a56c1500a5ff01000000000000000000a30d7b03ae");
    row("the format shown: nothing", 0, 7, "1080P60");
    row("even code 2: nothing", 0, 2, "1080P60");
    row("code 14: nothing", 2, 14, "1080I60");
    row("267 is not 11", 0, 267, "1080P60");
    row("negative", 0, -249, "1080P60");
}

void TestSubpanels8000::unitFormat()
{
    QFETCH(int, shown);
    QFETCH(int, code);
    QFETCH(QString, after);
    QFETCH(QByteArray, frames);
    Link l;
    Resobody reso(nullptr, &l.link);
    reso.formatList()->setCurrentIndex(shown);
    l.sent();
    reso.setPGMState(code);
    QCOMPARE(reso.formatList()->currentText(), after);
    QCOMPARE(l.sent(), hexList(frames));
    // A choice in the list goes out as its position.
    reso.formatList()->setCurrentIndex(6);
    QCOMPARE(l.sent(), hexList("a56c1500a5ff01000000000000000000a3057303ae"));
}

void TestSubpanels8000::pipChangesSent()
{
    Link l;
    PIP_Body pip(nullptr, &l.link);
    pip.sizeList()->setCurrentIndex(0);
    pip.hPosition()->setValue(300);
    pip.vPosition()->setValue(200);
    pip.borderEnable()->setCurrentIndex(1);
    pip.borderColor()->setCurrentIndex(2);
    pip.borderWidth()->setValue(5);
    QCOMPARE(l.sent(), hexList("a56c1500a5ff01000000000000000000a2006d03ae "
                               "a56c1600a5ff01000000000000000000a02c019903ae "
                               "a56c1600a5ff01000000000000000000a1c8003504ae "
                               "a56c1500a5ff010000000000000000009d016903ae "
                               "a56c1500a5ff010000000000000000009e026b03ae "
                               "a56c1500a5ff010000000000000000009f056f03ae"));
}

void TestSubpanels8000::pipSizeBoundsPositions()
{
    Link l;
    PIP_Body pip(nullptr, &l.link);
    pip.sizeList()->setCurrentIndex(1);
    QCOMPARE(pip.vPosition()->maximum(), 720);
    pip.hPosition()->setValue(1280);
    l.sent();
    // Large: the position beyond its end is pulled back and goes out before the size.
    pip.sizeList()->setCurrentIndex(2);
    QCOMPARE(pip.hPosition()->value(), 960);
    QCOMPARE(l.sent(), hexList("a56c1600a5ff01000000000000000000a0c0032f04ae "
                               "a56c1500a5ff01000000000000000000a2026f03ae"));
}

void TestSubpanels8000::pipPositionWaitsForSize()
{
    Link l;
    PIP_Body pip(nullptr, &l.link);
    pip.show();
    ModalWatch watch;
    pip.hPosition()->setValue(100);
    pip.vPosition()->setValue(100);
    QCOMPARE(watch.boxes, (QStringList{"Warning|please choose Size", "Warning|please choose Size"}));
    QCOMPARE(l.sent(), QList<QByteArray>());
}

void TestSubpanels8000::pipUnitValuesShownQuietly()
{
    Link l;
    PIP_Body pip(nullptr, &l.link);
    ModalWatch watch;
    pip.set_Size_Style(2);
    // 0x0500 = 1280 is beyond Large's 960: shown at the end, and nothing goes back.
    pip.set_Hposition_Style(0x05, 0x00);
    pip.set_Vposition_Style(0x01, 0x00);
    pip.set_BorderEnable_Style(1);
    QCOMPARE(pip.sizeList()->currentIndex(), 2);
    QCOMPARE(pip.hPosition()->value(), 960);
    QCOMPARE(pip.vPosition()->value(), 256);
    // Values outside the lists change nothing.
    pip.set_BorderEnable_Style(3);
    pip.set_Size_Style(3);
    QCOMPARE(pip.borderEnable()->currentIndex(), 1);
    QCOMPARE(pip.sizeList()->currentIndex(), 2);
    QCOMPARE(l.sent(), QList<QByteArray>());
    QCOMPARE(watch.boxes, QStringList());
}

void TestSubpanels8000::pipBorderFromUnit_data()
{
    QTest::addColumn<int>("color");
    QTest::addColumn<int>("width");
    QTest::addColumn<QList<int>>("shown"); // RVX5310 colour and width, then RVX3210's
    // From Red and 5: the RVX5310 takes the unit's values as they come, the RVX3210 ignores
    // what its controls do not hold.
    QTest::newRow("Green, 7") << 3 << 7 << QList<int>{3, 7, 3, 7};
    QTest::newRow("4, 1") << 4 << 1 << QList<int>{-1, 2, 1, 5};
    QTest::newRow("255, 8") << 255 << 8 << QList<int>{-1, 7, 1, 5};
}

void TestSubpanels8000::pipBorderFromUnit()
{
    QFETCH(int, color);
    QFETCH(int, width);
    QFETCH(QList<int>, shown);
    Link l;
    PIP_Body body(nullptr, &l.link);
    RVX3210_workdata link3210;
    Plane_Right pane(nullptr, &link3210);
    for (const auto &[c, w] : {std::pair{1, 5}, std::pair{color, width}}) {
        body.set_BorderColor_Style(uint8_t(c));
        body.set_BorderWidth_Style(uint8_t(w));
        pane.set_BorderColor_Style(uint8_t(c));
        pane.set_BorderWidth_Style(uint8_t(w));
    }
    QCOMPARE((QList<int>{body.borderColor()->currentIndex(), body.borderWidth()->value(),
                         pane.borderColor()->currentIndex(), pane.borderWidth()->value()}),
             shown);
    QCOMPARE(l.sent(), QList<QByteArray>());
}

void TestSubpanels8000::f1KeysOnlyFlash()
{
    Link l;
    F1QWidget f1(nullptr, &l.link);
    f1.getDevIP(QStringLiteral("10.77.1.1"));
    QCOMPARE(f1.findChild<QLabel *>("label_IP")->text(), QStringLiteral("IP:10.77.1.1"));
    const QList<QPushButton *> keys = f1.findChildren<QPushButton *>();
    QCOMPARE(keys.size(), 6);
    for (QPushButton *key : keys) {
        QVERIFY2(Rig8000::litWhilePressed(key), qPrintable(key->objectName()));
        QVERIFY(Rig8000::isOff(key));
    }
    QCOMPARE(l.sent(), QList<QByteArray>());
}

QTEST_MAIN(TestSubpanels8000)
#include "tst_subpanels8000.moc"
