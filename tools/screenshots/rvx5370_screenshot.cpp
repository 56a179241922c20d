// Pictures of the RVX5370 panel against an emulated unit, for the documentation:
//   lab/lab.sh --xvfb --unit "type=0x51,name=Stage" -- rvx5370_screenshot <out-dir>
// Opens the unit from the search window, puts inputs on the buses, PIP on and a wipe, waits for
// the unit's state to come back, then writes rvx5370-set.png (SET open) and rvx5370-f1.png
// (F1 open). Not a test.
#include "RVX5370/rvx5370.h"
#include "shot8000.h"

using namespace Shot8000;

int main(int argc, char **argv)
{
    return run<RVX5370>(argc, argv, "RVX5370", [](RVX5370 *panel, const QDir &out) {
        for (const char *key : {"btn_pgm2", "btn_pvw3", "btn_pip", "btn_wipe", "btn_rec", "btn_ch1"})
            click(panel, key);
        readState(panel, panel->link());
        click(panel, "btn_set");
        bool ok = save(panel, out, "rvx5370-set.png");
        click(panel, "btn_f1");
        return save(panel, out, "rvx5370-f1.png") && ok;
    });
}
