#pragma once

// Looks and texts of the RVX5310 panel, kept verbatim in one place.
namespace Rvx5310Styles {

inline constexpr char WindowTitle[] = "KOVA";
inline constexpr char Window[] = "QWidget{background-color:rgb(32,30,32);border:0px solid white;}";
inline constexpr char GroupBox[] =
    "QGroupBox{font-size:18px;font-weight:bold;margin-top:2ex;color:#898989;border:2px solid "
    "rgb(137,137,137);border-radius:15px}QGroupBox::title{subcontrol-origin: margin;subcontrol-position:top "
    "centre;padding:3 3px;}";
// The two sub-panels sit in frames drawn like the group boxes.
inline constexpr char SubPanelFrame[] = "QFrame#area_reso,QFrame#area_pip{border:2px solid "
                                        "rgb(137,137,137);border-radius:15px}";
inline constexpr char Slider[] =
    "QSlider{background:transparent;}QSlider::groove:horizontal{background:rgb(45,152,255);height:4px;}"
    "QSlider::handle:horizontal{background:qlineargradient(x1:0,y1:0,x2:0,y2:1,stop:0 #dadbde,stop:1 "
    "#808080);width:14px;margin:-8px 0;border-radius:3px;}";
inline constexpr char Tbar[] =
    "QSlider::groove:vertical{background:rgb(45,152,255);width:4px;}QSlider::handle:vertical{background:"
    "qlineargradient(x1:0,y1:0,x2:0,y2:1,stop:0 #dadbde,stop:1 #808080);height:22px;margin:0 "
    "-14px;border-radius:"
    "4px;}";
inline constexpr char White[] = "color:white";
inline constexpr char Red[] = "color:red";
inline constexpr char RedSpaced[] = "color: red";
inline constexpr char Green[] = "color:green";
inline constexpr char GreenSpaced[] = "color: green";

} // namespace Rvx5310Styles
