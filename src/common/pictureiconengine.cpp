// One source, two builds: the plugin file kova_pictureicons (KOVA_PICTUREICON_PLUGIN), and the
// copy built into the program, with install(), which serves only where the file is missing.
#ifndef KOVA_PICTUREICON_PLUGIN
#define QT_STATICPLUGIN
#endif

#include "pictureiconengine.h"

#include <QApplication>
#include <QCache>
#include <QDir>
#include <QFile>
#include <QHash>
#include <QIconEnginePlugin>
#include <QPainter>
#include <QPixmap>
#include <QPluginLoader>
#include <QStyle>
#include <QStyleOption>

namespace {

// A picture and its double-size drawing (null when the file has none).
struct Picture
{
    QPixmap one, two;
};

// Pictures by file (a resource picture never changes while the program runs) and their scaled
// copies. Freed with the application, before the statics that pixmaps rely on are gone.
struct Store
{
    QHash<QString, Picture> pictures;
    QCache<QString, QPixmap> scaled{PictureIconEngine::ScaledLimitKb};
};

Store &store()
{
    static Store *s = nullptr;
    if (!s) {
        s = new Store;
        qAddPostRoutine([] {
            delete s;
            s = nullptr;
        });
    }
    return *s;
}

// "a.png" is drawn at twice the pixels in "a@2x.png".
QString doubleFile(const QString &file)
{
    const int dot = file.lastIndexOf(QLatin1Char('.'));
    const int slash = file.lastIndexOf(QLatin1Char('/'));
    return dot > slash ? file.left(dot) + QLatin1String("@2x") + file.mid(dot) : file + QLatin1String("@2x");
}

const Picture &picture(const QString &file)
{
    QHash<QString, Picture> &pictures = store().pictures;
    auto it = pictures.constFind(file);
    if (it == pictures.constEnd()) {
        Picture p{QPixmap(file), QPixmap()};
        const QString two = doubleFile(file);
        if (!p.one.isNull() && QFile::exists(two))
            p.two = QPixmap(two);
        it = pictures.insert(file, p);
    }
    return *it;
}

QSize fitted(const QSize &picture, const QSize &room)
{
    // Like the stock engine: scaled down to fit, never up.
    if (picture.width() <= room.width() && picture.height() <= room.height())
        return picture;
    return picture.scaled(room, Qt::KeepAspectRatio);
}

class PictureIconPlugin : public QIconEnginePlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QIconEngineFactoryInterface_iid FILE "pictureiconengine.json")
public:
    QIconEngine *create(const QString &file) override { return new PictureIconEngine(file); }
};

} // namespace

#ifndef KOVA_PICTUREICON_PLUGIN
// Written by moc at the end of this file.
extern const QStaticPlugin qt_static_plugin_PictureIconPlugin();

namespace {

QString &loadedFrom()
{
    static QString folder;
    return folder;
}

// The plugin folder where the plugin file is and loads as this engine: beside the installed
// program (KOVA_PLUGINS_FROM_BINDIR, relative to its folder), else in the build tree.
QString findPluginFolder()
{
    const QStringList folders = {
        QDir(QCoreApplication::applicationDirPath()).filePath(QStringLiteral(KOVA_PLUGINS_FROM_BINDIR)),
        QStringLiteral(KOVA_PLUGINS_BUILD_DIR)};
    for (const QString &candidate : folders) {
        const QString folder = QDir(candidate).canonicalPath();
        const QString file = folder + QStringLiteral("/iconengines/" KOVA_PICTUREICON_FILE);
        if (folder.isEmpty() || !QFile::exists(file))
            continue;
        // A file that does not load (built for another Qt, say) leaves the built-in copy.
        QPluginLoader loader(file);
        if (qobject_cast<QIconEnginePlugin *>(loader.instance()))
            return folder;
    }
    return QString();
}

} // namespace

void PictureIconEngine::install()
{
    static const bool installed = [] {
        loadedFrom() = findPluginFolder();
        if (loadedFrom().isEmpty())
            qRegisterStaticPluginFunction(qt_static_plugin_PictureIconPlugin());
        else
            QCoreApplication::addLibraryPath(loadedFrom());
        return true;
    }();
    Q_UNUSED(installed)
}

