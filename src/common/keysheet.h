#pragma once

#include <QString>
#include <QWidget>

// How a key of any family shows its lamp. The RVX3210 family paints the key's picture with
// `image:` over a family colour base, the RVX3220 stretches it over the whole face with
// `border-image:`, and the 8000 series colours the face with one of four gradients. Each
// composer writes its family's text exactly as the unit's own software had it.
namespace KeySheet {

// The composers and setLamp below take the named constants of the styles headers (a picture
// path, a base or whole sheet), never text made at run time: each sheet is composed once per
// process, kept under the constants' addresses, and handed out as that one string. A key
// shown the same look again then holds the very text it is compared with, so a state reply
// that re-asserts thirty looks makes no string and compares none of them character by
// character.

// "QPushButton{image:url(<picture>);}" followed by the base sheet (may be empty).
const QString &image(const char *picture, const char *base = "");

// "QPushButton{border-image: url(<picture>);}": the picture covers the whole key.
const QString &borderImage(const char *picture);

// A whole sheet constant as a string.
const QString &text(const char *sheet);

// The 8000 series' four key looks (QWidget sheets): unlit, red (program, active), green
// (preview, selected) and disabled. The doubled ";;" is part of the text.
inline constexpr char GradientOff[] =
    "background-color: qlineargradient(x1: 0, y1: 0, x2: 0, y2: 1,  stop: 0 #dadbde,stop: 0.4 #E4DBE8,stop: "
    "0.6 #f6f7fa,stop: 1 #D0D1D4);;color: rgb(0,0,0);border-radius: 7px;border: 2px groove "
    "gray;border-style: outset;";
inline constexpr char GradientRed[] =
    "background-color: qlineargradient(x1: 0, y1: 0, x2: 0, y2: 1,  stop: 0 #D22E00,stop: 0.4 #DC380A,stop: "
    "0.6 #EE4A1C,stop: 1 #C82400);;color: rgb(0,0,0);border-radius: 7px;border: 2px groove "
    "gray;border-style: outset;";
inline constexpr char GradientGreen[] =
    "background-color: qlineargradient(x1: 0, y1: 0, x2: 0, y2: 1,  stop: 0 #19FA00,stop: 0.4 #23FF0A,stop: "
    "0.6 #35FF12,stop: 1 #0FEB00);;color: rgb(0,0,0);border-radius: 7px;border: 2px groove "
    "gray;border-style: outset;";
inline constexpr char GradientDisabled[] =
    "background-color: qlineargradient(x1: 0, y1: 0, x2: 0, y2: 1,  stop: 0 #dadbde,stop: 0.4 #E4DBE8,stop: "
    "0.6 #808080,stop: 1 #D0D1D4);;color: rgb(0,0,0);border-radius: 7px;border: 2px groove "
    "gray;border-style: outset;";

} // namespace KeySheet

// Gives a key a new style sheet only when it differs from the one it has: Qt parses the text
// and repolishes the key (and all it holds) on every assignment, equal or not, and a state
// reply re-asserts some thirty sheets that mostly stay the same.
inline void setKeySheet(QWidget *key, const QString &sheet)
{
    if (key->styleSheet() != sheet)
        key->setStyleSheet(sheet);
}

// Lights or unlights a key with one of two sheets.
inline void setLamp(QWidget *key, bool lit, const QString &litSheet, const QString &unlitSheet)
{
    setKeySheet(key, lit ? litSheet : unlitSheet);
}

inline void setLamp(QWidget *key, bool lit, const char *litSheet, const char *unlitSheet)
{
    setKeySheet(key, KeySheet::text(lit ? litSheet : unlitSheet));
}
