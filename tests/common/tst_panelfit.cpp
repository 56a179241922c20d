// Every caption of the panels and their dialogs against the room it was given, with the fonts
// the project installs: a caption wider than its label is cut on screen. And panels larger
// than the screen keep their title band and close key on it. CTest runs it at the scale
// factors 1, 1.5 and 2; at 2 the keys are also checked to be drawn at the screen's pixels.
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
#include "SwitcherData/rvx3220_workdata.h"
#include "common/highdpi.h"
#include "common/panelkeys.h"

#include <QAbstractButton>
#include <QLabel>
#include <QLayout>
#include <QProcess>
#include <QScreen>
#include <QTemporaryDir>
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

// Pixels that differ sharply from the pixel right of or below them: the edges of a drawing.
int edgePixels(const QImage &image)
{
    const QImage im = image.convertToFormat(QImage::Format_ARGB32);
    auto apart = [](QRgb a, QRgb b) {
        return qMax(qMax(qAbs(qRed(a) - qRed(b)), qAbs(qGreen(a) - qGreen(b))),
                    qMax(qAbs(qBlue(a) - qBlue(b)), qAbs(qAlpha(a) - qAlpha(b)))) > 48;
    };
    int edges = 0;
    for (int y = 0; y + 1 < im.height(); ++y) {
        for (int x = 0; x + 1 < im.width(); ++x) {
            const QRgb p = im.pixel(x, y);
            edges += apart(p, im.pixel(x + 1, y)) || apart(p, im.pixel(x, y + 1));
        }
    }
    return edges;
}

// Mean difference of two images of one size, over all channels, 0-255.
double meanDifference(const QImage &a, const QImage &b)
{
    const QImage x = a.convertToFormat(QImage::Format_ARGB32), y = b.convertToFormat(QImage::Format_ARGB32);
    double sum = 0;
    for (int row = 0; row < x.height(); ++row) {
        for (int col = 0; col < x.width(); ++col) {
            const QRgb p = x.pixel(col, row), q = y.pixel(col, row);
            sum += qAbs(qRed(p) - qRed(q)) + qAbs(qGreen(p) - qGreen(q)) + qAbs(qBlue(p) - qBlue(q)) +
                   qAbs(qAlpha(p) - qAlpha(q));
        }
    }
    return sum / (4.0 * x.width() * x.height());
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
    void keysSharp_data();
    void keysSharp();

public:
    // As the application does, before the application object is made.
    static void initMain() { enableHighDpi(); }
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
    // Right-aligned (the close key); centred from top to bottom where it fits, else at the
    // top (the band).
    QCOMPARE(panel->geometry().right(), screen.right());
    QCOMPARE(panel->geometry().top(), screen.top() + qMax(0, (screen.height() - size.height()) / 2));
}

void TestPanelFit::longSerialFits_data()
{
    QTest::addColumn<Opener>("open");
    QTest::addColumn<int>("bytes");
    QTest::addColumn<bool>("whole");
    // Nine bytes fit whole (they did not before the label learnt to cut); the longest is cut.
    for (int bytes : {9, LongestSerial}) {
        const bool whole = bytes == 9;
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

void TestPanelFit::keysSharp_data()
{
    QTest::addColumn<Opener>("open");
    QTest::addColumn<QString>("keyName"); // the key's object name, or input 1 of the keyboard's
    // One panel per way a key is drawn: a picture as the key's image (RVX3210 family), a
    // picture stretched over the key (RVX3220), a gradient with a caption (8000 series).
    QTest::newRow("RVX3210") << Opener([] { return new RVX3210UI; }) << QString();
    QTest::newRow("RVX3410") << Opener([] { return new RVX3410UI; }) << QString();
    QTest::newRow("RVX3220") << Opener([] { return new RVX3220UI; }) << QString();
    QTest::newRow("RVX5310") << Opener([] { return new RVX5310Dialog; }) << QString();
}

void TestPanelFit::keysSharp()
{
    QFETCH(Opener, open);
    QFETCH(QString, keyName);
    std::unique_ptr<QWidget> panel(open());
    panel->show();
    QVERIFY(QTest::qWaitForWindowExposed(panel.get()));
    const PanelKeys *keys = PanelKeys::of(panel.get());
    QAbstractButton *key = !keyName.isEmpty() ? panel->findChild<QAbstractButton *>(keyName)
                           : keys             ? keys->key(QStringLiteral("pgm1"))
                                              : nullptr;
    QVERIFY(key);
    const QImage shown = key->grab().toImage();

    // Asked by the run below for its reference: the key as a screen at scale 1 shows it.
    const QString referenceFile = qEnvironmentVariable("KOVA_KEY_REFERENCE");
    if (!referenceFile.isEmpty()) {
        QVERIFY(shown.save(referenceFile));
        return;
    }
    if (panel->devicePixelRatioF() != 2.0)
        QSKIP("compared on a screen scaled by 2 only");
    QCOMPARE(shown.size(), key->size() * 2);

    // The same key drawn by this test on a screen at scale 1, in a process of its own: Qt takes
    // the scale of a whole process from its environment.
    QTemporaryDir dir;
    const QString file = dir.filePath(QStringLiteral("one.png"));
    QProcess run;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("QT_SCALE_FACTOR"), QStringLiteral("1"));
    env.insert(QStringLiteral("KOVA_KEY_REFERENCE"), file);
    run.setProcessEnvironment(env);
    run.start(QCoreApplication::applicationFilePath(),
              {QStringLiteral("keysSharp:") + QString::fromLatin1(QTest::currentDataTag())});
    QVERIFY(run.waitForFinished(60000));
    const QImage one(file);
    QCOMPARE(one.size(), key->size());

    // The same drawing at the same size: brought down to scale 1 it is the scale-1 key.
    const double apart =
        meanDifference(shown.scaled(one.size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation), one);
    QVERIFY2(apart < 8, qPrintable(QString::number(apart)));
    // And sharper than the scale-1 key blown up to twice its size.
    const int sharp = edgePixels(shown);
    const int blown = edgePixels(one.scaled(shown.size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    QVERIFY2(sharp > blown * 5 / 4,
             qPrintable(QStringLiteral("%1 edge pixels, blown up %2").arg(sharp).arg(blown)));
}

QTEST_MAIN(TestPanelFit)
#include "tst_panelfit.moc"
