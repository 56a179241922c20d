// Pictures of the RVX3220 panel against an emulated unit, for the documentation. Run in the
// lab (lab/lab.sh --unit "type=0x22,name=Desk" -- rvx3220_screenshot <dir>); it opens the
// unit from the search window like an operator, sets the panel up and saves
// <dir>/rvx3220-panel.png and <dir>/rvx3220-panel-pip.png.
#include "RVX3220/audio.h"
#include "RVX3220/pgm.h"
#include "RVX3220/pip.h"
#include "RVX3220/pvw.h"
#include "RVX3220/rvx3220ui.h"
#include "RVX3220/transitions.h"
#include "app/showsearch.h"
#include "common/highdpi.h"
#include "modalanswer.h"

#include <QApplication>
#include <QButtonGroup>
#include <QComboBox>
#include <QListWidget>
#include <QPushButton>
#include <QSlider>
#include <QSpinBox>
#include <QTest>

int main(int argc, char *argv[])
{
    enableHighDpi();
    QApplication app(argc, argv);
    const QString dir = argc > 1 ? QString::fromLocal8Bit(argv[1]) : QStringLiteral(".");
    showsearch window;
    window.show();
    QListWidget *list = window.deviceList();
    if (!QTest::qWaitFor([list] { return list->count() > 0; }, 10000)) {
        qCritical("no unit listed");
        return 1;
    }
    int result = 1;
    ModalWatch watch([&](QWidget *w) {
        auto *panel = qobject_cast<RVX3220UI *>(w);
        if (panel) {
            panel->pgm()->buttonGroup()->button(1)->click();
            panel->pvw()->buttonGroup()->button(2)->click();
            panel->transitions()->buttonGroup()->button(1)->click();
            panel->audio()->ch1Source()->setCurrentIndex(2);
            panel->audio()->ch2Source()->setCurrentIndex(0);
            panel->audio()->modeGroup()->button(1)->click();
            QTest::qWait(200);
            bool ok = panel->grab().save(dir + QStringLiteral("/rvx3220-panel.png"));
            panel->pipButton()->click();
            panel->pip()->sizeList()->setCurrentIndex(0);
            panel->pip()->hPosition()->setValue(1200);
            panel->pip()->vPosition()->setValue(60);
            panel->pip()->borderEnable()->setCurrentIndex(1);
            panel->pip()->borderColor()->setCurrentIndex(1);
            QTest::qWait(200);
            ok = panel->grab().save(dir + QStringLiteral("/rvx3220-panel-pip.png")) && ok;
            result = ok ? 0 : 1;
        }
        w->close();
    });
    QListWidgetItem *item = list->item(0);
    list->setCurrentItem(item);
    emit list->itemDoubleClicked(item);
    return result;
}
