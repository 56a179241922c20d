#pragma once

// Looks the 8000-series panels share, kept verbatim in one place; each panel's own styles
// header brings them into its namespace beside what only that panel has.
namespace Styles8000 {

inline constexpr char WindowTitle[] = "KOVA";
inline constexpr char Window[] = "QWidget{background-color:rgb(32,30,32);border:0px solid white;}";
inline constexpr char GroupBox[] =
    "QGroupBox{font-size:18px;font-weight:bold;margin-top:2ex;color:#898989;border:2px solid "
    "rgb(137,137,137);border-radius:15px}QGroupBox::title{subcontrol-origin: margin;subcontrol-position:top "
    "centre;padding:3 3px;}";
// The preview stands for the whole output picture; the box in it for the PIP window.
inline constexpr char PreviewArea[] =
    "QFrame#pip_area{background-color:rgb(12,12,14);border:1px solid rgb(137,137,137);}";
inline constexpr char PreviewBox[] = "QToolButton{background-color:rgb(59,115,160);border:1px solid white;}";
inline constexpr char Tbar[] =
    "QSlider::groove:vertical{background:rgb(45,152,255);width:4px;}QSlider::handle:vertical{background:"
    "qlineargradient(x1:0,y1:0,x2:0,y2:1,stop:0 #dadbde,stop:1 #808080);height:22px;margin:0 "
    "-14px;border-radius:"
    "4px;}";
inline constexpr char White[] = "color:white";
inline constexpr char Red[] = "color:red";
inline constexpr char Green[] = "color:green";

inline constexpr char SetName[] = "setWidget";
inline constexpr char SetTitle[] = "SET";
inline constexpr const char *PipSizeTexts[] = {"PIP_SZ:S", "PIP_SZ:M", "PIP_SZ:L"};

} // namespace Styles8000
