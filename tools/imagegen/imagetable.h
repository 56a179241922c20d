#pragma once

#include <QList>
#include <QSize>
#include <QString>

// One picture of the resource table: where it lives, what to paint and how big.
struct ImageEntry
{
    QString path;   // full resource path, e.g. ":/images/white/CUT.bmp"
    QString kind;   // painter to use: key, icon, logo, appicon, groove, handle, texture, divider, strip
    QString scheme; // colour scheme understood by that painter
    QSize size;
    QString legend; // free text up to the end of the line; "|" breaks lines, "@name" is a glyph
    int line = 0;   // line in the table, for messages

    // "png" or "bmp", taken from the path; the picture is written in that format.
    QString format() const;
    // The path inside the resource tree without the leading ":/".
    QString alias() const;
};

// Reads the declarative picture table. Each non-blank line that does not start with '#':
//   <resource path> <kind> <scheme> <width>x<height> [legend ...]
class ImageTable
{
public:
    static ImageTable parse(const QString &text);
    static ImageTable load(const QString &fileName);

    bool isValid() const { return m_error.isEmpty(); }
    QString error() const { return m_error; }
    const QList<ImageEntry> &entries() const { return m_entries; }

private:
    QList<ImageEntry> m_entries;
    QString m_error;
};
