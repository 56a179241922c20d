#include "common/fontsubstitutes.h"
#include "common/highdpi.h"
#include "liveproduction.h"
#include "showsearch.h"

#include <QApplication>
#include <QCoreApplication>
#include <cstdio>
#include <cstring>

namespace {

// True when the command line asks only for text (help, version): that must work with no
// window system at all, `kova --help` over ssh say, where a GUI application cannot start.
bool asksForTextOnly(int argc, char *argv[])
{
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], "--") == 0)
            return false;
        for (const char *flag : {"-h", "--help", "--help-all", "-?", "-v", "--version"})
            if (std::strcmp(argv[i], flag) == 0)
                return true;
    }
    return false;
}

// True when no window system can be reached: no display named and no platform chosen. The GUI
// application cannot start then, and would abort in the platform plugin before the options
// are read; they are read first instead, so a mistake in them is told as such.
bool reachesNoWindowSystem(int argc, char *argv[])
{
    for (const char *name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
        if (!qEnvironmentVariableIsEmpty(name))
            return false;
    for (int i = 1; i < argc; ++i)
        if (std::strcmp(argv[i], "-platform") == 0 || std::strcmp(argv[i], "--platform") == 0)
            return false;
    return true;
}

// Reads the saved live settings and the command line over them; 0 to run, else the exit code.
int readOptions(LiveOptions *options)
{
    *options = LiveOptions::load();
    QString message;
    switch (options->parseArguments(QCoreApplication::arguments(), &message)) {
    case LiveOptions::Outcome::Help:
    case LiveOptions::Outcome::Version:
        std::fputs(qPrintable(message + QLatin1Char('\n')), stdout);
        return -1;
    case LiveOptions::Outcome::Error:
        std::fputs(qPrintable(QStringLiteral("kova: %1\n").arg(message)), stderr);
        return 2;
    case LiveOptions::Outcome::Run:
        break;
    }
    return 0;
}

} // namespace

int main(int argc, char *argv[])
{
    enableHighDpi();
    LiveOptions options;
    const bool textOnly = asksForTextOnly(argc, argv);
    const bool optionsFirst = textOnly || reachesNoWindowSystem(argc, argv);
    if (optionsFirst) {
        QCoreApplication core(argc, argv);
        QCoreApplication::setApplicationVersion(QStringLiteral(KOVA_VERSION));
        const int code = readOptions(&options);
        if (textOnly || code != 0)
            return code < 0 ? 0 : code;
        // Right options and no window system: the GUI application below says why it cannot
        // start.
    }

    QApplication app(argc, argv);
    QCoreApplication::setApplicationVersion(QStringLiteral(KOVA_VERSION));
    // Wayland compositors match the window to its menu entry and icon by this name.
    QGuiApplication::setDesktopFileName(QStringLiteral("invalid.kova.Kova"));

    // The live features' settings, then the command line over them for this run.
    if (!optionsFirst)
        if (const int code = readOptions(&options))
            return code < 0 ? 0 : code;
    LiveProduction live(options);
    QString message;
    if (!live.start(&message)) {
        std::fputs(qPrintable(QStringLiteral("kova: %1\n").arg(message)), stderr);
        return 1;
    }

    registerFontSubstitutes();
    showsearch window(nullptr);
    live.setSearch(window.link());
    QObject::connect(&window, &showsearch::panelOpened, &live, &LiveProduction::panelOpened);
    window.setSideBySide(options.panelsSideBySide());
    if (!options.openAddresses.isEmpty())
        window.openWhenFound(options.openAddresses);
    window.show();
    return app.exec();
}
