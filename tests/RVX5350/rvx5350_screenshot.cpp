// Picture of the RVX5350 panel against an emulated unit, for the documentation:
//   lab/lab.sh --xvfb --unit "type=0x55,name=Hall" -- rvx5350_screenshot <out-dir>
// Opens the unit from the search window, puts input 2 on air, PIP on at size M, a wipe and a
// format, opens SET and waits for its clock to tick, then writes rvx5350-set.png once the
// unit's state has come back. Not a test.
#include "RVX5350/rvx5350.h"
#include "RVX8000/set.h"
#include "SwitcherData/rvx5all_workdata.h"
#include "app/showsearch.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QLabel>
#include <QListWidget>
#include <QLoggingCategory>
#include <QSignalSpy>
#include <QSlider>
#include <QTest>

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    QLoggingCategory::setFilterRules(QStringLiteral("*.debug=false"));
    const QDir out(argc > 1 ? QString::fromLocal8Bit(argv[1]) : QStringLiteral("."));
    showsearch window;
    window.show();
    QListWidget *list = window.deviceList();
    if (!QTest::qWaitFor([list] { return list->count() > 0; }, 10000)) {
        qCritical("no unit listed");
        return 1;
    }
    list->setCurrentItem(list->item(0));
    emit list->itemDoubleClicked(list->item(0));
    RVX5350 *panel = nullptr;
    for (QWidget *w : QApplication::topLevelWidgets())
        if (auto *p = qobject_cast<RVX5350 *>(w))
            panel = p;
    if (!panel) {
        qCritical("no RVX5350 panel opened");
        return 1;
    }
    auto click = [panel](const char *key) {
        panel->findChild<QAbstractButton *>(QLatin1String(key))->click();
    };
    for (const char *key : {"btn_in2", "btn_pip", "btn_wipe", "btn_reso", "btn_ch2", "btn_rtmp"})
        click(key);
    panel->findChild<QSlider *>(QStringLiteral("slider_ch1"))->setValue(80);
    panel->findChild<QSlider *>(QStringLiteral("slider_ch2"))->setValue(45);
    QSignalSpy state(panel->link(), &RVX5ALL_workdata::on_signals_3210Data);
    click("btn_ds");
    if (!state.wait(3000) && state.isEmpty())
        qWarning("the unit did not report its state");
    click("btn_set");
    QLabel *date = panel->setWidget()->findChild<QLabel *>(QStringLiteral("label_data"));
    if (!QTest::qWaitFor([date] { return date->text().contains(QLatin1Char('.')); }, 3000))
        qWarning("the clock did not tick");
    const bool ok = panel->grab().save(out.filePath(QStringLiteral("rvx5350-set.png")));
    delete panel;
    return ok ? 0 : 1;
}
