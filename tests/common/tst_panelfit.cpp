// Every fixed-size caption of the RVX3210, RVX3410 and RVX3220 panels and their dialogs
// measured against its width, offscreen with the fonts the project installs: a caption
// wider than its label is cut on screen. And the panels on the offscreen screen, smaller than
// the RVX3210 and RVX3410 panels: their title band and close key stay on it.
#include "RVX3210/plane_botton.h"
#include "RVX3210/rvx3210ui.h"
#include "RVX3220/ipdialog.h"
#include "RVX3220/rvx3220ui.h"
#include "RVX3410/rvx3410ui.h"

#include <QLabel>
#include <QLayout>
#include <QScreen>
#include <QtTest>
#include <functional>
#include <memory>

namespace {

bool inLayout(const QLayout *layout, const QWidget *w)
{
    for (int i = 0; layout && i < layout->count(); ++i) {
        QLayoutItem *item = layout->itemAt(i);
        if (item->widget() == w || inLayout(item->layout(), w))
            return true;
    }
    return false;
}

// Labels whose size is fixed: by setFixedSize, or by a geometry no layout changes.
QStringList overflowing(const QWidget *window, const QString &name)
{
    QStringList cut;
    for (const QLabel *label : window->findChildren<QLabel *>()) {
        if (!label->isVisible() || label->text().isEmpty() || label->window() != window)
            continue;
        const bool fixed =
            label->minimumSize() == label->maximumSize() || !inLayout(label->parentWidget()->layout(), label);
        if (!fixed)
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

QTEST_MAIN(TestPanelFit)
#include "tst_panelfit.moc"
