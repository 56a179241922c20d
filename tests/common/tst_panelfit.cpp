// Every caption of the panels and their dialogs against the room it was given, with the fonts
// the project installs: a caption wider than its label is cut on screen. And panels larger
// than the screen keep their title band and close key on it.
#include "RVX3210/plane_botton.h"
#include "RVX3210/rvx3210ui.h"
#include "RVX3220/ipdialog.h"
#include "RVX3220/rvx3220ui.h"
#include "RVX3410/rvx3410ui.h"
#include "RVX5120/rvx5120.h"
#include "RVX5310/rvx5310dialog.h"
#include "RVX5350/rvx5350.h"
#include "RVX5370/rvx5370.h"
#include "RVX8000/set.h"
#include "RVX8000/setdialog.h"

#include <QLabel>
#include <QLayout>
#include <QScreen>
#include <QtTest>
#include <functional>
#include <memory>

namespace {

// Labels whose text is wider than they are; a label that wraps is left to its height.
QStringList overflowing(const QWidget *window, const QString &name)
{
    QStringList cut;
    for (const QLabel *label : window->findChildren<QLabel *>()) {
        if (!label->isVisible() || label->text().isEmpty() || label->window() != window || label->wordWrap())
            continue;
        const int need = label->sizeHint().width();
        if (need > label->width())
            cut << QStringLiteral("%1 \"%2\": %3 > %4")
                       .arg(name, label->text())
                       .arg(need)
                       .arg(label->width());
    }
    return cut;
}

constexpr char LongIp[] = "IP:255.255.255.255";

// The longest serial a long state reply can carry: a reply of at most 1056 bytes holds a 17-byte
// head, the sixteen '#' that cut it into seventeen pieces and the 3-byte checksum and end.
constexpr int LongestSerial = 1056 - 17 - 16 - 3;

// The settings strip as its SET key shows it, with a serial and the longest address.
template <typename Strip> QWidget *settingsStrip(QWidget *panel, int serialBytes = 8)
{
    auto *strip = panel->findChild<Strip *>();
    if (!strip)
        return panel;
    strip->on_toRead_5370SMDtat(QByteArray(serialBytes, char(0xab)));
    strip->getDevIP(QStringLiteral("255.255.255.255"));
    strip->show();
    return panel;
}

} // namespace

using Opener = std::function<QWidget *()>;
Q_DECLARE_METATYPE(Opener)

class TestPanelFit : public QObject
{
    Q_OBJECT
private slots:
    void captionsFit_data();
    void captionsFit();
    void titleBandOnSmallScreen_data();
    void titleBandOnSmallScreen();
    void longSerialFits_data();
    void longSerialFits();
};

void TestPanelFit::captionsFit_data()
{
    QTest::addColumn<Opener>("open");
    QTest::addColumn<QString>("sample");
    // A caption each window is known to hold, so a window measured empty cannot pass.
    QTest::newRow("RVX3210") << Opener([] { return new RVX3210UI; }) << "V1.0.0";
    QTest::newRow("RVX3410") << Opener([] { return new RVX3410UI; }) << "V1.0.0";
    QTest::newRow("RVX3210 SWITCHER IP") << Opener([] {
        auto *panel = new RVX3210UI;
        return static_cast<QWidget *>(panel->networkPage()->setDialog());
    }) << "SWITCHER IP";
    QTest::newRow("RVX3220") << Opener([] { return new RVX3220UI; }) << "HD VIDEO <br/>SWITCHER";
    QTest::newRow("RVX3220 IP") << Opener([] {
        auto *panel = new RVX3220UI;
        return static_cast<QWidget *>(new IPDialog(panel, panel->link()));
    }) << "IP addr";
    QTest::newRow("RVX5310") << Opener([] { return new RVX5310Dialog; }) << "RVX5310";
    QTest::newRow("RVX5370") << Opener([] { return new RVX5370; }) << "RVX5370";
    QTest::newRow("RVX5350") << Opener([] { return new RVX5350; }) << "RVX5350";
    QTest::newRow("RVX5370 SET") << Opener([] { return settingsStrip<SetDialog>(new RVX5370); }) << LongIp;
    QTest::newRow("RVX5350 SET") << Opener([] { return settingsStrip<Set>(new RVX5350); }) << LongIp;
    QTest::newRow("RVX5120") << Opener([] { return new RVX5120; }) << "MICRO HD VIDEO SWITCHER";
}

