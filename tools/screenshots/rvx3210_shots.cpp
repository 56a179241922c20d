// Pictures of the RVX3210 panel for the documentation, taken against an emulated unit:
//   lab/lab.sh --xvfb --unit "type=0x21,name=Desk,his=auto" -- rvx3210_shots <out-dir>
// Writes rvx3210-panel.png, rvx3210-panel-pip.png and rvx3210-set-dialog.png. Not a test.
#include "RVX3210/middle_widget.h"
#include "RVX3210/plane_botton.h"
#include "RVX3210/rvx3210ui.h"
#include "SwitcherData/rvx3210_workdata.h"
#include "app/showsearch.h"
#include "common/delay.h"
#include "common/highdpi.h"

#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QElapsedTimer>
#include <QListWidget>
#include <QPushButton>
#include <QSignalSpy>
#include <QTimer>
#include <cstdio>

namespace {

bool waitFor(const std::function<bool()> &done, int ms)
{
    QElapsedTimer t;
    t.start();
    while (!done() && t.elapsed() < ms)
        Delay_MSec(20);
    return done();
}

bool save(QWidget *w, const QString &path)
{
    const bool ok = w->grab().save(path);
    std::printf("%s %s\n", ok ? "wrote" : "FAILED", qPrintable(path));
    return ok;
}

} // namespace

int main(int argc, char **argv)
{
    enableHighDpi();
    QApplication app(argc, argv);
    QLoggingCategory::setFilterRules(QStringLiteral("*.debug=false"));
    const QDir out(argc > 1 ? QString::fromLocal8Bit(argv[1]) : QStringLiteral("."));
    const QString unit = QString::fromLocal8Bit(qgetenv("LAB_UNITS")).split(' ').value(0);
    if (unit.isEmpty()) {
        std::fprintf(stderr, "run through lab/lab.sh\n");
        return 2;
    }

    showsearch search(nullptr);
    search.show();
    QListWidget *list = search.deviceList();
    if (!waitFor([&] { return !list->findItems(unit, Qt::MatchEndsWith).isEmpty(); }, 10000))
        return 1;
    QListWidgetItem *item = list->findItems(unit, Qt::MatchEndsWith).value(0);
    list->setCurrentItem(item);
    emit list->itemDoubleClicked(item);

    RVX3210UI *panel = nullptr;
    for (QWidget *w : QApplication::topLevelWidgets()) {
        if (auto *p = qobject_cast<RVX3210UI *>(w); p && p->isVisible())
            panel = p;
    }
    if (!panel)
        return 1;
    QSignalSpy state(panel->link(), &RVX3210_workdata::on_signals_3210Data);
    if (!state.wait(5000))
        return 1;
    Delay_MSec(300);
    bool ok = save(panel, out.filePath(QStringLiteral("rvx3210-panel.png")));

    panel->middleRow()->btnPIP()->click();
    Delay_MSec(300);
    ok = save(panel, out.filePath(QStringLiteral("rvx3210-panel-pip.png"))) && ok;

    // Fill the HIS fields from the unit first, as an operator would with "Read Staus".
    Plane_Botton *page = panel->networkPage();
    QTimer::singleShot(100, [&] {
        page->btnReadHis()->click();
        Delay_MSec(500);
        ok = save(page->setDialog(), out.filePath(QStringLiteral("rvx3210-set-dialog.png"))) && ok;
        page->setDialog()->reject();
    });
    page->btnSet()->click();
    return ok ? 0 : 1;
}
