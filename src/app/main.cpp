#include "common/fontsubstitutes.h"
#include "common/highdpi.h"
#include "liveproduction.h"
#include "showsearch.h"

#include <QApplication>
#include <cstdio>

int main(int argc, char *argv[])
{
    enableHighDpi();
    QApplication app(argc, argv);
    QCoreApplication::setApplicationVersion(QStringLiteral(KOVA_VERSION));
    // Wayland compositors match the window to its menu entry and icon by this name.
    QGuiApplication::setDesktopFileName(QStringLiteral("invalid.kova.Kova"));

    // The live features' settings, then the command line over them for this run.
    LiveOptions options = LiveOptions::load();
    QString message;
    switch (options.parseArguments(QCoreApplication::arguments(), &message)) {
    case LiveOptions::Outcome::Help:
    case LiveOptions::Outcome::Version:
        std::fputs(qPrintable(message + QLatin1Char('\n')), stdout);
        return 0;
    case LiveOptions::Outcome::Error:
        std::fputs(qPrintable(QStringLiteral("kova: %1\n").arg(message)), stderr);
        return 2;
    case LiveOptions::Outcome::Run:
        break;
    }
    LiveProduction live(options);
    if (!live.start(&message)) {
        std::fputs(qPrintable(QStringLiteral("kova: %1\n").arg(message)), stderr);
        return 1;
    }

    registerFontSubstitutes();
    showsearch window(nullptr);
    QObject::connect(&window, &showsearch::panelOpened, &live, &LiveProduction::panelOpened);
    window.show();
    return app.exec();
}
