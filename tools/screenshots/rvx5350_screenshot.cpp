// Picture of the RVX5350 panel against an emulated unit, for the documentation:
//   lab/lab.sh --xvfb --unit "type=0x55,name=Hall" -- rvx5350_screenshot <out-dir>
// Opens the unit from the search window, puts input 2 on air, PIP on at size M, a wipe and a
// format, opens SET and waits for its clock to tick, then writes rvx5350-set.png once the
// unit's state has come back. Not a test.
#include "RVX5350/rvx5350.h"
#include "RVX8000/set.h"
#include "shot8000.h"

#include <QLabel>
#include <QSlider>

using namespace Shot8000;

int main(int argc, char **argv)
{
    return run<RVX5350>(argc, argv, "RVX5350", [](RVX5350 *panel, const QDir &out) {
        for (const char *key : {"btn_in2", "btn_pip", "btn_wipe", "btn_reso", "btn_ch2", "btn_rtmp"})
            click(panel, key);
        panel->findChild<QSlider *>(QStringLiteral("slider_ch1"))->setValue(80);
        panel->findChild<QSlider *>(QStringLiteral("slider_ch2"))->setValue(45);
        readState(panel, panel->link());
        click(panel, "btn_set");
        QLabel *date = panel->setWidget()->findChild<QLabel *>(QStringLiteral("label_data"));
        if (!QTest::qWaitFor([date] { return date->text().contains(QLatin1Char('.')); }, 3000))
            qWarning("the clock did not tick");
        return save(panel, out, "rvx5350-set.png", 0);
    });
}
