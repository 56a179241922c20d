// The RVX3210 panel offscreen against a stand-in unit: main board 127.0.0.2, HIS board
// 127.0.0.3, both on port 7000; replies go to the panel on 127.0.0.1:7000.
#include "RVX3210/below_widget.h"
#include "RVX3210/middle_widget.h"
#include "RVX3210/plane_botton.h"
#include "RVX3210/plane_right.h"
#include "RVX3210/plane_top.h"
#include "RVX3210/qslider_left.h"
#include "RVX3210/qslider_right.h"
#include "RVX3210/rvx3210ui.h"
#include "RVX3210/upper_widget.h"
#include "SwitcherData/rvx3210_workdata.h"
#include "app/showsearch.h"
#include "common/pictureiconengine.h"
#include "modalanswer.h"
#include "testframes.h"
#include "wirecapture.h"

#include <QApplication>
#include <QButtonGroup>
#include <QComboBox>
#include <QDialog>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QSpinBox>
#include <QTimer>
#include <QtTest>
#include <ctime>
#include <functional>
#include <memory>
#include <utility>

namespace {

const char *const MainIp = "127.0.0.2";
const char *const HisIp = "127.0.0.3";

// pgm 1, pvw 2, AFV, CH1 IN1 vol 50, CH2 IN2 vol 50, MIX transition, FTB off, PIP off,
// border off/white/2, size small at 0/0, still off, rate 0, 1080P60, F3 off.
const QByteArray BaseRecord = hex("0102000332043201000000000002000000000000000700000000");

QByteArray record(std::initializer_list<std::pair<int, uint8_t>> changes)
{
    QByteArray r = BaseRecord;
    for (const auto &[at, v] : changes)
        r[at] = char(v);
    return r;
}

QByteArray stateReply(const QByteArray &record)
{
    return reply(0xA5FF, 0x49, "#\x01#" + record + "#");
}

// Counts the style changes of every widget under `root`: each is a new picture for a key.
class RestyleCount : public QObject
{
public:
    explicit RestyleCount(QWidget *root)
    {
        for (QWidget *w : root->findChildren<QWidget *>())
            w->installEventFilter(this);
    }
    int take() { return std::exchange(m_count, 0); }

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        m_count += event->type() == QEvent::StyleChange;
        return false;
    }

private:
    int m_count = 0;
};

} // namespace

using PanelAction = std::function<void(RVX3210UI *)>;
Q_DECLARE_METATYPE(PanelAction)

class TestRvx3210Panel : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void tbarUpAndDown();
    void keyPicturesLoadedOnce();
    void cutSwapsLights_data();
    void cutSwapsLights();
    void autoKeepsEventsFlowing_data();
    void autoKeepsEventsFlowing();
    void keysSendAndLight_data();
    void keysSendAndLight();
    void ftb();
    void outputFormat();
    void stateReplyLightsKeys_data();
    void stateReplyLightsKeys();
    void shortRecordUpdatesWhatItCarries();
    void repeatedReplyRestylesOnlyWhatDiffers();
    void pipKeyAndPane();
    void faders();
    void refusedInputWarns_data();
    void refusedInputWarns();
    void networkPageSends();
    void hisRepliesShown();
    void returnDuringAutoWait();
    void closeKeyQuits(); // last: no nested event loop runs after it

private:
    // "pgm3", "pvw1", "rate2", "t5" (transition key 5), or one named in the map.
    QAbstractButton *keyNamed(const QString &name) const;
    void feedState(const QByteArray &rec);

    std::unique_ptr<WireCapture> m_main, m_his;
    QPointer<RVX3210UI> m_panel;
};

void TestRvx3210Panel::initTestCase()
{
    QLoggingCategory::setFilterRules(QStringLiteral("*.debug=false"));
    m_main = std::make_unique<WireCapture>(MainIp);
    m_his = std::make_unique<WireCapture>(HisIp);
    QVERIFY(m_main->isBound() && m_his->isBound());
}

