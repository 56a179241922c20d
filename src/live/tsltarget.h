#pragma once

#include <QHostAddress>
#include <QList>
#include <QString>
#include <optional>

// Where tally messages go: an IPv4 address and a UDP port, parsed once from the operator's
// text and handed around as a value.
struct TslTarget
{
    QHostAddress host;
    quint16 port = 0;

    // "a.b.c.d:port", four decimal fields of 0-255 and a port of 1-65535, blanks around it
    // allowed. Anything else, a name included, is refused: resolving a name would hold the
    // GUI thread or hold back the tally.
    static std::optional<TslTarget> fromText(const QString &text);
    // Targets separated by commas or blanks; one bad target refuses the whole text. An empty
    // text is an empty list (the tally is off).
    static std::optional<QList<TslTarget>> listFromText(const QString &text);

    QString text() const;
    bool operator==(const TslTarget &o) const { return host == o.host && port == o.port; }
    bool operator!=(const TslTarget &o) const { return !(*this == o); }
};
