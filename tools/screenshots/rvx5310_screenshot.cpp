// Pictures of the RVX5310 panel against an emulated unit, for the documentation:
//   lab/lab.sh --xvfb --unit "type=0x4f,name=Control" -- rvx5310_screenshot <out-dir>
// Opens the unit from the search window, puts inputs on the buses, a wipe, REC and PIP on,
// waits for the unit's state to come back, then writes rvx5310-panel.png (PIP settings shown)
// and rvx5310-panel-nopip.png (PIP off, the settings hidden). Not a test.
#include "RVX5310/rvx5310dialog.h"
#include "shot8000.h"

using namespace Shot8000;

int main(int argc, char **argv)
{
    return run<RVX5310Dialog>(argc, argv, "RVX5310", [](RVX5310Dialog *panel, const QDir &out) {
        for (const char *key : {"btn_pgm2", "btn_pvw3", "btn_wipe", "btn_rec", "btn_ch1", "btn_pip"})
            click(panel, key);
        readState(panel, panel->link());
        bool ok = save(panel, out, "rvx5310-panel.png");
        click(panel, "btn_pip");
        readState(panel, panel->link());
        return save(panel, out, "rvx5310-panel-nopip.png") && ok;
    });
}