void TestRvx3210Panel::init()
{
    m_panel = new RVX3210UI;
    QVERIFY(m_panel->link()->isBound());
    m_panel->DevTypeID(MainIp, 0xA5, 0xFF, HisIp, 0xE0, 0xFF);
    // The one state read of a panel that has just been bound.
    QCOMPARE(m_main->take(1), QByteArrayList{hex("a56c1400a5ff01000000000000000000491303ae")});
}

void TestRvx3210Panel::cleanup()
{
    delete m_panel;
    m_main->takeAll();
    m_his->takeAll();
}

QAbstractButton *TestRvx3210Panel::keyNamed(const QString &name) const
{
    Below_Widget *below = m_panel->lowerRow();
    Middle_widget *middle = m_panel->middleRow();
    Upper_Widget *upper = m_panel->upperRow();
    const int n = name.right(1).toInt();
    const QMap<QString, QAbstractButton *> named{{"afv", middle->btnAFV()},     {"amix", middle->btnMIX()},
                                                 {"still", middle->btnSTILL()}, {"f2", upper->btnF2()},
                                                 {"f3", upper->btnF3()},        {"f7", upper->btnF7()},
                                                 {"read", upper->btnRead()}};
    return name.startsWith("pgm")    ? below->pgmGroup()->button(n)
           : name.startsWith("pvw")  ? below->pvwGroup()->button(n)
           : name.startsWith("rate") ? below->rateGroup()->button(n)
           : name.startsWith('t')    ? middle->transitions()->button(n)
                                     : named.value(name);
}

void TestRvx3210Panel::feedState(const QByteArray &rec)
{
    QSignalSpy spy(m_panel->link(), &RVX3210_workdata::on_signals_3210Data);
    m_main->reply(stateReply(rec));
    QVERIFY(spy.wait(3000));
    // A state value that differs from the shown one goes back to the unit as a command;
    // those echoes are not what the tests look at.
    m_main->takeAll();
}

void TestRvx3210Panel::tbarUpAndDown()
{
    Below_Widget *below = m_panel->lowerRow();
    below->set_PGMCH_Style(1);
    below->set_PVWCH_Style(2);
    auto *tbar = m_panel->tbar();
    // One frame per step, then the end mark 0x80 at the top, then the first step back.
    QByteArrayList up, down;
    for (int v = 1; v <= 126; ++v) {
        up << lever(1, v);
        down << lever(0, v);
    }
    up << lever(1, 0x80) << lever(0, 0);
    down << lever(0, 0x80) << lever(1, 0);

    for (int v = 1; v <= 127; ++v)
        tbar->setValue(v);
    QCOMPARE(m_main->take(128), up);
    QVERIFY(lit(below->pgmGroup()->button(2), ":/images/red/png/2.png"));

    for (int v = 126; v >= 0; --v)
        tbar->setValue(v);
    QCOMPARE(m_main->take(128), down);
    // Swapped back once, and only once.
    QCOMPARE(below->BtnPGMstate(), uint8_t(1));
    QCOMPARE(below->BtnPVWstate(), uint8_t(2));
}

void TestRvx3210Panel::cutSwapsLights_data()
{
    QTest::addColumn<bool>("pip");
    QTest::addColumn<int>("pgmAfter");
    QTest::addColumn<int>("pvwAfter");
    QTest::newRow("PIP off swaps") << false << 4 << 9;
    QTest::newRow("PIP on keeps") << true << 9 << 4;
}

void TestRvx3210Panel::cutSwapsLights()
{
    QFETCH(bool, pip);
    QFETCH(int, pgmAfter);
    QFETCH(int, pvwAfter);
    Below_Widget *below = m_panel->lowerRow();
    m_panel->on_Middle_Singnale_btnPIP(pip);
    below->set_PGMCH_Style(9);
    below->set_PVWCH_Style(4);

    below->btnCut()->click();
    QCOMPARE(m_main->take(1), QByteArrayList{hex("a56c1400a5ff01000000000000000000834d03ae")});
    QCOMPARE(int(below->BtnPGMstate()), pgmAfter);
    QCOMPARE(int(below->BtnPVWstate()), pvwAfter);
    QVERIFY(lit(below->btnCut(), ":/images/red/CUT.bmp"));
    // A second click restarts the 300 ms light.
    below->btnCut()->click();
    QElapsedTimer second;
    second.start();
    QTRY_VERIFY_WITH_TIMEOUT(lit(below->btnCut(), ":/images/white/CUT.bmp"), 2000);
    QVERIFY(second.elapsed() >= 290);
    QCOMPARE(m_main->take(1).size(), 1);
}

