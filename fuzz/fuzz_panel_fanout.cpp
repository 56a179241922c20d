// The state fan-out of every panel family: a datagram sequence sorted by the panel's own link
// (AnalysisData for the reporting families, the shape check for the RVX3220) and handed to
// the panel's rows through the same connections an open panel has. Reassembly and the sum
// are fuzzed by the link targets; here every datagram is taken as a frame, so the fuzzer
// reaches the rows without having to forge checksums.
//
// Input: one byte that picks the panel (modulo the table below), then datagrams as in
// datagrams.h. Each panel is made once, offscreen, with no unit address: nothing it echoes
// back can leave, and the guard below refuses to run outside a private network namespace.
#include "RVX3210/rvx3210ui.h"
#include "RVX3220/rvx3220ui.h"
#include "RVX3410/rvx3410ui.h"
#include "RVX5310/rvx5310dialog.h"
#include "RVX5350/rvx5350.h"
#include "RVX5370/rvx5370.h"
#include "SwitcherData/rvx3210_workdata.h"
#include "SwitcherData/rvx3220_workdata.h"
#include "SwitcherData/rvx5all_workdata.h"
#include "datagrams.h"
#include "netnsguard.h"

#include <QApplication>
#include <QTimer>
#include <cstdio>
#include <cstdlib>
#include <functional>

namespace {

struct PanelFamily
{
    const char *name;
    std::function<QWidget *()> make;
    std::function<void(QWidget *, const QByteArray &)> feed;
};

void feedReporting(QWidget *panel, const QByteArray &frame)
{
    static_cast<Rvx3210PanelFrame *>(panel)->link()->AnalysisData(frame);
}

// The 8000-series panels read the state their link decoded, as the RVX3210 family's do.
template <class Panel> void feed8000(QWidget *panel, const QByteArray &frame)
{
    static_cast<Panel *>(panel)->link()->AnalysisData(frame);
}

// One entry per panel family: how to make the panel, and how its link hands it a received
// frame. Existing entries keep their place so the corpus keeps selecting the panel it was
// found with.
const PanelFamily Families[] = {
    {"RVX3210", [] { return new RVX3210UI; }, feedReporting},
    {"RVX3410", [] { return new RVX3410UI; }, feedReporting},
    {"RVX3220", [] { return new RVX3220UI; },
     [](QWidget *panel, const QByteArray &frame) {
         static_cast<RVX3220UI *>(panel)->link()->Read3220State_Data(frame, frame.size());
     }},
    {"RVX5310", [] { return new RVX5310Dialog; }, feed8000<RVX5310Dialog>},
    {"RVX5370", [] { return new RVX5370; }, feed8000<RVX5370>},
    {"RVX5350", [] { return new RVX5350; }, feed8000<RVX5350>},
};
constexpr int FamilyCount = int(sizeof(Families) / sizeof(Families[0]));

// Made on first use and never deleted, like the application: torn down at exit in the
// wrong order, Qt would crash after the run instead of reporting it.
QWidget *panels[FamilyCount] = {};

} // namespace

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    new QApplication(*argc, *argv);
    requirePrivateNetwork();
    // A modal box raised by what a unit sent would stall a live panel: that is a finding.
    static QTimer modalWatch;
    QObject::connect(&modalWatch, &QTimer::timeout, [] {
        if (QWidget *box = QApplication::activeModalWidget()) {
            std::fprintf(stderr, "a received frame opened a modal window: %s\n",
                         box->metaObject()->className());
            std::abort();
        }
    });
    modalWatch.start(0);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size < 1)
        return 0;
    const int family = data[0] % FamilyCount;
    QWidget *&panel = panels[family];
    if (!panel)
        panel = Families[family].make();
    for (const QByteArray &frame : FuzzDatagrams::split(data + 1, size - 1))
        Families[family].feed(panel, frame);
    // Whatever the rows posted (restyles, layout) runs before the next input.
    QCoreApplication::processEvents();
    return 0;
}
