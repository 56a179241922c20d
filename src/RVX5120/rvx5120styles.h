#pragma once

// The RVX5120 panel's own looks, kept verbatim in one place.
namespace Rvx5120Styles {

inline constexpr char WindowTitle[] = "KOVA";
inline constexpr char Window[] = "QWidget{background-color:rgb(32,32,32);border:0px solid white;}";
inline constexpr char UpperBox[] = "QGroupBox{border:2px solid red;}";
inline constexpr char AudioBox[] = "QGroupBox{border:1px solid green;}";
inline constexpr char VideoBox[] = "QGroupBox{border:1px solid red;}";
inline constexpr char Label[] = "color:white";
inline constexpr char Slider[] =
    "QSlider{background:transparent;padding-top:12px;padding-bottom:3px;min-width:25px;}"
    "QSlider::groove:vertical{background:rgb(45,152,255);width:4px;}";

} // namespace Rvx5120Styles