void TestRvx3210Panel::autoKeepsEventsFlowing_data()
{
    QTest::addColumn<bool>("pip");
    QTest::newRow("PIP off") << false;
    QTest::newRow("PIP on") << true;
}

void TestRvx3210Panel::autoKeepsEventsFlowing()
{
    QFETCH(bool, pip);
    Below_Widget *below = m_panel->lowerRow();
    feedState(BaseRecord);
    m_panel->on_Middle_Singnale_btnPIP(pip);

    // In the middle of the wait: a reply that moves the rate lamp and a click on PGM 3.
    bool autoLitDuringWait = false;
    QTimer::singleShot(150, this, [&] {
        autoLitDuringWait = lit(below->btnAuto(), ":/images/red/AUTO.bmp");
        m_main->reply(stateReply(record({{0, 1}, {1, 2}, {10, uint8_t(pip)}, {20, 2}})));
    });
    QTimer::singleShot(400, this, [&] { below->pgmGroup()->button(3)->click(); });

    QElapsedTimer t;
    t.start();
    const std::clock_t cpu = std::clock(); // processor time of the whole process
    below->btnAuto()->click();
    const double cpuMs = 1000.0 * double(std::clock() - cpu) / CLOCKS_PER_SEC;
    const qint64 wall = t.elapsed();

    QVERIFY2(wall >= 890, qPrintable(QString::number(wall)));
    // The wait sleeps in the event loop; a spinning wait would burn the whole 900 ms.
    QVERIFY2(cpuMs < 0.5 * wall, qPrintable(QStringLiteral("cpu %1 ms of %2 ms").arg(cpuMs).arg(wall)));
    QVERIFY(autoLitDuringWait);
    const QByteArrayList sent = m_main->take(2);
    QCOMPARE(sent, (QByteArrayList{hex("a56c1400a5ff01000000000000000000844e03ae"),
                                   hex("a56c1500a5ff0100000000000000000080034e03ae")}));
    QVERIFY(lit(below->rateGroup()->button(2), ":/images/green/RATE3.bmp"));
    QVERIFY(lit(below->btnAuto(), ":/images/white/AUTO.bmp"));
    // The click during the wait made PGM 3; the swap after the wait works on that.
    QCOMPARE(int(below->BtnPGMstate()), pip ? 3 : 2);
    QCOMPARE(int(below->BtnPVWstate()), pip ? 2 : 3);
}

void TestRvx3210Panel::keysSendAndLight_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QByteArrayList>("frames");
    QTest::addColumn<QString>("litPath");
    auto row = [](const char *name, const char *key, const char *frames, const char *path) {
        QTest::newRow(name) << key << hexList(frames) << path;
    };
    row("F3 toggles on", "f3", "a56c1400a5ff01000000000000000000d49e03ae", ":/images/green/F3.bmp");
    row("F7 toggles on", "f7", "a56c1400a5ff01000000000000000000d6a003ae", ":/images/green/F7.bmp");
    // F2 flashes while its frame goes out, and is dark again once the click returns.
    row("F2 flash", "f2", "a56c1400a5ff01000000000000000000d09a03ae", ":/images/white/F2.bmp");
    row("read state", "read", "a56c1400a5ff01000000000000000000491303ae", "");
    row("audio MIX", "amix", "a56c1400a5ff01000000000000000000cb9503ae", ":/images/green/MIX.bmp");
    row("AFV", "afv", "a56c1400a5ff01000000000000000000cc9603ae", ":/images/green/AFV.bmp");
    row("STILL", "still", "a56c1400a5ff01000000000000000000cd9703ae", ":/images/green/STILL.bmp");
    row("transition MIX", "t1", "a56c1400a5ff010000000000000000008d5703ae", ":/images/green/MIX.bmp");
    // A wipe selects the wipe family first, then the direction (RIGHT is 0x27).
    row("wipe RIGHT", "t6",
        "a56c1400a5ff010000000000000000008f5903ae a56c1500a5ff0100000000000000000092278403ae",
        ":/images/green/RIGHT.bmp");
}

