#pragma once

// The title strip of the frameless panels: the RVX3210 family's and the 8000 series' strips
// show the same logo, model-name text and window keys, so the texts live here once.
namespace TitleBarStyles {

inline constexpr char Logo[] = "image: url(:/images/StyleSheet/devlog.png);";
inline constexpr char ModelName[] = "color: white;font-size:28px;";
inline constexpr char CloseKey[] =
    "QPushButton{image: url(:/images/StyleSheet/close.png);color: "
    "white;border-radius:0px;}QPushButton:hover{background-color:white; color: black;}";
inline constexpr char MinKey[] =
    "QPushButton{image: url(:/images/StyleSheet/min.png);color: "
    "white;border-radius:0px;}QPushButton:hover{background-color:white; color: black;}";
inline constexpr char MaxKey[] =
    "QPushButton{image: url(:/images/StyleSheet/max.png);color: "
    "white;border-radius:0px;}QPushButton:hover{background-color:white; color: black;}";

} // namespace TitleBarStyles
