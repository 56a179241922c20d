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
    LiveOptions options;
    if (asksForTextOnly(argc, argv)) {
        QCoreApplication core(argc, argv);
        QCoreApplication::setApplicationVersion(QStringLiteral(KOVA_VERSION));
        const int code = readOptions(&options);
        return code < 0 ? 0 : code;
    }

    enableHighDpi();
    QApplication app(argc, argv);
    QCoreApplication::setApplicationVersion(QStringLiteral(KOVA_VERSION));
    // Wayland compositors match the window to its menu entry and icon by this name.
    QGuiApplication::setDesktopFileName(QStringLiteral("invalid.kova.Kova"));

    // The live features' settings, then the command line over them for this run.
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