void TestRvx3210Panel::keysSendAndLight()
{
    QFETCH(QString, key);
    QFETCH(QByteArrayList, frames);
    QFETCH(QString, litPath);
    Middle_widget *middle = m_panel->middleRow();
    QAbstractButton *button = keyNamed(key);
    button->click();
    QCOMPARE(m_main->take(frames.size()), frames);
    if (!litPath.isEmpty())
        QVERIFY2(lit(button, litPath.toLatin1().constData()), qPrintable(button->styleSheet()));
    if (key.startsWith('t')) {
        // Only the pressed transition key is lit.
        int litKeys = 0;
        for (QAbstractButton *b : middle->transitions()->buttons())
            litKeys += b->styleSheet().contains(QLatin1String(":/images/green/"));
        QCOMPARE(litKeys, 1);
    }
}

void TestRvx3210Panel::ftb()
{
    Upper_Widget *upper = m_panel->upperRow();
    QPushButton *ftb = upper->btnFTB();
    ftb->click();
    QCOMPARE(m_main->take(1), QByteArrayList{hex("a56c1400a5ff01000000000000000000854f03ae")});
    QVERIFY(upper->ftbOn());
    QTRY_VERIFY_WITH_TIMEOUT(lit(ftb, ":/images/red/FTB.bmp"), 2000);
    QTRY_VERIFY_WITH_TIMEOUT(lit(ftb, ":/images/white/FTB.bmp"), 2000);

    ftb->click();
    QCOMPARE(m_main->take(1), QByteArrayList{hex("a56c1400a5ff01000000000000000000854f03ae")});
    QVERIFY(!upper->ftbOn());
    QVERIFY(!upper->blinkTimer()->isActive());
    QVERIFY(lit(ftb, ":/images/white/FTB.bmp"));

    // From the unit: FTB on blinks, off stops it.
    feedState(record({{9, 1}}));
    QVERIFY(upper->ftbOn());
    QVERIFY(upper->blinkTimer()->isActive());
    QTRY_VERIFY_WITH_TIMEOUT(lit(upper->btnFTB(), ":/images/red/FTB.bmp"), 2000);
    feedState(record({{9, 0}}));
    QVERIFY(!upper->ftbOn());
    QVERIFY(!upper->blinkTimer()->isActive());
    QVERIFY(lit(upper->btnFTB(), ":/images/white/FTB.bmp"));
}

void TestRvx3210Panel::outputFormat()
{
    // The unit's odd format codes map to list entries; any other code leaves the entry shown.
    Upper_Widget *upper = m_panel->upperRow();
    QList<int> shown;
    for (int code : {7, 3, 13, 5, 2, 15}) {
        feedState(record({{21, uint8_t(code)}}));
        shown << upper->outputFormatIndex();
    }
    QCOMPARE(shown, (QList<int>{0, 4, 5, 6, 6, 6}));

    // The F1 dialog opens on the shown entry (code 11) and sends the chosen list index.
    feedState(record({{21, 11}}));
    QStringList seen;
    {
        ModalWatch watch([&](QWidget *w) {
            auto *list = w->findChild<QComboBox *>();
            seen << QString::number(list->currentIndex()) << list->itemText(4);
            list->setCurrentIndex(4);
            qobject_cast<QDialog *>(w)->reject();
        });
        m_panel->upperRow()->btnF1()->click();
    }
    QCOMPARE(seen, (QStringList{"1", "1080P30"}));
    // The list index (4), not the unit's code for 1080P30 (3).
    QCOMPARE(m_main->take(1), QByteArrayList{hex("a56c1500a5ff01000000000000000000a3047203ae")});
}

