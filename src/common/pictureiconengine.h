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
class PictureIconEngine : public QIconEngine
{
public:
    explicit PictureIconEngine(const QString &file) : m_file(file) {}

    // Makes icons built from .bmp and .png files use this engine (once per program).
    static void install();
    // Scaled copies are kept up to this many KiB; the panels' pictures take about a quarter.
    static constexpr int ScaledLimitKb = 16 * 1024;

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State state) override;
    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override;
    QSize actualSize(const QSize &size, QIcon::Mode mode, QIcon::State state) override;
    QList<QSize> availableSizes(QIcon::Mode mode, QIcon::State state) const override;
    QString key() const override;
    QIconEngine *clone() const override;
    void addFile(const QString &file, const QSize &size, QIcon::Mode mode, QIcon::State state) override;

private:
    QString m_file;
};
