#include "common/fontsubstitutes.h"
#include "showsearch.h"

#include <QApplication>

int main(int argc, char *argv[])
{
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling, true);
    QApplication app(argc, argv);
    registerFontSubstitutes();
    showsearch window(nullptr);
    window.show();
    return app.exec();
}