void TestRvx3210Panel::stateReplyLightsKeys_data()
{
    QTest::addColumn<QByteArray>("rec");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("path");
    auto row = [](const char *name, const QByteArray &rec, const char *key, const char *path) {
        QTest::newRow(name) << rec << key << path;
    };
    row("pgm 3 red", record({{0, 3}}), "pgm3", ":/images/red/png/3.png");
    row("pgm bar red", record({{0, 9}}), "pgm9", ":/images/red/BAR.bmp");
    row("pvw 1", record({{1, 1}}), "pvw1", ":/images/green//png/1.png");
    row("rate 4 none", record({{20, 4}}), "rate0", ":/images/white/RATE1.bmp");
    row("AFV", record({{2, 0}}), "afv", ":/images/green/AFV.bmp");
    row("audio MIX", record({{2, 1}}), "amix", ":/images/green/MIX.bmp");
    row("wipe right", record({{7, 4}, {8, 4}}), "t6", ":/images/green/RIGHT.bmp");
    row("wipe 1 lights nothing", record({{7, 4}, {8, 1}}), "none", "");
    row("F3 on at 255", record({{24, 255}}), "f3", ":/images/green/F3.bmp");
    row("F3 1 ignored", record({{24, 1}}), "f3", ":/images/white/F3.bmp");
}

void TestRvx3210Panel::stateReplyLightsKeys()
{
    QFETCH(QByteArray, rec);
    QFETCH(QString, key);
    QFETCH(QString, path);
    Middle_widget *middle = m_panel->middleRow();
    feedState(rec);
    if (key == "none") {
        for (QAbstractButton *b : middle->transitions()->buttons())
            QVERIFY2(b->styleSheet().contains(":/images/white/"), qPrintable(b->styleSheet()));
        return;
    }
    QAbstractButton *button = keyNamed(key);
    QVERIFY2(lit(button, path.toLatin1().constData()), qPrintable(button->styleSheet()));
    if (key == "afv")
        QVERIFY(!middle->ch1Source()->isEnabled() && !middle->ch2Source()->isEnabled());
    if (key == "amix")
        QVERIFY(middle->ch1Source()->isEnabled() && middle->ch2Source()->isEnabled());
}

void TestRvx3210Panel::shortRecordUpdatesWhatItCarries()
{
    Below_Widget *below = m_panel->lowerRow();
    Upper_Widget *upper = m_panel->upperRow();
    feedState(record({{0, 4}, {1, 3}, {20, 2}, {21, 9}}));
    QCOMPARE(upper->outputFormatIndex(), 2);
    // Two bytes: PGM and PVW only; the rate and output format stay as they were.
    feedState(hex("0201"));
    QCOMPARE(int(below->BtnPGMstate()), 2);
    QCOMPARE(int(below->BtnPVWstate()), 1);
    QVERIFY(lit(below->rateGroup()->button(2), ":/images/green/RATE3.bmp"));
    QCOMPARE(upper->outputFormatIndex(), 2);
    // Eight bytes: the wipe byte is missing, so the transition keys are left alone.
    feedState(record({{7, 2}}));
    feedState(record({{7, 1}}).left(8));
    QVERIFY(lit(m_panel->middleRow()->transitions()->button(2), ":/images/green/FADE.bmp"));
}

void TestRvx3210Panel::repeatedReplyRestylesOnlyWhatDiffers()
{
    feedState(BaseRecord);
    RestyleCount restyles(m_panel);
    feedState(BaseRecord);
    QCOMPARE(restyles.take(), 0);
    // What the keys show is compared, not the last reply: the operator's STILL goes back.
    QAbstractButton *still = keyNamed("still");
    still->click();
    QVERIFY(lit(still, ":/images/green/STILL.bmp"));
    restyles.take();
    feedState(BaseRecord);
    QVERIFY(lit(still, ":/images/white/STILL.bmp"));
    QCOMPARE(restyles.take(), 1);
}

