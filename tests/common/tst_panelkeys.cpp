// The keyboard of the RVX3210, RVX3410 and RVX3220 panels and their dialogs, offscreen: what
// each key puts on the wire of a stand-in unit at 127.0.0.2, and which windows stay up.
#include "RVX3210/below_widget.h"
#include "RVX3210/plane_botton.h"
#include "RVX3210/plane_right.h"
#include "RVX3210/qslider_left.h"
#include "RVX3210/rvx3210ui.h"
#include "RVX3220/audio.h"
#include "RVX3220/ipdialog.h"
#include "RVX3220/pgm.h"
#include "RVX3220/pip.h"
#include "RVX3220/pop.h"
#include "RVX3220/pvw.h"
#include "RVX3220/rvx3220ui.h"
#include "RVX3410/rvx3410ui.h"
#include "modalanswer.h"
#include "testframes.h"
#include "wirecapture.h"

#include <QAbstractButton>
#include <QButtonGroup>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QSlider>
#include <QSpinBox>
#include <QtTest>
#include <memory>

namespace {

// clang-format off
enum Model { Rvx3210, Rvx3410, Rvx3220 };
// clang-format on

const char *const MainIp = "127.0.0.2";
const char *const HisIp = "127.0.0.3";
// Sent after an action: what arrived before it is what the action sent. The state reads of
// newly bound panels are not what these tests look at.
const QByteArray Marker("kova test marker");
const QByteArray StateRead = hex("a56c1400a5ff01000000000000000000491303ae");

const QByteArray Cut = hex("a56c1400a5ff01000000000000000000834d03ae");
const QByteArray Auto = hex("a56c1400a5ff01000000000000000000844e03ae");

// One panel under test with the keys its shortcuts stand for.
struct Panel
{
    std::unique_ptr<QDialog> dialog;
    QAbstractButton *cut = nullptr;
    QAbstractButton *autoKey = nullptr;
    QList<QAbstractButton *> preview;
    QList<QAbstractButton *> program;

    Rvx3210PanelFrame *frame() const { return qobject_cast<Rvx3210PanelFrame *>(dialog.get()); }
    RVX3220UI *rvx3220() const { return qobject_cast<RVX3220UI *>(dialog.get()); }

    // Every key's look, in creation order: the lamps an action left.
    QStringList lamps() const
    {
        QStringList sheets;
        for (const QAbstractButton *key : dialog->findChildren<QAbstractButton *>())
            sheets << key->styleSheet();
        return sheets;
    }
    QAbstractButton *key(const QString &role) const
    {
        const int n = role.mid(3).toInt();
        if (role == QLatin1String("cut"))
            return cut;
        if (role == QLatin1String("auto"))
            return autoKey;
        const QList<QAbstractButton *> &row = role.startsWith(QLatin1String("pvw")) ? preview : program;
        return n >= 1 && n <= row.size() ? row.at(n - 1) : nullptr;
    }
};

Panel openPanel(int model)
{
    Panel p;
    if (model == Rvx3220) {
        auto *panel = new RVX3220UI;
        panel->DevTypeID(QString::fromLatin1(MainIp), 0xA5, 0xFF);
        p.dialog.reset(panel);
        p.cut = panel->cutButton();
        p.autoKey = panel->autoButton();
        p.preview = panel->pvw()->buttonGroup()->buttons();
        p.program = panel->pgm()->buttonGroup()->buttons();
    } else {
        Rvx3210PanelFrame *panel = model == Rvx3210 ? static_cast<Rvx3210PanelFrame *>(new RVX3210UI)
                                                    : static_cast<Rvx3210PanelFrame *>(new RVX3410UI);
        panel->DevTypeID(QString::fromLatin1(MainIp), 0xA5, 0xFF, QString::fromLatin1(HisIp), 0xE0, 0xFF);
        p.dialog.reset(panel);
        p.cut = panel->lowerRow()->btnCut();
        p.autoKey = panel->lowerRow()->btnAuto();
        p.preview = panel->lowerRow()->pvwGroup()->buttons();
        p.program = panel->lowerRow()->pgmGroup()->buttons();
    }
    p.dialog->show();
    return p;
}

} // namespace

class TestPanelKeys : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();

    void shortcutIsTheClick_data();
    void shortcutIsTheClick();
    void panelKeepsTheKeyboard_data();
    void panelKeepsTheKeyboard();
    void returnInField_data();
    void returnInField();
    void ipDialogReturnIsOk();

private:
    // What the panels sent since the last call, their state reads left out.
    QList<QByteArray> sent();

    std::unique_ptr<WireCapture> m_unit;
    std::unique_ptr<WireCapture> m_his;
    QUdpSocket m_marker;
};

