// Pictures of the live features for the documentation:
//   lab/lab.sh --xvfb --unit "type=0x4f,name=Control" -- live_screenshot <out-dir>
// Opens the unit's RVX5310 panel with the state followed every 300 ms, stops the emulator (the
// lab's, by name) until the panel shows it has no reply, writes rvx5310-noreply.png, lets the
// emulator go on, and writes live-settings.png of the live settings dialog. Not a test.
#include "RVX5310/rvx5310dialog.h"
#include "app/liveproduction.h"
#include "app/livesettingsdialog.h"
#include "common/noreplymark.h"
#include "shot8000.h"

#include <QProcess>
#include <QSettings>
#include <QTemporaryDir>

using namespace Shot8000;

int main(int argc, char **argv)
{
    LiveOptions options;
    options.followMs = 300;
    std::unique_ptr<LiveProduction> live;
    return run<RVX5310Dialog>(
        argc, argv, "RVX5310",
        [&](RVX5310Dialog *panel, const QDir &out) {
            readState(panel, panel->link());
            QProcess::execute(QStringLiteral("pkill"), {QStringLiteral("-STOP"), QStringLiteral("-x"),
                                                        QStringLiteral("kova-emulator")});
            auto *mark = panel->findChild<NoReplyMark *>();
            const bool shown = mark && QTest::qWaitFor([mark] { return mark->isVisible(); }, 3000);
            bool ok = shown && save(panel, out, "rvx5310-noreply.png");
            QProcess::execute(QStringLiteral("pkill"), {QStringLiteral("-CONT"), QStringLiteral("-x"),
                                                        QStringLiteral("kova-emulator")});
            QTemporaryDir dir;
            QSettings settings(dir.filePath(QStringLiteral("kova.conf")), QSettings::IniFormat);
            LiveSettingsDialog dialog(settings);
            dialog.show();
            ok = save(&dialog, out, "live-settings.png") && ok;
            return ok;
        },
        [&](showsearch *window) {
            live = std::make_unique<LiveProduction>(options);
            QObject::connect(window, &showsearch::panelOpened, live.get(), &LiveProduction::panelOpened);
        });
}