void TestRvx3210Panel::pipKeyAndPane()
{
    m_panel->show();
    QVERIFY(!m_panel->pipPane()->isVisible());
    m_panel->middleRow()->btnPIP()->click();
    QCOMPARE(m_main->take(1), QByteArrayList{hex("a56c1500a5ff0100000000000000000086015203ae")});
    QVERIFY(m_panel->pipPane()->isVisible());
    QVERIFY(m_panel->lowerRow()->pipFlag());
    // The pane's commands on this link: from Small at 1440/810, Medium clamps H and V, then the size.
    auto *pane = m_panel->pipPane();
    pane->sizeList()->setCurrentIndex(0);
    pane->hPosition()->setValue(1440);
    pane->vPosition()->setValue(810);
    m_main->take(3);
    pane->sizeList()->setCurrentIndex(1);
    QCOMPARE(m_main->take(3), hexList("a56c1600a5ff01000000000000000000a000057103ae "
                                      "a56c1600a5ff01000000000000000000a1d0023f04ae "
                                      "a56c1500a5ff01000000000000000000a2016e03ae"));
    m_panel->middleRow()->btnPIP()->click();
    QCOMPARE(m_main->take(1), QByteArrayList{hex("a56c1500a5ff0100000000000000000086005103ae")});
    QVERIFY(!pane->isVisible());
    // The unit's PIP state opens the pane too.
    feedState(record({{10, 1}}));
    QVERIFY(pane->isVisible());
}

void TestRvx3210Panel::faders()
{
    QSlider_Left *left = m_panel->audioSliders();
    left->sliderMaster()->setValue(9);
    QCOMPARE(m_main->take(1), QByteArrayList{hex("a56c1800a5ff01000000000000000000b4000000098b03ae")});
    left->sliderCh1()->setValue(127);
    QCOMPARE(m_main->take(1), QByteArrayList{hex("a56c1800a5ff01000000000000000000b47f0000090a04ae")});
    // A keyboard step is 2, sent unscaled.
    left->sliderCh2()->setFocus();
    QTest::keyClick(left->sliderCh2(), Qt::Key_Up);
    QCOMPARE(m_main->take(1), QByteArrayList{hex("a56c1800a5ff01000000000000000000b47f0200090c04ae")});

    // With a source chosen, the source and then the level go out.
    Middle_widget *middle = m_panel->middleRow();
    middle->ch1Source()->setCurrentIndex(5);
    middle->ch1Volume()->setValue(55);
    QCOMPARE(m_main->take(2), (QByteArrayList{hex("a56c1500a5ff01000000000000000000b9088c03ae"),
                                              hex("a56c1500a5ff01000000000000000000ce37d003ae")}));
    // The unit's levels never move the faders.
    feedState(record({{4, 100}, {6, 10}}));
    QCOMPARE(left->sliderCh1()->value(), 127);
}

void TestRvx3210Panel::refusedInputWarns_data()
{
    QTest::addColumn<PanelAction>("action");
    QTest::addColumn<QStringList>("boxes");
    auto row = [](const char *name, PanelAction a, QStringList boxes) { QTest::newRow(name) << a << boxes; };
    const auto setUrl = [](RVX3210UI *p, int nameLength, int urlLength) {
        p->networkPage()->urlIndex()->setCurrentIndex(2);
        p->networkPage()->otherNameEdit()->setText(QString(nameLength, 'n'));
        p->networkPage()->urlEdit()->setText(QString(urlLength, 'u'));
        p->networkPage()->btnSetUrl()->click();
    };
    // The warning names CH1 whichever channel it is.
    row("CH2 volume, no source", [](RVX3210UI *p) { p->middleRow()->ch2Volume()->setValue(55); },
        {"Warning|please choose CH1 source"});
    row("empty unit address",
        [](RVX3210UI *p) {
            p->networkPage()->devIpEdit()->setText(QString());
            p->networkPage()->btnSetDevIp()->click();
        },
        {"Warning|Text cannot be empty"});
    row("name of 17 bytes", [setUrl](RVX3210UI *p) { setUrl(p, 17, 10); }, {"Warning|OtherName Text Errors"});
    row("URL of 769 bytes", [setUrl](RVX3210UI *p) { setUrl(p, 3, 769); }, {"Warning|Url Text Errors"});
}

void TestRvx3210Panel::refusedInputWarns()
{
    QFETCH(PanelAction, action);
    QFETCH(QStringList, boxes);
    {
        ModalWatch watch;
        action(m_panel);
        QCOMPARE(watch.boxes, boxes);
    }
    QCOMPARE(m_main->take(1, 100).size() + m_his->takeAll().size(), 0);
}

