#include "tsltarget.h"

#include <QRegularExpression>
#include <QStringList>

std::optional<TslTarget> TslTarget::fromText(const QString &text)
{
    // Written out, so the dotted form is taken and none of the other forms QHostAddress knows.
    static const QRegularExpression form(
        QStringLiteral("^([0-9]{1,3})\\.([0-9]{1,3})\\.([0-9]{1,3})\\.([0-9]{1,3}):([0-9]{1,5})$"));
    const QRegularExpressionMatch m = form.match(text.trimmed());
    if (!m.hasMatch())
        return std::nullopt;
    quint32 ip = 0;
    for (int i = 1; i <= 4; ++i) {
        const int field = m.captured(i).toInt();
        if (field > 255)
            return std::nullopt;
        ip = ip << 8 | quint32(field);
    }
    const int port = m.captured(5).toInt();
    if (port < 1 || port > 65535)
        return std::nullopt;
    return TslTarget{QHostAddress(ip), quint16(port)};
}

std::optional<QList<TslTarget>> TslTarget::listFromText(const QString &text)
{
    QList<TslTarget> out;
    for (const QString &part :
         text.split(QRegularExpression(QStringLiteral("[,\\s]+")), Qt::SkipEmptyParts)) {
        const std::optional<TslTarget> t = fromText(part);
        if (!t)
            return std::nullopt;
        if (!out.contains(*t))
            out << *t;
    }
    return out;
}

QString TslTarget::text() const
{
    return host.toString() + QLatin1Char(':') + QString::number(port);
}
