// Pictures of the RVX5370 panel against an emulated unit, for the documentation:
//   lab/lab.sh --xvfb --unit "type=0x51,name=Stage" -- rvx5370_screenshot <out-dir>
// Opens the unit from the search window, puts inputs on the buses, PIP on and a wipe, waits for
// the unit's state to come back, then writes rvx5370-set.png (SET open) and rvx5370-f1.png
// (F1 open). Not a test.
#include "RVX5370/rvx5370.h"
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
    RVX5370 *panel = nullptr;
    for (QWidget *w : QApplication::topLevelWidgets())
        if (auto *p = qobject_cast<RVX5370 *>(w))
            panel = p;
    if (!panel) {
        qCritical("no RVX5370 panel opened");
        return 1;
    }
    auto click = [panel](const char *key) { panel->findChild<QPushButton *>(QLatin1String(key))->click(); };
    for (const char *key : {"btn_pgm2", "btn_pvw3", "btn_pip", "btn_wipe", "btn_rec", "btn_ch1"})
        click(key);
    // The shots show what the unit reports back, not only what was pressed.
    QSignalSpy state(panel->link(), &RVX5ALL_workdata::on_signals_3210Data);
    click("btn_ds");
    if (!state.wait(3000) && state.isEmpty())
        qWarning("the unit did not report its state");
    click("btn_set");
    QTest::qWait(300);
    bool ok = panel->grab().save(out.filePath(QStringLiteral("rvx5370-set.png")));
    click("btn_f1");
    QTest::qWait(300);
    ok = panel->grab().save(out.filePath(QStringLiteral("rvx5370-f1.png"))) && ok;
    delete panel;
    return ok ? 0 : 1;
}