void TestRvx3210Panel::networkPageSends()
{
    Plane_Botton *page = m_panel->networkPage();
    // Opening the dialog shows what the link knows.
    ModalWatch watch([](QWidget *w) { qobject_cast<QDialog *>(w)->reject(); });
    page->btnSet()->click();
    QCOMPARE(page->devIpEdit()->text(), QString(MainIp));
    QCOMPARE(page->hisIpEdit()->text(), QString(HisIp));

    page->devIpEdit()->setText("10.0.0");
    page->btnSetDevIp()->click();
    page->hisIpEdit()->setText("10.0.0.5");
    page->hisSubnetEdit()->setText("255.255.255");
    page->hisGatewayEdit()->setText("10.0.0.1");
    page->btnSetHisIp()->click();
    page->urlIndex()->setCurrentIndex(-1);
    page->btnReadUrl()->click();
    QCOMPARE(m_main->take(1, 150).size(), 0);
    QCOMPARE(m_his->take(1, 150).size(), 0);

    page->btnReadHis()->click();
    QCOMPARE(m_his->take(1),
             QByteArrayList{hex("a56c2000e0ff01000000000000000000240000000000000000000000003503ae")});
    page->urlIndex()->setCurrentIndex(2);
    page->btnReadUrl()->click();
    QCOMPARE(m_his->take(1), QByteArrayList{hex("a56c1500e0ff010000000000000000006a027203ae")});
    page->hisDnsEdit()->setText("8.8.4.4");
    page->btnSetDns()->click();
    QCOMPARE(m_his->take(1).value(0).mid(16, 9), hex("230808040402503b8c"));
    // The longest name and URL still go, as one 809-byte frame.
    page->otherNameEdit()->setText(QString(16, 'n'));
    page->urlEdit()->setText(QString(768, 'u'));
    page->btnSetUrl()->click();
    const QByteArray url = m_his->take(1).value(0);
    QCOMPARE(url.size(), 809);
    QCOMPARE(url.left(20), hex("a56c2903e0ff0100000000000000000067000210"));

    page->devIpEdit()->setText("10.0.0.9");
    page->btnSetDevIp()->click();
    QCOMPARE(m_main->take(1),
             QByteArrayList{hex("a56c2000a5ff00000000000000000000050a0000090000000000000000ed02ae")});
    QCOMPARE(m_panel->link()->on_DevIP(), QStringLiteral("10.0.0.9"));
}

void TestRvx3210Panel::hisRepliesShown()
{
    Plane_Botton *page = m_panel->networkPage();
    // The page hands the address a reply reports back to the link, which then expects the
    // board there (as it is, on a real network); the lab's board stays at its own address.
    const auto hisStaysInTheLab = [this] {
        m_panel->link()->get_HISTypeID(QString::fromLatin1(HisIp), 0xE0, 0xFF);
    };
    hisStaysInTheLab();
    QSignalSpy his(m_panel->link(), &RVX3210_workdata::on_signals_3210HISData);
    // Network address reply: IP at 2, mask at 6, gateway at 10, DNS at 20 of the payload.
    m_his->reply(reply(0xE0FF, 0x24, hex("0001 0a000005 ffffff00 0a000001 000000000000 01010101") + "$"));
    QVERIFY(his.wait(3000));
    QCOMPARE(page->hisIpEdit()->text(), QStringLiteral("10.0.0.5"));
    QCOMPARE(page->hisSubnetEdit()->text(), QStringLiteral("255.255.255.0"));
    QCOMPARE(page->hisGatewayEdit()->text(), QStringLiteral("10.0.0.1"));
    QCOMPARE(page->hisDnsEdit()->text(), QStringLiteral("1.1.1.1"));
    hisStaysInTheLab();

    // A payload that stops inside the gateway shows the IP and mask only.
    m_his->reply(reply(0xE0FF, 0x24, hex("0001 0a000006 ffff0000 0a00") + "$"));
    QVERIFY(his.wait(3000));
    QCOMPARE(page->hisIpEdit()->text(), QStringLiteral("10.0.0.6"));
    QCOMPARE(page->hisGatewayEdit()->text(), QStringLiteral("10.0.0.1"));
    hisStaysInTheLab();

    // URL reply laid out as the URL record: slot, name length, 16 name bytes, URL length.
    QSignalSpy url(m_panel->link(), &RVX3210_workdata::on_signals_3210HIS_URL_Data);
    const QByteArray u = "rtmp://10.0.0.7/live/b";
    m_his->reply(
        reply(0xE0FF, 0x6a,
              hex("0002 03") + QByteArray("cam").leftJustified(16, '\0') + char(u.size()) + '\0' + u));
    QVERIFY(url.wait(3000));
    QCOMPARE(page->otherNameEdit()->text(), QStringLiteral("cam"));
    QCOMPARE(page->urlEdit()->text(), QString::fromLatin1(u));

    // A URL length beyond what arrived shows what there is.
    m_his->reply(reply(
        0xE0FF, 0x6a, hex("0001 02") + QByteArray("ab").leftJustified(16, '\0') + hex("c800") + "rtmp://xj"));
    QVERIFY(url.wait(3000));
    QCOMPARE(page->otherNameEdit()->text(), QStringLiteral("ab"));
    QCOMPARE(page->urlEdit()->text(), QStringLiteral("rtmp://x"));
}

