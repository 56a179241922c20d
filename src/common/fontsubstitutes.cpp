#include "fontsubstitutes.h"

#include <QFont>
#include <QFontDatabase>
#include <QString>
#include <QStringList>

namespace {

struct Substitute
{
    const char *named; // UTF-8, as the style sheet names it
    const char *installed;
};

// The RVX3220 model caption's CJK sans has narrow Latin capitals; Debian's plain DejaVu Sans
// runs "SWITCHER" past the 140-pixel label at 20 pt, the condensed cut of it fits.
constexpr Substitute Substitutes[] = {
    {"Adobe 黑体 Std R", "DejaVu Sans Condensed"},
};

} // namespace

void registerFontSubstitutes()
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    const QStringList installed = QFontDatabase::families();
#else
    const QStringList installed = QFontDatabase().families();
#endif
    for (const Substitute &s : Substitutes) {
        const QString named = QString::fromUtf8(s.named);
        // Where the named family is there after all, it is what the style asks for.
        if (!installed.contains(named, Qt::CaseInsensitive))
            QFont::insertSubstitution(named, QString::fromLatin1(s.installed));
    }
}
