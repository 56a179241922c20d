#pragma once

#include "RVX3210/rvx3210styles.h"

// Looks and fixed texts the RVX3410 panel adds to the ones it shares with the RVX3210 panel
// (Rvx3210Styles), kept verbatim in one place.
namespace Rvx3410Styles {

// ---- title bar ----
inline constexpr char ModelName[] = "RVX3410";

// ---- upper row ----
inline constexpr char F4Off[] =
    "QPushButton{image:url(:/images/white/F4.bmp);}QPushButton:hover{background-color:"
    "rgb(189,189,189);}";
inline constexpr char F4On[] =
    "QPushButton{image:url(:/images/red/F4.bmp);}QPushButton:hover{background-color:"
    "rgb(229,97,97);}";
inline constexpr char F5Off[] =
    "QPushButton{image:url(:/images/white/F5.bmp);}QPushButton:hover{background-color:"
    "rgb(189,189,189);}";
inline constexpr char F5On[] =
    "QPushButton{image:url(:/images/green/F5.bmp);}QPushButton:hover{background-color:"
    "rgb(41,129,36);}";
inline constexpr char F6Off[] =
    "QPushButton{image:url(:/images/white/F6.bmp);}QPushButton:hover{background-color:"
    "rgb(189,189,189);}";
inline constexpr char F6On[] =
    "QPushButton{image:url(:/images/green/F6.bmp);}QPushButton:hover{background-color:"
    "rgb(41,129,36);}";
inline constexpr char F8Off[] =
    "QPushButton{image:url(:/images/white/F8.bmp);}QPushButton:hover{background-color:"
    "rgb(189,189,189);}";
inline constexpr char F8On[] =
    "QPushButton{image:url(:/images/green/F8.bmp);}QPushButton:hover{background-color:"
    "rgb(41,129,36);}";

// Captions under F1-F6 and F8; F7 has none. The blank before RESO is part of the text.
inline constexpr char LabelF1[] = " RESO";
inline constexpr char LabelF2[] = "SOURCE";
inline constexpr char LabelF3[] = "MUTE";
inline constexpr char LabelF4[] = "REC";
inline constexpr char LabelF5[] = "PAUSE";
inline constexpr char LabelF6[] = "STREAM";
inline constexpr char LabelF8[] = "ROTATE";

inline constexpr int RecBlinkMs = 400;
// The unit is asked for its state once more this long after the panel opens.
inline constexpr int DelayedReadMs = 3000;

// ---- middle row: the unit's on-screen menu keys ----
inline constexpr char MenuUpOff[] = "QPushButton{image: url(:/images/white/Up.bmp)}";
inline constexpr char MenuUpOn[] = "QPushButton{image: url(:/images/green/Up.bmp)}";
inline constexpr char MenuDownOff[] = "QPushButton{image: url(:/images/white/Down.bmp)}";
inline constexpr char MenuDownOn[] = "QPushButton{image: url(:/images/green/Down.bmp)}";
inline constexpr char MenuKeyText[] = "MENU";
inline constexpr char MenuOff[] =
    "QPushButton{color:white;font-size:11px;font-weight:bold;background-color:rgb(83,83,83);border:"
    "2px solid rgb(120,120,120);border-radius:5px;}";
inline constexpr char MenuOn[] =
    "QPushButton{color:white;font-size:11px;font-weight:bold;background-color:rgb(41,129,36);border:"
    "2px solid rgb(19,218,0);border-radius:5px;}";

} // namespace Rvx3410Styles
