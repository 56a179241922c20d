// Built into the program, not loaded from a plugin folder.
#define QT_STATICPLUGIN

#include "pictureiconengine.h"

#include <QApplication>
#include <QCache>
#include <QHash>
#include <QIconEnginePlugin>
#include <QPainter>
#include <QPixmap>
#include <QStyle>
#include <QStyleOption>

namespace {

// Pictures by file (a resource picture never changes while the program runs) and their scaled
// copies. Freed with the application, before the statics that pixmaps rely on are gone.
struct Store
{
    QHash<QString, QPixmap> pictures;
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

QPixmap picture(const QString &file)
{
    QHash<QString, QPixmap> &pictures = store().pictures;
    auto it = pictures.constFind(file);
    if (it == pictures.constEnd())
        it = pictures.insert(file, QPixmap(file));
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

// Written by moc at the end of this file.
extern const QStaticPlugin qt_static_plugin_PictureIconPlugin();

void PictureIconEngine::install()
{
    static const bool installed = [] {
        qRegisterStaticPluginFunction(qt_static_plugin_PictureIconPlugin());
        return true;
    }();
    Q_UNUSED(installed)
}

void PictureIconEngine::paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State state)
{
    const qreal ratio = painter->device() ? painter->device()->devicePixelRatioF() : 1.0;
    QPixmap pm = pixmap(rect.size() * ratio, mode, state);
    pm.setDevicePixelRatio(ratio);
    const QSize shown = pm.size() / ratio;
    painter->drawPixmap(QRect(rect.topLeft() + QPoint((rect.width() - shown.width()) / 2,
                                                      (rect.height() - shown.height()) / 2),
                              shown),
                        pm);
}

QPixmap PictureIconEngine::pixmap(const QSize &size, QIcon::Mode mode, QIcon::State)
{
    QCache<QString, QPixmap> &scaled = store().scaled;
    const QPixmap source = picture(m_file);
    if (source.isNull())
        return source;
    const QSize want = fitted(source.size(), size);
    if (want == source.size() && mode == QIcon::Normal)
        return source;
    const QString key = m_file + QLatin1Char('/') + QString::number(want.width()) + QLatin1Char('x') +
                        QString::number(want.height()) + QLatin1Char('/') + QString::number(int(mode));
    if (const QPixmap *hit = scaled.object(key))
        return *hit;
    QPixmap pm =
        want == source.size() ? source : source.scaled(want, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    if (mode != QIcon::Normal) {
        QStyleOption opt;
        opt.palette = QApplication::palette();
        pm = QApplication::style()->generatedIconPixmap(mode, pm, &opt);
    }
    scaled.insert(key, new QPixmap(pm),
                  qMax(1, int(qint64(pm.width()) * pm.height() * pm.depth() / 8 / 1024)));
    return pm;
}

QSize PictureIconEngine::actualSize(const QSize &size, QIcon::Mode, QIcon::State)
{
    const QPixmap source = picture(m_file);
    return source.isNull() ? QSize() : fitted(source.size(), size);
}

QList<QSize> PictureIconEngine::availableSizes(QIcon::Mode, QIcon::State) const
{
    const QPixmap source = picture(m_file);
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
