// Picture of the RVX3410 panel against an emulated unit, for the documentation:
//   lab/lab.sh --xvfb --unit "type=0x27,name=Cam" -- rvx3410_screenshot <out-dir>
// Opens the unit from the search window, records, pauses, streams, rotates and opens the
// menu, then writes rvx3410-panel.png once the unit's state has come back. Not a test.
#include "RVX3410/rvx3410ui.h"
#include "RVX3410/rvx_3410_middle_widget.h"
#include "RVX3410/rvx_3410_upper_widget.h"
#include "app/showsearch.h"
#include "common/highdpi.h"

#include <QApplication>
#include <QDir>
#include <QListWidget>
#include <QLoggingCategory>
#include <QPushButton>
#include <QTest>

int main(int argc, char **argv)
{
    enableHighDpi();
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
    RVX3410UI *panel = nullptr;
    for (QWidget *w : QApplication::topLevelWidgets()) {
        if (auto *p = qobject_cast<RVX3410UI *>(w); p && p->isVisible())
            panel = p;
    }
    if (!panel)
        return 1;
    RVX_3410_Upper_Widget *up = panel->upperRow();
    up->btnF4()->click();
    up->btnF5()->click();
    up->btnF6()->click();
    up->btnF8()->click();
    QTest::mousePress(panel->middleRow()->btnMenu(), Qt::LeftButton);
    QTest::mouseRelease(panel->middleRow()->btnMenu(), Qt::LeftButton);
    up->btnRead()->click();
    if (!QTest::qWaitFor([up] { return up->f4On() && up->f5On() && up->f6On() && up->f8On(); }, 5000))
        return 1;
    QTest::qWait(300);
    const QString path = out.filePath(QStringLiteral("rvx3410-panel.png"));
    const bool ok = panel->grab().save(path);
    qInfo("%s %s", ok ? "wrote" : "FAILED", qPrintable(path));
    return ok ? 0 : 1;
}
