#include "popsettings.h"

#include "emuframe.h"

bool PopSettings::apply(uint8_t command, const QByteArray &data)
{
    const uint8_t d0 = EmuFrame::byteAt(data, 0);
    const int word = d0 | (EmuFrame::byteAt(data, 1) << 8);
    switch (command) {
    case 0xA8:
        window = d0;
        break;
    case 0xA9:
        border = d0;
        break;
    case 0xAA:
        color = d0;
        break;
    case 0xAB:
        width = d0;
        break;
    case 0xAC:
        h = word;
        break;
    case 0xAD:
        v = word;
        break;
    default:
        return false;
    }
    return true;
}

QString PopSettings::describe(uint8_t command) const
{
    switch (command) {
    case 0xA8:
        return QStringLiteral("POP window %1").arg(window);
    case 0xA9:
        return QStringLiteral("POP border %1").arg(border);
    case 0xAA:
        return QStringLiteral("POP colour %1").arg(color);
    case 0xAB:
        return QStringLiteral("POP width %1").arg(width);
    case 0xAC:
        return QStringLiteral("POP H %1").arg(h);
    case 0xAD:
        return QStringLiteral("POP V %1").arg(v);
    default:
        return QString();
    }
}

void PopSettings::appendState(StateLines &lines) const
{
    auto num = [](int n) { return QString::number(n); };
    lines += StateLines{
        {"pop_window", num(window)}, {"pop_border", num(border)}, {"pop_color", num(color)},
        {"pop_width", num(width)},   {"pop_h", num(h)},           {"pop_v", num(v)},
    };
}
