// kova-imagegen: paints every picture listed in the image table and writes the .qrc
// that lists them, so the resources are built from data instead of committed bytes.
//
//   kova-imagegen <table> <output dir> <qrc file> [--contact-sheet <png>]

#include "artwork.h"
#include "imagetable.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QPainter>
#include <QSaveFile>
#include <QTextStream>
#include <cstdio>

namespace {

int fail(const QString &message)
{
    std::fprintf(stderr, "kova-imagegen: %s\n", qPrintable(message));
    return 1;
}

// Legends must look the same on every build machine, so the face is loaded from the
// Debian font files directly rather than whatever fontconfig would substitute.
void loadFonts()
{
    const QString dir = QStringLiteral("/usr/share/fonts/truetype/dejavu/");
    for (const char *name : {"DejaVuSans.ttf", "DejaVuSans-Bold.ttf"}) {
        if (QFontDatabase::addApplicationFont(dir + QLatin1String(name)) < 0)
            std::fprintf(stderr, "kova-imagegen: warning: %s not found, legends use a fallback font\n", name);
    }
}

// Files get a numbered, flattened name; the resource path lives in the alias. That keeps
// "UP.bmp" and "up.bmp" apart even on a file system that folds case.
QString fileNameFor(int index, const ImageEntry &e)
{
    QString flat = e.alias().section(QLatin1Char('.'), 0, -2);
    flat.replace(QLatin1Char('/'), QLatin1Char('_'));
    return QStringLiteral("%1_%2").arg(index, 3, 10, QLatin1Char('0')).arg(flat);
}

// "images/a.png" with "@2x" is "images/a@2x.png", the name Qt looks for.
QString atScale(const QString &alias, const QString &suffix)
{
    const int dot = alias.lastIndexOf(QLatin1Char('.'));
    return dot < 0 ? alias + suffix : alias.left(dot) + suffix + alias.mid(dot);
}

QImage contactSheet(const QList<ImageEntry> &entries, const QList<QImage> &images)
{
    const int cell = 132, cols = 10, label = 14;
    const int rows = (images.size() + cols - 1) / cols;
    QImage sheet(cols * cell, rows * (cell + label), QImage::Format_RGB32);
    sheet.fill(QColor(58, 58, 58));
    QPainter p(&sheet);
    p.setRenderHint(QPainter::SmoothPixmapTransform);
    QFont f(QStringLiteral("DejaVu Sans"));
    f.setPixelSize(9);
    p.setFont(f);
    for (int i = 0; i < images.size(); ++i) {
        const QRect box((i % cols) * cell, (i / cols) * (cell + label), cell, cell);
        const QImage img =
            images.at(i).size().boundedTo(QSize(cell - 8, cell - 8)) == images.at(i).size()
                ? images.at(i)
                : images.at(i).scaled(cell - 8, cell - 8, Qt::KeepAspectRatio, Qt::SmoothTransformation);
        p.drawImage(box.center() - QPoint(img.width() / 2, img.height() / 2), img);
        p.setPen(QColor(220, 220, 220));
        p.drawText(QRect(box.left(), box.bottom(), cell, label), Qt::AlignCenter,
                   entries.at(i).alias().mid(QStringLiteral("images/").size()));
    }
    return sheet;
}

} // namespace

int main(int argc, char **argv)
{
    QGuiApplication app(argc, argv);
    QStringList args = app.arguments().mid(1);
    QString sheetFile;
    const int sheetAt = args.indexOf(QStringLiteral("--contact-sheet"));
    if (sheetAt >= 0 && sheetAt + 1 < args.size()) {
        sheetFile = args.at(sheetAt + 1);
        args.erase(args.begin() + sheetAt, args.begin() + sheetAt + 2);
    }
    if (args.size() != 3)
        return fail(
            QStringLiteral("usage: kova-imagegen <table> <output dir> <qrc file> [--contact-sheet <png>]"));

    const ImageTable table = ImageTable::load(args.at(0));
    if (!table.isValid())
        return fail(table.error());
    const QDir out(args.at(1));
    if (!QDir().mkpath(out.absolutePath()))
        return fail(QStringLiteral("cannot create %1").arg(out.absolutePath()));
    loadFonts();

    const QFileInfo qrcInfo(args.at(2));
    const QDir qrcDir = qrcInfo.absoluteDir();
    QString qrc;
    QTextStream xml(&qrc);
    xml << "<!DOCTYPE RCC>\n<RCC version=\"1.0\">\n<qresource prefix=\"/\">\n";
    QList<QImage> images;
    int index = 0;
    for (const ImageEntry &e : table.entries()) {
        ++index;
        // Every picture also comes at twice the pixels under Qt's "@2x" name, which Qt picks
        // for style sheets and the key icons on a screen scaled above 1.
        for (int scale : {1, 2}) {
            QString error;
            const QImage image = Artwork::paint(e, &error, scale);
            if (image.isNull())
                return fail(QStringLiteral("%1:%2: %3: %4").arg(args.at(0)).arg(e.line).arg(e.path, error));
            const QString suffix = scale == 1 ? QString() : QStringLiteral("@%1x").arg(scale);
            const QString file =
                out.absoluteFilePath(fileNameFor(index, e) + suffix + QLatin1Char('.') + e.format());
            if (!image.save(file, e.format().toLatin1().constData()))
                return fail(QStringLiteral("cannot write %1").arg(file));
            xml << "  <file alias=\"" << atScale(e.alias(), suffix).toHtmlEscaped() << "\">"
                << qrcDir.relativeFilePath(file).toHtmlEscaped() << "</file>\n";
            if (scale == 1)
                images.append(image);
        }
    }
    xml << "</qresource>\n</RCC>\n";
    xml.flush();

    QSaveFile qrcFile(qrcInfo.absoluteFilePath());
    if (!qrcFile.open(QIODevice::WriteOnly) || qrcFile.write(qrc.toUtf8()) < 0 || !qrcFile.commit())
        return fail(QStringLiteral("cannot write %1").arg(qrcInfo.absoluteFilePath()));

    if (!sheetFile.isEmpty() && !contactSheet(table.entries(), images).save(sheetFile))
        return fail(QStringLiteral("cannot write %1").arg(sheetFile));
    return 0;
}