void TestRvx3210Panel::returnDuringAutoWait()
{
    delete m_panel;
    showsearch search(nullptr);
    search.set3210UI(MainIp, 0xA5, 0xFF, HisIp, 0xE0, 0xFF);
    QPointer<RVX3210UI> panel;
    for (QWidget *w : QApplication::topLevelWidgets()) {
        if (auto *p = qobject_cast<RVX3210UI *>(w); p && p->isVisible())
            panel = p;
    }
    QVERIFY(panel);
    m_main->take(1);
    // The operator goes back while the AUTO key still waits: the panel is freed in the
    // middle of the wait, and the AUTO slot must not touch it afterwards.
    QTimer::singleShot(100, this, [&] { panel->upperRow()->btnReturn()->click(); });
    panel->lowerRow()->btnAuto()->click();
    QTRY_VERIFY(panel.isNull());
    QVERIFY(search.isVisible());
    QCOMPARE(m_main->take(1), QByteArrayList{hex("a56c1400a5ff01000000000000000000844e03ae")});
}

void TestRvx3210Panel::closeKeyQuits()
{
    // The close key ends the whole program: every running event loop returns with code 0.
    QEventLoop loop;
    QTimer::singleShot(0, m_panel->titleBar()->closeButton(), &QPushButton::click);
    QTimer::singleShot(3000, &loop, [&loop] { loop.exit(99); });
    QCOMPARE(loop.exec(), 0);
}

void TestRvx3210Panel::keyPicturesLoadedOnce()
{
    // A restyle builds a new icon from the sheet: with the panel open, two icons of one picture
    // share it and its scaled copy, so a flood of restyles leaves nothing behind in Qt's cache.
    const QString file = QStringLiteral(":/images/green/F1.bmp");
    const QIcon first(file);
    const QIcon second(file);
    QCOMPARE(first.pixmap(72).cacheKey(), second.pixmap(72).cacheKey());
    QCOMPARE(first.pixmap(55).cacheKey(), second.pixmap(55).cacheKey());
    QCOMPARE(first.pixmap(55).size(), QSize(55, 55));
    QCOMPARE(first.actualSize(QSize(200, 200)), QSize(72, 72));
    // Two copies of every picture and of its double-size drawing at full size (more than their
    // copies at the key sizes the panels use, at scale 1 and 2) fit the room kept for scaled
    // copies, so a panel's set never pushes itself out.
    qint64 bytes = 0;
    int pictures = 0;
    QDirIterator it(QStringLiteral(":/images"), QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QImage image(it.next());
        if (image.isNull())
            continue;
        ++pictures;
        bytes += qint64(image.width()) * image.height() * 4 * 2;
    }
    QVERIFY(pictures > 100);
    QVERIFY2(bytes / 1024 < PictureIconEngine::ScaledLimitKb, qPrintable(QString::number(bytes / 1024)));
}

QTEST_MAIN(TestRvx3210Panel)
#include "tst_rvx3210ui.moc"