void TestPanelKeys::initTestCase()
{
    QLoggingCategory::setFilterRules(QStringLiteral("*.debug=false"));
    m_unit = std::make_unique<WireCapture>(QString::fromLatin1(MainIp));
    m_his = std::make_unique<WireCapture>(QString::fromLatin1(HisIp));
    QVERIFY(m_unit->isBound() && m_his->isBound());
}

void TestPanelKeys::init()
{
    m_unit->takeAll();
}

QList<QByteArray> TestPanelKeys::sent()
{
    m_marker.writeDatagram(Marker, QHostAddress(QString::fromLatin1(MainIp)), 7000);
    QList<QByteArray> frames = m_unit->until(Marker);
    frames.removeAll(StateRead);
    return frames;
}

void TestPanelKeys::shortcutIsTheClick_data()
{
    QTest::addColumn<int>("model");
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("modifiers");
    // X11 key code, for the symbol a digit key reports with Shift; 0 leaves it out.
    QTest::addColumn<int>("scanCode");
    QTest::addColumn<QString>("role");
    QTest::addColumn<QList<QByteArray>>("frames");

    const int none = Qt::NoModifier, shift = Qt::ShiftModifier;
    const QList<QByteArray> nothing;
    // The RVX3410 takes its keys from the same frame. The RVX3210 rows light keys with ids 1, 2,
    // 3, 4 and 9: the fifth key sends 9.
    const int model = Rvx3210;
    const QByteArray name = "RVX3210 ";
    QTest::newRow(name + "Space") << model << int(Qt::Key_Space) << none << 0 << "cut" << QList{Cut};
    QTest::newRow(name + "Return") << model << int(Qt::Key_Return) << none << 0 << "auto" << QList{Auto};
    QTest::newRow(name + "keypad Enter")
        << model << int(Qt::Key_Enter) << int(Qt::KeypadModifier) << 0 << "auto" << QList{Auto};
    QTest::newRow(name + "1") << model << int(Qt::Key_1) << none << 0 << "pvw1"
                              << QList{hex("a56c1500a5ff0100000000000000000081014d03ae")};
    QTest::newRow(name + "5") << model << int(Qt::Key_5) << none << 0 << "pvw5"
                              << QList{hex("a56c1500a5ff0100000000000000000081095503ae")};
    QTest::newRow(name + "Shift+3") << model << int(Qt::Key_3) << shift << 0 << "pgm3"
                                    << QList{hex("a56c1500a5ff0100000000000000000080034e03ae")};
    QTest::newRow(name + "Shift+5 as %") << model << int(Qt::Key_Percent) << shift << 14 << "pgm5"
                                         << QList{hex("a56c1500a5ff0100000000000000000080095403ae")};
    QTest::newRow(name + "6, no sixth key") << model << int(Qt::Key_6) << none << 0 << "pvw6" << nothing;
    QTest::newRow("RVX3220 Space") << int(Rvx3220) << int(Qt::Key_Space) << none << 0 << "cut" << QList{Cut};
    // The RVX3220's AUTO is the panel's own animation: nothing goes out, the buses swap.
    QTest::newRow("RVX3220 Return") << int(Rvx3220) << int(Qt::Key_Return) << none << 0 << "auto" << nothing;
    QTest::newRow("RVX3220 6") << int(Rvx3220) << int(Qt::Key_6) << none << 0 << "pvw6"
                               << QList{hex("a56c1500a5ff0100000000000000000081065203ae")};
    QTest::newRow("RVX3220 Shift+6 as ^") << int(Rvx3220) << int(Qt::Key_AsciiCircum) << shift << 15 << "pgm6"
                                          << QList{hex("a56c1500a5ff0100000000000000000080065103ae")};
    QTest::newRow("RVX3220 7, no seventh key")
        << int(Rvx3220) << int(Qt::Key_7) << none << 0 << "pvw7" << nothing;
}

