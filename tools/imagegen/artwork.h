#pragma once

#include "imagetable.h"

#include <QImage>

// Paints the picture one table entry describes. Returns a null image and fills *error
// when the entry asks for a scheme or glyph the painters do not know.
class Artwork
{
public:
    // Keys and icons are drawn on transparency; formats without alpha (BMP) get the
    // panel's own grey behind them so the corners blend into the key rows. At a scale above 1
    // the same drawing is made with that many times the pixels, for high-DPI screens.
    static QImage paint(const ImageEntry &entry, QString *error, int scale = 1);
    static QColor panelColour() { return QColor(58, 58, 58); }
};
