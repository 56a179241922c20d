#include "keysheet.h"

#include <QHash>

namespace {

// A composed sheet by the constants it is made of.
struct SheetKey
{
    int form;
    const void *first;
    const void *second;
    bool operator==(const SheetKey &o) const
    {
        return form == o.form && first == o.first && second == o.second;
    }
};

uint qHash(const SheetKey &p, uint seed = 0)
{
    return ::qHash(p.form, seed) ^ ::qHash(p.first, seed) ^ ::qHash(p.second, seed);
}

enum Form
{
    Image,
    BorderImage,
    Text
};

// Every sheet composed so far (a few dozen), for the life of the program.
QHash<SheetKey, QString> &sheets()
{
    static QHash<SheetKey, QString> made;
    return made;
}

template <class Compose> const QString &composed(SheetKey parts, Compose compose)
{
    QHash<SheetKey, QString> &sheets = ::sheets();
    auto it = sheets.constFind(parts);
    if (it == sheets.constEnd())
        it = sheets.insert(parts, compose());
    return *it;
}

} // namespace

namespace KeySheet {

const QString &image(const char *picture, const char *base)
{
    return composed({Image, picture, base}, [=] {
        return QLatin1String("QPushButton{image:url(") + QLatin1String(picture) + QLatin1String(");}") +
               QLatin1String(base);
    });
}

const QString &borderImage(const char *picture)
{
    return composed({BorderImage, picture, nullptr}, [=] {
        return QLatin1String("QPushButton{border-image: url(") + QLatin1String(picture) +
               QLatin1String(");}");
    });
}

const QString &text(const char *sheet)
{
    return composed({Text, sheet, nullptr}, [=] { return QString::fromLatin1(sheet); });
}

} // namespace KeySheet
