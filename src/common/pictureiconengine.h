#pragma once

#include <QIconEngine>
#include <QString>

// Draws a picture file as an icon, loading each file once for the whole program. The style
// sheets' "image:" builds a new icon every time a key is restyled; with the stock engine each
// such icon decodes its picture again and leaves a scaled copy under a key of its own in Qt's
// pixmap cache, so a panel that restyles its keys hundreds of times a second fills that cache
// with copies nobody asks for again, and the cache's trim every 30 s then holds the GUI for
// a tenth of a second. Here every icon of the same file shares one picture and one scaled copy
// per size, kept outside that cache.
//
// On a screen scaled above 1 an icon is drawn from the picture's "@2x" file, when there is
// one, at the screen's own pixels: the key keeps its size on the panel and stays sharp.
//
// Qt finds the engine as an icon-engine plugin, and the program ships it as a plugin file
// (kova_pictureicons, in a folder of its own) rather than built in: Qt 5 reads a built-in
// plugin's description again on every plugin query of any kind, and a restyle of a key with a
// picture makes eight (the icon, and the size of the picture read twice), half of its cost.
// A plugin file's description is read once, when the folder is added.
class PictureIconEngine : public QIconEngine
{
public:
    explicit PictureIconEngine(const QString &file) : m_file(file) {}

    // Makes icons built from .bmp and .png files use this engine (once per program): from the
    // plugin file where it is found and loads, else from the copy built into the program.
    static void install();
    // The folder the plugin was loaded from (it holds iconengines/); empty when the built-in
    // copy serves, or before install().
    static QString pluginFolder();
    // Scaled copies are kept up to this many KiB: two of every picture and of its double-size
    // drawing fit, for windows on screens of both kinds; one screen's panels take far less.
    static constexpr int ScaledLimitKb = 48 * 1024;

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State state) override;
    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override;
    QSize actualSize(const QSize &size, QIcon::Mode mode, QIcon::State state) override;
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    QList<QSize> availableSizes(QIcon::Mode mode, QIcon::State state) override;
#else
    QList<QSize> availableSizes(QIcon::Mode mode, QIcon::State state) const override;
#endif
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    QPixmap scaledPixmap(const QSize &size, QIcon::Mode mode, QIcon::State state, qreal scale) override;
#else
    void virtual_hook(int id, void *data) override;
#endif
    QString key() const override;
    QIconEngine *clone() const override;
    void addFile(const QString &file, const QSize &size, QIcon::Mode mode, QIcon::State state) override;

    // The picture for a room of `size` device pixels at `ratio` device pixels a point: as large
    // as the picture drawn at ratio 1 would be, in device pixels, never scaled up.
    QPixmap pixmapAt(const QSize &size, QIcon::Mode mode, qreal ratio);

private:
    QString m_file;
};
