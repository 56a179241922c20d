// Pictures of the RVX5310 panel against an emulated unit, for the documentation:
//   lab/lab.sh --xvfb --unit "type=0x4f,name=Control" -- rvx5310_screenshot <out-dir>
// Opens the unit from the search window, puts inputs on the buses, a wipe, REC and PIP on,
// waits for the unit's state to come back, then writes rvx5310-panel.png (PIP settings shown)
// and rvx5310-panel-nopip.png (PIP off, the settings hidden). Not a test.
#include "RVX5310/rvx5310dialog.h"
#include "SwitcherData/rvx5all_workdata.h"
#include "app/showsearch.h"

#include <QApplication>
#include <QDir>
#include <QListWidget>
#include <QLoggingCategory>
#include <QPushButton>
#include <QSignalSpy>
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
    RVX5310Dialog *panel = nullptr;
    for (QWidget *w : QApplication::topLevelWidgets())
        if (auto *p = qobject_cast<RVX5310Dialog *>(w))
            panel = p;
    if (!panel) {
        qCritical("no RVX5310 panel opened");
        return 1;
    }
    auto click = [panel](const char *key) { panel->findChild<QPushButton *>(QLatin1String(key))->click(); };
    for (const char *key : {"btn_pgm2", "btn_pvw3", "btn_wipe", "btn_rec", "btn_ch1", "btn_pip"})
        click(key);
    // The shots show what the unit reports back, not only what was pressed.
    QSignalSpy state(panel->link(), &RVX5ALL_workdata::on_signals_3210Data);
    click("btn_ds");
    if (!state.wait(3000) && state.isEmpty())
        qWarning("the unit did not report its state");
    QTest::qWait(300);
    bool ok = panel->grab().save(out.filePath(QStringLiteral("rvx5310-panel.png")));
    state.clear();
    click("btn_pip");
    click("btn_ds");
    if (!state.wait(3000) && state.isEmpty())
        qWarning("the unit did not report its state");
    QTest::qWait(300);
    ok = panel->grab().save(out.filePath(QStringLiteral("rvx5310-panel-nopip.png"))) && ok;
    delete panel;
    return ok ? 0 : 1;
}