void TestPanelKeys::shortcutIsTheClick()
{
    QFETCH(int, model);
    QFETCH(int, key);
    QFETCH(int, modifiers);
    QFETCH(int, scanCode);
    QFETCH(QString, role);
    QFETCH(QList<QByteArray>, frames);

    // Once by the mouse, once by the keyboard, each on a panel of its own with the same
    // buses up (program on the first key, preview on the second).
    QList<QByteArray> wire[2];
    QStringList lampsBefore[2], lampsAfter[2];
    for (int byKey = 0; byKey < 2; ++byKey) {
        Panel p = openPanel(model);
        QVERIFY(QTest::qWaitForWindowActive(p.dialog.get()));
        p.program.at(0)->click();
        p.preview.at(1)->click();
        sent();
        lampsBefore[byKey] = p.lamps();
        if (!byKey) {
            if (QAbstractButton *b = p.key(role))
                b->click();
        } else if (scanCode) {
            QKeyEvent press(QEvent::KeyPress, key, Qt::KeyboardModifiers(modifiers), quint32(scanCode), 0, 0);
            QApplication::sendEvent(QApplication::focusWidget(), &press);
        } else {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key(key), Qt::KeyboardModifiers(modifiers));
        }
        wire[byKey] = sent();
        lampsAfter[byKey] = p.lamps();
        // The panel is the one window: a shortcut opened nothing beside it.
        QVERIFY(p.dialog->isVisible());
        QCOMPARE(QApplication::activeModalWidget(), nullptr);
    }
    QCOMPARE(wire[1], frames);
    QCOMPARE(wire[0], frames);
    QCOMPARE(lampsAfter[1], lampsAfter[0]);
    // A key that is there changes a lamp; one that is not leaves them all.
    QCOMPARE(lampsAfter[1] != lampsBefore[1], frames.size() > 0 || role == QLatin1String("auto"));
}

void TestPanelKeys::panelKeepsTheKeyboard_data()
{
    QTest::addColumn<int>("model");
    QTest::newRow("RVX3210") << int(Rvx3210);
    QTest::newRow("RVX3410") << int(Rvx3410);
    QTest::newRow("RVX3220") << int(Rvx3220);
}

void TestPanelKeys::panelKeepsTheKeyboard()
{
    QFETCH(int, model);
    Panel p = openPanel(model);
    QVERIFY(QTest::qWaitForWindowActive(p.dialog.get()));
    // The panel has the keyboard once up, and no key is a default one Return would press.
    QCOMPARE(QApplication::focusWidget(), p.dialog.get());
    QStringList defaults;
    for (const QPushButton *key : p.dialog->findChildren<QPushButton *>())
        if (key->isDefault() || key->autoDefault())
            defaults << key->objectName() + QLatin1Char('/') + key->text();
    QCOMPARE(defaults, QStringList());
    QTest::keyClick(p.dialog.get(), Qt::Key_Escape);
    QVERIFY(p.dialog->isVisible());

    QSpinBox *field = nullptr;
    if (Rvx3210PanelFrame *frame = p.frame()) {
        frame->on_Middle_Singnale_btnPIP(true);
        field = frame->pipPane()->hPosition();
    } else {
        p.rvx3220()->pipButton()->click();
        field = p.rvx3220()->pip()->hPosition();
    }
    sent();
    field->setFocus();
    QCOMPARE(QApplication::focusWidget(), field);
    const QStringList lamps = p.lamps();
    // Space and Shift+digits mean nothing to a number field, which keeps them from the panel;
    // Esc goes on to the panel once the field has ignored it, and closes nothing.
    QTest::keyClick(field, Qt::Key_Space);
    QKeyEvent shiftOne(QEvent::KeyPress, Qt::Key_Exclam, Qt::ShiftModifier, 10, 0, 0, QStringLiteral("!"));
    QApplication::sendEvent(field, &shiftOne);
    QTest::keyClick(field, Qt::Key_Escape);
    QVERIFY(p.dialog->isVisible());
    QCOMPARE(sent(), QList<QByteArray>());
    QCOMPARE(p.lamps(), lamps);

    // A click on a key, or on the panel's background, takes the focus back to the panel.
    QTest::mouseClick(p.preview.at(2), Qt::LeftButton);
    QCOMPARE(QApplication::focusWidget(), p.dialog.get());
    sent();
    field->setFocus();
    const QPoint at(p.dialog->width() / 2, p.dialog->height() - 3);
    QWidget *background = p.dialog->childAt(at) ? p.dialog->childAt(at) : p.dialog.get();
    QVERIFY(!qobject_cast<QAbstractButton *>(background));
    QTest::mouseClick(background, Qt::LeftButton, {}, background->mapFrom(p.dialog.get(), at));
    QCOMPARE(QApplication::focusWidget(), p.dialog.get());
    QTest::keyClick(p.dialog.get(), Qt::Key_Space);
    QCOMPARE(sent(), QList{Cut});
}