void TestPanelFit::captionsFit()
{
    QFETCH(Opener, open);
    QFETCH(QString, sample);
    QWidget *window = open();
    // A dialog's panel goes with it.
    std::unique_ptr<QWidget> owner(window->window()->parentWidget() ? window->parentWidget()->window()
                                                                    : window);
    window->show();
    QVERIFY(QTest::qWaitForWindowExposed(window));
    bool seen = false;
    for (const QLabel *label : window->findChildren<QLabel *>())
        seen = seen || label->text() == sample;
    QVERIFY(seen);
    const QStringList cut = overflowing(window, QString::fromLatin1(QTest::currentDataTag()));
    QVERIFY2(cut.isEmpty(), qPrintable(cut.join(QLatin1String("; "))));
}

void TestPanelFit::titleBandOnSmallScreen_data()
{
    QTest::addColumn<Opener>("open");
    QTest::addColumn<QSize>("size");
    QTest::newRow("RVX3210") << Opener([] { return new RVX3210UI; }) << QSize(1400, 800);
    QTest::newRow("RVX3410") << Opener([] { return new RVX3410UI; }) << QSize(1400, 800);
    QTest::newRow("RVX3220") << Opener([] { return new RVX3220UI; }) << QSize(1000, 600);
}

void TestPanelFit::titleBandOnSmallScreen()
{
    QFETCH(Opener, open);
    QFETCH(QSize, size);
    std::unique_ptr<QWidget> panel(open());
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    QVERIFY(screen.width() < size.width());
    QCOMPARE(panel->size(), size);
    // Right-aligned (the close key) and at the top (the band).
    QCOMPARE(panel->geometry().topRight(), screen.topRight());
}

void TestPanelFit::longSerialFits_data()
{
    QTest::addColumn<Opener>("open");
    QTest::addColumn<int>("bytes");
    QTest::addColumn<bool>("whole");
    for (int bytes : {9, 10, LongestSerial}) {
        const bool whole = bytes < 10;
        QTest::addRow("RVX5370 SET %d", bytes)
            << Opener([bytes] { return settingsStrip<SetDialog>(new RVX5370, bytes); }) << bytes << whole;
        QTest::addRow("RVX5350 SET %d", bytes)
            << Opener([bytes] { return settingsStrip<Set>(new RVX5350, bytes); }) << bytes << whole;
    }
}

void TestPanelFit::longSerialFits()
{
    QFETCH(Opener, open);
    QFETCH(int, bytes);
    QFETCH(bool, whole);
    QWidget *window = open();
    std::unique_ptr<QWidget> owner(window);
    window->show();
    QVERIFY(QTest::qWaitForWindowExposed(window));
    const QLabel *label = nullptr;
    for (const QLabel *l : window->findChildren<QLabel *>(QStringLiteral("label_SM")))
        label = l->isVisible() ? l : label;
    QVERIFY(label);
    const QString full = QStringLiteral("SN:") + QStringLiteral("ab ").repeated(bytes);
    QVERIFY2(label->sizeHint().width() <= label->width(),
             qPrintable(QStringLiteral("%1 > %2").arg(label->sizeHint().width()).arg(label->width())));
    // Inside the strip that holds it, and the strip inside its window.
    const QWidget *strip = label->parentWidget();
    QVERIFY(strip->rect().contains(label->geometry()));
    QVERIFY(label->window()->rect().contains(QRect(strip->mapTo(label->window(), QPoint()), strip->size())));
    if (whole) {
        QCOMPARE(label->text(), full);
        QCOMPARE(label->toolTip(), QString());
    } else {
        // Cut in the middle: both ends stay, and the tooltip has it all.
        QCOMPARE(label->toolTip(), full);
        QVERIFY2(label->text().startsWith(QLatin1String("SN:ab ab")) &&
                     label->text().contains(QChar(0x2026)) && label->text().endsWith(QLatin1String("ab ab ")),
                 qPrintable(label->text()));
    }
}

QTEST_MAIN(TestPanelFit)
#include "tst_panelfit.moc"