QString PictureIconEngine::pluginFolder()
{
    return loadedFrom();
}
#endif

void PictureIconEngine::paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State)
{
    const qreal ratio = painter->device() ? painter->device()->devicePixelRatioF() : 1.0;
    const QSize room = rect.size() * ratio;
    const QPixmap pm = pixmapAt(room, mode, ratio);
    // Centred on whole device pixels, so the picture is copied, not resampled half a pixel off.
    const QPointF inset(((room.width() - pm.width()) / 2) / ratio,
                        ((room.height() - pm.height()) / 2) / ratio);
    painter->drawPixmap(QRectF(QPointF(rect.topLeft()) + inset, QSizeF(pm.size()) / ratio), pm, QRectF());
}

QPixmap PictureIconEngine::pixmap(const QSize &size, QIcon::Mode mode, QIcon::State)
{
    return pixmapAt(size, mode, 1.0);
}

#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
QPixmap PictureIconEngine::scaledPixmap(const QSize &size, QIcon::Mode mode, QIcon::State, qreal scale)
{
    return pixmapAt(size, mode, scale);
}
#else
void PictureIconEngine::virtual_hook(int id, void *data)
{
    if (id == QIconEngine::ScaledPixmapHook) {
        auto *arg = static_cast<QIconEngine::ScaledPixmapArgument *>(data);
        arg->pixmap = pixmapAt(arg->size, arg->mode, arg->scale);
        return;
    }
    QIconEngine::virtual_hook(id, data);
}
#endif

QPixmap PictureIconEngine::pixmapAt(const QSize &size, QIcon::Mode mode, qreal ratio)
{
    QCache<QString, QPixmap> &scaled = store().scaled;
    const Picture &pic = picture(m_file);
    if (pic.one.isNull())
        return pic.one;
    ratio = qMax(ratio, 1.0);
    // What ratio 1 would show, in points, then in this screen's pixels.
    const QSize points = fitted(pic.one.size(), (QSizeF(size) / ratio).toSize());
    const QSize want = ratio == 1.0 ? points : (QSizeF(points) * ratio).toSize();
    const QPixmap source = ratio > 1.0 && !pic.two.isNull() ? pic.two : pic.one;
    if (want == source.size() && mode == QIcon::Normal && ratio == 1.0)
        return source;
    const QString key = m_file + QLatin1Char('/') + QString::number(want.width()) + QLatin1Char('x') +
                        QString::number(want.height()) + QLatin1Char('/') + QString::number(int(mode)) +
                        QLatin1Char('/') + QString::number(ratio);
    if (const QPixmap *hit = scaled.object(key))
        return *hit;
    QPixmap pm =
        want == source.size() ? source : source.scaled(want, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    if (mode != QIcon::Normal) {
        QStyleOption opt;
        opt.palette = QApplication::palette();
        pm = QApplication::style()->generatedIconPixmap(mode, pm, &opt);
    }
    pm.setDevicePixelRatio(ratio);
    scaled.insert(key, new QPixmap(pm),
                  qMax(1, int(qint64(pm.width()) * pm.height() * pm.depth() / 8 / 1024)));
    return pm;
}

QSize PictureIconEngine::actualSize(const QSize &size, QIcon::Mode, QIcon::State)
{
    const QPixmap &source = picture(m_file).one;
    return source.isNull() ? QSize() : fitted(source.size(), size);
}

#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
QList<QSize> PictureIconEngine::availableSizes(QIcon::Mode, QIcon::State)
#else
QList<QSize> PictureIconEngine::availableSizes(QIcon::Mode, QIcon::State) const
#endif
{
    const QPixmap &source = picture(m_file).one;
    return source.isNull() ? QList<QSize>() : QList<QSize>{source.size()};
}

QString PictureIconEngine::key() const
{
    return QStringLiteral("PictureIconEngine");
}

QIconEngine *PictureIconEngine::clone() const
{
    return new PictureIconEngine(m_file);
}

void PictureIconEngine::addFile(const QString &file, const QSize &, QIcon::Mode, QIcon::State)
{
    // One picture an icon: the panels give each key's look its own sheet and file.
    if (m_file.isEmpty())
        m_file = file;
}

#include "pictureiconengine.moc"
