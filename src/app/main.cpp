#include "common/fontsubstitutes.h"
#include "showsearch.h"

#include <QApplication>

int main(int argc, char *argv[])
{
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling, true);
    QApplication app(argc, argv);
    // Wayland compositors match the window to its menu entry and icon by this name.
    QGuiApplication::setDesktopFileName(QStringLiteral("invalid.kova.Kova"));
    registerFontSubstitutes();
    showsearch window(nullptr);
    window.show();
    return app.exec();
}
