#include "imagetable.h"

#include <QFile>
#include <QRegularExpression>
#include <QSet>
#include <QStringList>

QString ImageEntry::format() const
{
    return path.section(QLatin1Char('.'), -1).toLower();
}

QString ImageEntry::alias() const
{
    return path.mid(2);
}

ImageTable ImageTable::parse(const QString &text)
{
    static const QRegularExpression row(
        QStringLiteral("^(\\S+)\\s+(\\S+)\\s+(\\S+)\\s+(\\d+)x(\\d+)(?:\\s+(.*))?$"));
    static const QStringList kinds = {
        QStringLiteral("key"),     QStringLiteral("icon"),    QStringLiteral("logo"),
        QStringLiteral("appicon"), QStringLiteral("groove"),  QStringLiteral("handle"),
        QStringLiteral("texture"), QStringLiteral("divider"), QStringLiteral("strip")};

    ImageTable table;
    QSet<QString> seen;
    const QStringList lines = text.split(QLatin1Char('\n'));
    for (int i = 0; i < lines.size(); ++i) {
        const QString line = lines.at(i).trimmed();
        if (line.isEmpty() || line.startsWith(QLatin1Char('#')))
            continue;
        const QString where = QStringLiteral("line %1: ").arg(i + 1);
        const QRegularExpressionMatch m = row.match(line);
        if (!m.hasMatch()) {
            table.m_error = where + QStringLiteral("expected <path> <kind> <scheme> <w>x<h> [legend]");
            return table;
        }
        ImageEntry e;
        e.path = m.captured(1);
        e.kind = m.captured(2);
        e.scheme = m.captured(3);
        e.size = QSize(m.captured(4).toInt(), m.captured(5).toInt());
        e.legend = m.captured(6).trimmed();
        e.line = i + 1;
        if (!e.path.startsWith(QLatin1String(":/")) || e.path.endsWith(QLatin1Char('/'))) {
            table.m_error = where + QStringLiteral("resource path must start with \":/\" and name a file");
            return table;
        }
        if (e.format() != QLatin1String("png") && e.format() != QLatin1String("bmp")) {
            table.m_error = where + QStringLiteral("only .png and .bmp pictures are written");
            return table;
        }
        if (!kinds.contains(e.kind)) {
            table.m_error = where + QStringLiteral("unknown kind \"%1\"").arg(e.kind);
            return table;
        }
        if (e.size.width() < 1 || e.size.height() < 1 || e.size.width() > 1024 || e.size.height() > 1024) {
            table.m_error = where + QStringLiteral("size out of range");
            return table;
        }
        // Resource paths are case sensitive, so "UP.bmp" and "up.bmp" are two entries; only an
        // exact repeat is a mistake.
        if (seen.contains(e.path)) {
            table.m_error = where + QStringLiteral("duplicate path %1").arg(e.path);
            return table;
        }
        seen.insert(e.path);
        table.m_entries.append(e);
    }
    return table;
}

ImageTable ImageTable::load(const QString &fileName)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        ImageTable table;
        table.m_error = QStringLiteral("cannot read %1").arg(fileName);
        return table;
    }
    ImageTable table = parse(QString::fromUtf8(file.readAll()));
    if (!table.isValid())
        table.m_error.prepend(fileName + QLatin1Char(':'));
    return table;
}
