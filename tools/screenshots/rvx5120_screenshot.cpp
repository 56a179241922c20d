// Picture of the RVX5120 panel, for the documentation:
//   lab/lab.sh --xvfb --unit "type=0x21,name=Desk" -- rvx5120_screenshot <out-dir>
// Presses the search window's RVX5120 key as an operator would and writes rvx5120.png. Not a
// test.
#include "RVX5120/rvx5120.h"
#include "app/groupbox_right.h"
#include "app/showsearch.h"
#include "common/highdpi.h"

#include <QApplication>
#include <QDir>
#include <QLoggingCategory>
#include <QRadioButton>
#include <QTest>

int main(int argc, char **argv)
{
    enableHighDpi();
    QApplication app(argc, argv);
    QLoggingCategory::setFilterRules(QStringLiteral("*.debug=false"));
    const QDir out(argc > 1 ? QString::fromLocal8Bit(argv[1]) : QStringLiteral("."));
    showsearch window;
    window.show();
    window.groupBox()->radio(4)->click();
    RVX5120 *panel = nullptr;
    for (QWidget *w : QApplication::topLevelWidgets())
        if (auto *p = qobject_cast<RVX5120 *>(w))
            panel = p;
    if (!panel) {
        qCritical("no RVX5120 panel opened");
        return 1;
    }
    QTest::qWait(300);
    const bool ok = panel->grab().save(out.filePath(QStringLiteral("rvx5120.png")));
    delete panel;
    return ok ? 0 : 1;
}
