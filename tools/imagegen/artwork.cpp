#include "artwork.h"

#include <QFont>
#include <QFontMetricsF>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QRadialGradient>
#include <QtMath>

namespace {

struct KeyScheme
{
    QColor top, mid, bottom; // face gradient
    QColor rim;              // side of the key cap
    QColor text, emboss;     // legend and the one-pixel relief under it
    QColor glow;             // light spilling into the well; invalid when unlit
};

bool keyScheme(const QString &name, KeyScheme *s)
{
    if (name == QLatin1String("white")) {
        *s = {QColor("#f2f2ef"), QColor("#d2d2cf"),          QColor("#a9a9a6"), QColor("#6c6c6a"),
              QColor("#2b2b2b"), QColor(255, 255, 255, 150), QColor()};
    } else if (name == QLatin1String("red")) {
        *s = {QColor("#ff9a82"), QColor("#f23b22"),     QColor("#b0170b"),  QColor("#5e0a04"),
              QColor("#ffffff"), QColor(70, 6, 0, 170), QColor(255, 60, 30)};
    } else if (name == QLatin1String("green")) {
        *s = {QColor("#b4ff9c"), QColor("#45cf33"),     QColor("#178a15"),  QColor("#0a4609"),
              QColor("#ffffff"), QColor(6, 48, 6, 190), QColor(70, 255, 50)};
    } else {
        return false;
    }
    return true;
}

QFont legendFont(qreal pixelSize)
{
    QFont f(QStringLiteral("DejaVu Sans"));
    f.setBold(true);
    f.setPixelSize(qMax(1, qRound(pixelSize)));
    f.setHintingPreference(QFont::PreferNoHinting);
    return f;
}

// Draws text lines centred in box; the first of several lines is the small caption.
void drawText(QPainter &p, const QRectF &box, const QStringList &lines, qreal mainScale, const QColor &colour,
              const QColor &emboss)
{
    QList<QFont> fonts;
    qreal total = 0;
    for (int i = 0; i < lines.size(); ++i) {
        const bool caption = lines.size() > 1 && i == 0;
        qreal px = box.height() * (caption ? mainScale * 0.52 : mainScale / qMax(1.0, lines.size() * 0.8));
        QFont f = legendFont(px);
        while (px > 4 && QFontMetricsF(f).horizontalAdvance(lines.at(i)) > box.width() * 0.84) {
            px -= 0.5;
            f = legendFont(px);
        }
        fonts.append(f);
        total += QFontMetricsF(f).capHeight();
    }
    const qreal gap = box.height() * 0.09;
    total += gap * (lines.size() - 1);

    QPainterPath path;
    qreal y = box.center().y() - total / 2;
    for (int i = 0; i < lines.size(); ++i) {
        const QFontMetricsF fm(fonts.at(i));
        y += fm.capHeight();
        // Centre on the ink, not on the advance, so "1" and "F1" sit in the middle.
        const QRectF ink = fm.tightBoundingRect(lines.at(i));
        path.addText(box.center().x() - ink.center().x(), y, fonts.at(i), lines.at(i));
        y += gap;
    }
    const qreal lift = qMax(1.0, box.height() / 40);
    p.fillPath(path.translated(0, lift), emboss);
    p.fillPath(path, colour);
}

// Arrow pointing up inside a unit box (-1..1), rotated to the wanted direction.
QPainterPath arrowPath(qreal degrees)
{
    QPainterPath a;
    a.moveTo(0, -1);
    a.lineTo(0.78, -0.12);
    a.lineTo(0.27, -0.12);
    a.lineTo(0.27, 0.62);
    a.lineTo(-0.27, 0.62);
    a.lineTo(-0.27, -0.12);
    a.lineTo(-0.78, -0.12);
    a.closeSubpath();
    // The edge the wipe starts from, drawn as a bar behind the tail.
    a.addRect(QRectF(-0.8, 0.78, 1.6, 0.2));
    QTransform t;
    t.rotate(degrees);
    return t.map(a);
}

QPainterPath returnPath()
{
    // A U-turn: a thick arc from the right going over the top, ending in a head pointing left-down.
    QPainterPath outer;
    outer.moveTo(0.75, 0.85);
    outer.lineTo(0.75, -0.05);
    outer.arcTo(QRectF(-0.45, -0.85, 1.2, 1.2), 0, 180);
    outer.lineTo(-0.45, 0.6);
    QPainterPathStroker stroker;
    stroker.setWidth(0.3);
    stroker.setCapStyle(Qt::FlatCap);
    stroker.setJoinStyle(Qt::RoundJoin);
    QPainterPath body = stroker.createStroke(outer);
    QPainterPath head;
    head.moveTo(-0.9, 0.28);
    head.lineTo(0.0, 0.28);
    head.lineTo(-0.45, 0.98);
    head.closeSubpath();
    return body.united(head).simplified();
}

QPainterPath gearPath()
{
    QPainterPath gear;
    const int teeth = 8;
    QPolygonF poly;
    for (int i = 0; i < teeth * 4; ++i) {
        const qreal a = (i / qreal(teeth * 4)) * 2 * M_PI - M_PI / 2;
        const qreal r = (i % 4 == 0 || i % 4 == 1) ? 1.0 : 0.74;
        poly << QPointF(qCos(a) * r, qSin(a) * r);
    }
    gear.addPolygon(poly);
    gear.closeSubpath();
    QPainterPath hole;
    hole.addEllipse(QPointF(0, 0), 0.34, 0.34);
    return gear.subtracted(hole);
}

QPainterPath crossPath()
{
    QPainterPath x;
    x.moveTo(-1, -1);
    x.lineTo(1, 1);
    x.moveTo(1, -1);
    x.lineTo(-1, 1);
    QPainterPathStroker s;
    s.setWidth(0.32);
    s.setCapStyle(Qt::RoundCap);
    return s.createStroke(x).simplified();
}

bool glyphPath(const QString &name, QPainterPath *path)
{
    if (name == QLatin1String("up"))
        *path = arrowPath(0);
    else if (name == QLatin1String("right"))
        *path = arrowPath(90);
    else if (name == QLatin1String("down"))
        *path = arrowPath(180);
    else if (name == QLatin1String("left"))
        *path = arrowPath(270);
    else if (name == QLatin1String("return"))
        *path = returnPath();
    else if (name == QLatin1String("set"))
        *path = gearPath();
    else if (name == QLatin1String("close"))
        *path = crossPath();
    else if (name == QLatin1String("min")) {
        path->addRoundedRect(QRectF(-1, 0.55, 2, 0.34), 0.1, 0.1);
    } else if (name == QLatin1String("max")) {
        QPainterPath frame;
        frame.addRect(QRectF(-1, -1, 2, 2));
        QPainterPath inner;
        inner.addRect(QRectF(-0.78, -0.5, 1.56, 1.28));
        *path = frame.subtracted(inner);
    } else {
        return false;
    }
    return true;
}

// Scales a glyph from the unit box into a square of side `side` centred at `centre`.
QPainterPath placeGlyph(const QPainterPath &glyph, const QPointF &centre, qreal side)
{
    QTransform t;
    t.translate(centre.x(), centre.y());
    t.scale(side / 2, side / 2);
    return t.map(glyph);
}

bool paintKey(QPainter &p, const ImageEntry &e, QString *error)
{
    KeyScheme s;
    if (!keyScheme(e.scheme, &s)) {
        *error = QStringLiteral("key scheme must be white, red or green");
        return false;
    }
    const qreal w = e.size.width(), h = e.size.height(), u = qMin(w, h);
    // The hole in the front plate the key sits in.
    const QRectF well(u * 0.03, u * 0.03, w - u * 0.06, h - u * 0.06);
    const qreal r = u * 0.17;
    QLinearGradient wellFill(well.topLeft(), well.bottomLeft());
    wellFill.setColorAt(0, QColor("#0f0f0f"));
    wellFill.setColorAt(1, QColor("#2c2c2c"));
    p.setPen(Qt::NoPen);
    p.setBrush(wellFill);
    p.drawRoundedRect(well, r, r);
    if (s.glow.isValid()) {
        QRadialGradient g(well.center(), qMax(w, h) * 0.62);
        QColor c = s.glow;
        c.setAlpha(200);
        g.setColorAt(0.45, c);
        c.setAlpha(0);
        g.setColorAt(1, c);
        p.setBrush(g);
        p.drawRoundedRect(well, r, r);
    }

    const QRectF cap = well.adjusted(u * 0.08, u * 0.06, -u * 0.08, -u * 0.11);
    const qreal rc = r * 0.75;
    // Side of the cap shows below the face, so the key reads as raised.
    p.setBrush(s.rim);
    p.drawRoundedRect(cap.translated(0, u * 0.045), rc, rc);
    QLinearGradient face(cap.topLeft(), cap.bottomLeft());
    face.setColorAt(0, s.top);
    face.setColorAt(0.5, s.mid);
    face.setColorAt(1, s.bottom);
    p.setBrush(face);
    p.setPen(QPen(s.rim, qMax(1.0, u * 0.012)));
    p.drawRoundedRect(cap, rc, rc);
    QLinearGradient gloss(cap.topLeft(), QPointF(cap.left(), cap.center().y()));
    gloss.setColorAt(0, QColor(255, 255, 255, 120));
    gloss.setColorAt(1, QColor(255, 255, 255, 0));
    p.setPen(Qt::NoPen);
    p.setBrush(gloss);
    p.drawRoundedRect(cap.adjusted(u * 0.03, u * 0.025, -u * 0.03, -cap.height() * 0.5), rc * 0.7, rc * 0.7);

    if (e.legend.startsWith(QLatin1Char('@'))) {
        QPainterPath g;
        if (!glyphPath(e.legend.mid(1), &g)) {
            *error = QStringLiteral("unknown glyph %1").arg(e.legend);
            return false;
        }
        const QPainterPath placed = placeGlyph(g, cap.center(), qMin(cap.width(), cap.height()) * 0.56);
        p.fillPath(placed.translated(0, qMax(1.0, u / 40)), s.emboss);
        p.fillPath(placed, s.text);
    } else if (!e.legend.isEmpty()) {
        drawText(p, cap, e.legend.split(QLatin1Char('|')), 0.42, s.text, s.emboss);
    }
    return true;
}

bool paintIcon(QPainter &p, const ImageEntry &e, QString *error)
{
    QPainterPath g;
    if (!glyphPath(e.legend, &g)) {
        *error = QStringLiteral("unknown icon glyph \"%1\"").arg(e.legend);
        return false;
    }
    QColor fill("#d8d8d8");
    if (e.scheme == QLatin1String("red"))
        fill = QColor("#f0503a");
    const qreal side = qMin(e.size.width(), e.size.height()) * 0.56;
    const QPainterPath placed = placeGlyph(g, QRectF(QPointF(0, 0), e.size).center(), side);
    // Title-bar keys turn white on hover; a dark outline keeps the glyph visible then.
    p.setPen(QPen(QColor(20, 20, 20, 220), qMax(1.5, side / 10), Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p.setBrush(fill);
    p.drawPath(placed);
    return true;
}

// The KOVA mark: a dark tile holding one red and one green lamp over a fader slot.
void paintMark(QPainter &p, const QRectF &tile)
{
    const qreal u = tile.width();
    QLinearGradient bg(tile.topLeft(), tile.bottomLeft());
    bg.setColorAt(0, QColor("#4a4a4a"));
    bg.setColorAt(1, QColor("#161616"));
    p.setPen(QPen(QColor("#7a7a7a"), qMax(1.0, u * 0.025)));
    p.setBrush(bg);
    p.drawRoundedRect(tile.adjusted(u * 0.02, u * 0.02, -u * 0.02, -u * 0.02), u * 0.2, u * 0.2);
    p.setPen(Qt::NoPen);
    const qreal k = u * 0.26;
    const QColor lamps[] = {QColor("#ff4a2e"), QColor("#4ee03a"), QColor("#d8d8d5")};
    for (int i = 0; i < 3; ++i) {
        const QRectF key(tile.left() + u * 0.1 + i * (k + u * 0.03), tile.top() + u * 0.16, k, k);
        QLinearGradient f(key.topLeft(), key.bottomLeft());
        f.setColorAt(0, lamps[i].lighter(135));
        f.setColorAt(1, lamps[i].darker(140));
        p.setBrush(f);
        p.drawRoundedRect(key, k * 0.22, k * 0.22);
    }
    const QRectF slot(tile.left() + u * 0.12, tile.top() + u * 0.64, u * 0.76, u * 0.08);
    p.setBrush(QColor("#0a0a0a"));
    p.drawRoundedRect(slot, slot.height() / 2, slot.height() / 2);
    const QRectF handle(tile.left() + u * 0.56, tile.top() + u * 0.55, u * 0.12, u * 0.26);
    QLinearGradient hf(handle.topLeft(), handle.topRight());
    hf.setColorAt(0, QColor("#f0f0f0"));
    hf.setColorAt(1, QColor("#8a8a8a"));
    p.setBrush(hf);
    p.drawRoundedRect(handle, u * 0.03, u * 0.03);
}

bool paintLogo(QPainter &p, const ImageEntry &e, QString *)
{
    const qreal w = e.size.width(), h = e.size.height();
    const QRectF tile(h * 0.06, h * 0.06, h * 0.88, h * 0.88);
    paintMark(p, tile);
    const QRectF text(tile.right() + h * 0.3, 0, w - tile.right() - h * 0.35, h);
    const bool tagline = !e.legend.isEmpty();
    QFont f = legendFont(h * (tagline ? 0.5 : 0.7));
    f.setLetterSpacing(QFont::PercentageSpacing, 112);
    const QFontMetricsF fm(f);
    const qreal base = tagline ? h * 0.56 : (h + fm.capHeight()) / 2;
    QPainterPath word;
    word.addText(text.left(), base, f, QStringLiteral("KOVA"));
    QLinearGradient chrome(0, base - fm.capHeight(), 0, base);
    chrome.setColorAt(0, QColor("#ffffff"));
    chrome.setColorAt(1, QColor("#b9b9b9"));
    p.fillPath(word.translated(0, qMax(1.0, h / 30)), QColor(0, 0, 0, 160));
    p.fillPath(word, chrome);
    if (tagline) {
        QFont t = legendFont(h * 0.2);
        t.setBold(false);
        t.setLetterSpacing(QFont::PercentageSpacing, 120);
        QPainterPath line;
        line.addText(text.left() + h * 0.02, h * 0.86, t, e.legend);
        p.fillPath(line, QColor("#a8a8a8"));
    }
    return true;
}

bool paintAppIcon(QPainter &p, const ImageEntry &e, QString *)
{
    const qreal side = qMin(e.size.width(), e.size.height());
    paintMark(p, QRectF(0, 0, side, side));
    return true;
}

// Fader slot: a dark channel with scale marks both sides, stretched over the groove.
bool paintGroove(QPainter &p, const ImageEntry &e, QString *)
{
    const qreal w = e.size.width(), h = e.size.height();
    const qreal slotW = w * 0.14;
    const QRectF slot((w - slotW) / 2, h * 0.02, slotW, h * 0.96);
    p.setPen(Qt::NoPen);
    QLinearGradient f(slot.topLeft(), slot.topRight());
    f.setColorAt(0, QColor("#050505"));
    f.setColorAt(0.6, QColor("#1e1e1e"));
    f.setColorAt(1, QColor("#4a4a4a"));
    p.setBrush(f);
    p.drawRoundedRect(slot, slotW / 2, slotW / 2);
    const int marks = 11;
    for (int i = 0; i < marks; ++i) {
        const qreal y = slot.top() + slotW + (slot.height() - 2 * slotW) * i / (marks - 1);
        const bool major = i % 5 == 0;
        const qreal len = w * (major ? 0.22 : 0.14);
        p.setBrush(QColor(major ? "#bdbdbd" : "#8a8a8a"));
        const qreal t = qMax(1.0, h / 256);
        p.drawRect(QRectF(slot.left() - w * 0.05 - len, y - t / 2, len, t));
        p.drawRect(QRectF(slot.right() + w * 0.05, y - t / 2, len, t));
    }
    return true;
}

// Fader cap: grey, ridged, with the white index line across the middle.
bool paintHandle(QPainter &p, const ImageEntry &e, QString *)
{
    const qreal w = e.size.width(), h = e.size.height();
    const QRectF cap(w * 0.04, h * 0.06, w * 0.92, h * 0.86);
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(0, 0, 0, 150));
    p.drawRoundedRect(cap.translated(0, h * 0.06), h * 0.16, h * 0.16);
    QLinearGradient f(cap.topLeft(), cap.bottomLeft());
    f.setColorAt(0, QColor("#e6e6e6"));
    f.setColorAt(0.45, QColor("#9c9c9c"));
    f.setColorAt(0.55, QColor("#7c7c7c"));
    f.setColorAt(1, QColor("#3e3e3e"));
    p.setBrush(f);
    p.setPen(QPen(QColor("#202020"), qMax(1.0, h / 22)));
    p.drawRoundedRect(cap, h * 0.16, h * 0.16);
    p.setPen(Qt::NoPen);
    for (int i = -2; i <= 2; ++i) {
        if (i == 0)
            continue;
        const qreal y = cap.center().y() + i * cap.height() * 0.17;
        p.setBrush(QColor(0, 0, 0, 90));
        p.drawRect(QRectF(cap.left() + w * 0.06, y, cap.width() - w * 0.12, qMax(1.0, h / 22)));
    }
    p.setBrush(QColor("#ffffff"));
    p.drawRect(QRectF(cap.left() + w * 0.03, cap.center().y() - h * 0.045, cap.width() - w * 0.06, h * 0.09));
    return true;
}

// Push-button face stretched as a border image: "raised" at rest, "pressed" sunk.
bool paintTexture(QPainter &p, const ImageEntry &e, QString *error)
{
    const qreal w = e.size.width(), h = e.size.height();
    QLinearGradient f(0, 0, 0, h);
    if (e.scheme == QLatin1String("raised")) {
        f.setColorAt(0, QColor("#7a7a7a"));
        f.setColorAt(0.5, QColor("#595959"));
        f.setColorAt(1, QColor("#3a3a3a"));
    } else if (e.scheme == QLatin1String("pressed")) {
        f.setColorAt(0, QColor("#222222"));
        f.setColorAt(0.5, QColor("#343434"));
        f.setColorAt(1, QColor("#464646"));
    } else {
        *error = QStringLiteral("texture scheme must be raised or pressed");
        return false;
    }
    p.fillRect(QRectF(0, 0, w, h), f);
    const bool raised = e.scheme == QLatin1String("raised");
    p.fillRect(QRectF(0, 0, w, qMax(1.0, h / 25)), raised ? QColor(255, 255, 255, 90) : QColor(0, 0, 0, 120));
    p.fillRect(QRectF(0, h - qMax(1.0, h / 25), w, qMax(1.0, h / 25)),
               raised ? QColor(0, 0, 0, 120) : QColor(255, 255, 255, 40));
    return true;
}

// Thin vertical separator: a light ridge between two dark edges, fading at both ends.
bool paintDivider(QPainter &p, const ImageEntry &e, QString *)
{
    const qreal w = e.size.width(), h = e.size.height();
    QLinearGradient across(0, 0, w, 0);
    across.setColorAt(0, QColor("#151515"));
    across.setColorAt(0.5, QColor("#8c8c8c"));
    across.setColorAt(1, QColor("#151515"));
    p.fillRect(QRectF(0, 0, w, h), across);
    QLinearGradient fade(0, 0, 0, h);
    fade.setColorAt(0, QColor(58, 58, 58, 255));
    fade.setColorAt(0.12, QColor(58, 58, 58, 0));
    fade.setColorAt(0.88, QColor(58, 58, 58, 0));
    fade.setColorAt(1, QColor(58, 58, 58, 255));
    p.fillRect(QRectF(0, 0, w, h), fade);
    return true;
}

// Bottom strip of the panel: brushed dark band with a lit top edge.
bool paintStrip(QPainter &p, const ImageEntry &e, QString *)
{
    const qreal w = e.size.width(), h = e.size.height();
    QLinearGradient f(0, 0, 0, h);
    f.setColorAt(0, QColor("#3c3c3c"));
    f.setColorAt(0.15, QColor("#2a2a2a"));
    f.setColorAt(1, QColor("#141414"));
    p.fillRect(QRectF(0, 0, w, h), f);
    p.fillRect(QRectF(0, 0, w, qMax(1.0, h / 24)), QColor("#787878"));
    // A faint accent line in the lamp colours, like the trim on the unit's front.
    QLinearGradient accent(0, 0, w, 0);
    accent.setColorAt(0, QColor(242, 59, 34, 0));
    accent.setColorAt(0.3, QColor(242, 59, 34, 140));
    accent.setColorAt(0.7, QColor(69, 207, 51, 140));
    accent.setColorAt(1, QColor(69, 207, 51, 0));
    p.fillRect(QRectF(0, h - qMax(1.0, h / 16), w, qMax(1.0, h / 16)), accent);
    return true;
}

} // namespace

QImage Artwork::paint(const ImageEntry &entry, QString *error, int scale)
{
    QImage image(entry.size * scale, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    bool ok = false;
    {
        QPainter p(&image);
        // The painters draw in the entry's own size; the transform gives the pixels.
        p.scale(scale, scale);
        p.setRenderHint(QPainter::Antialiasing);
        p.setRenderHint(QPainter::TextAntialiasing);
        p.setRenderHint(QPainter::SmoothPixmapTransform);
        const QString &k = entry.kind;
        if (k == QLatin1String("key"))
            ok = paintKey(p, entry, error);
        else if (k == QLatin1String("icon"))
            ok = paintIcon(p, entry, error);
        else if (k == QLatin1String("logo"))
            ok = paintLogo(p, entry, error);
        else if (k == QLatin1String("appicon"))
            ok = paintAppIcon(p, entry, error);
        else if (k == QLatin1String("groove"))
            ok = paintGroove(p, entry, error);
        else if (k == QLatin1String("handle"))
            ok = paintHandle(p, entry, error);
        else if (k == QLatin1String("texture"))
            ok = paintTexture(p, entry, error);
        else if (k == QLatin1String("divider"))
            ok = paintDivider(p, entry, error);
        else if (k == QLatin1String("strip"))
            ok = paintStrip(p, entry, error);
        else
            *error = QStringLiteral("unknown kind %1").arg(k);
    }
    if (!ok)
        return QImage();
    if (entry.format() == QLatin1String("bmp")) {
        QImage opaque(image.size(), QImage::Format_RGB32);
        opaque.fill(panelColour());
        QPainter p(&opaque);
        p.drawImage(0, 0, image);
        p.end();
        return opaque;
    }
    return image;
}