void TestPanelKeys::returnInField_data()
{
    QTest::addColumn<int>("model");
    QTest::addColumn<QString>("inset");
    QTest::addColumn<QString>("field");
    QTest::addColumn<QList<QByteArray>>("frames");
    // Return in a number field commits it (its value goes out once more) and opens nothing.
    const QList<QByteArray> h{hex("a56c1600a5ff01000000000000000000a02c019903ae")};
    const QList<QByteArray> ch1{hex("a56c1600a5ff01000000000000000000b8033cc303ae")};
    QTest::newRow("RVX3210 PIP H") << int(Rvx3210) << "pip"
                                   << "h" << h;
    // A fader is no field: Return there is AUTO, as on the panel.
    QTest::newRow("RVX3210 CH1 fader") << int(Rvx3210) << "pip"
                                       << "ch1" << QList{Auto};
    // The RVX3220's insets stay as they were, and the panel keeps its width.
    QTest::newRow("RVX3220 PIP H") << int(Rvx3220) << "pip"
                                   << "h" << h;
    QTest::newRow("RVX3220 CH1_VOL") << int(Rvx3220) << ""
                                     << "ch1" << ch1;
    QTest::newRow("RVX3220 POP, CH1_VOL") << int(Rvx3220) << "pop"
                                          << "ch1" << ch1;
}

void TestPanelKeys::returnInField()
{
    QFETCH(int, model);
    QFETCH(QString, inset);
    QFETCH(QString, field);
    QFETCH(QList<QByteArray>, frames);
    Panel p = openPanel(model);
    QVERIFY(QTest::qWaitForWindowActive(p.dialog.get()));
    QWidget *target = nullptr;
    if (Rvx3210PanelFrame *frame = p.frame()) {
        frame->on_Middle_Singnale_btnPIP(true);
        // A position goes out only once a size is chosen.
        frame->pipPane()->sizeList()->setCurrentIndex(0);
        frame->pipPane()->hPosition()->setValue(300);
        target = field == QLatin1String("h") ? static_cast<QWidget *>(frame->pipPane()->hPosition())
                                             : frame->audioSliders()->sliderCh1();
    } else {
        RVX3220UI *panel = p.rvx3220();
        if (inset == QLatin1String("pip"))
            panel->pipButton()->click();
        if (inset == QLatin1String("pop"))
            panel->popButton()->click();
        panel->audio()->ch1Source()->setCurrentIndex(2); // IN1
        panel->audio()->ch1Volume()->setValue(60);
        panel->pip()->hPosition()->setValue(300);
        target = field == QLatin1String("h") ? panel->pip()->hPosition() : panel->audio()->ch1Volume();
    }
    sent();
    target->setFocus();
    QStringList opened;
    {
        ModalWatch watch([&opened](QWidget *w) {
            opened << w->windowTitle();
            w->close();
        });
        QTest::keyClick(target, Qt::Key_Return);
        QCOMPARE(sent(), frames);
        opened += watch.boxes;
    }
    QCOMPARE(opened, QStringList());
    QVERIFY(p.dialog->isVisible());
    if (Rvx3210PanelFrame *frame = p.frame()) {
        QVERIFY(!frame->networkPage()->setDialog()->isVisible());
    } else {
        QCOMPARE(p.rvx3220()->pip()->isVisible(), inset == QLatin1String("pip"));
        QCOMPARE(p.rvx3220()->pop()->isVisible(), inset == QLatin1String("pop"));
        QCOMPARE(p.rvx3220()->width(), inset.isEmpty() ? 1000 : 1280);
    }
}

void TestPanelKeys::ipDialogReturnIsOk()
{
    Panel p = openPanel(Rvx3220);
    QVERIFY(QTest::qWaitForWindowActive(p.dialog.get()));
    RVX3220UI *panel = p.rvx3220();
    WireCapture moved(QString::fromLatin1(HisIp));
    bool upAfterReturn = false;
    QList<QByteArray> onReturn;
    ModalWatch watch([&](QWidget *w) {
        auto *dialog = qobject_cast<IPDialog *>(w);
        QVERIFY(dialog);
        dialog->addressEdit()->setText(QString::fromLatin1(HisIp));
        QTest::keyClick(dialog->addressEdit(), Qt::Key_Return);
        onReturn = m_unit->take(1);
        upAfterReturn = dialog->isVisible();
        // Esc closes the dialog and only the dialog.
        QTest::keyClick(dialog->addressEdit(), Qt::Key_Escape);
    });
    panel->settingsButton()->click();
    QCOMPARE(onReturn, QList{hex("a56c2000a5ff00000000000000000000057f00000300000000000000005c03ae")});
    QVERIFY(upAfterReturn);
    QVERIFY(panel->findChildren<IPDialog *>().isEmpty());
    QVERIFY(panel->isVisible());
}

QTEST_MAIN(TestPanelKeys)
#include "tst_panelkeys.moc"
