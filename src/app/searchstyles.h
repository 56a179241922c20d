#pragma once

// The search window's own looks, kept verbatim in one place.
namespace SearchStyles {

inline constexpr char WindowIcon[] = ":/images/StyleSheet/DEVapplication.png";
inline constexpr char List[] =
    "QListWidget{background-color:rgb(100,100,100);border-radius:5px;border:2px solid rgb(83,83,83);}";
inline constexpr char Logo[] = "image: url(:/images/StyleSheet/devlog_1.png);";
inline constexpr char TitleBar[] =
    "QWidget{border-radius:8px;background:qlineargradient(spread:pad,x1:0,y1:0,x2:0,"
    "y2:1,stop:0 #4e4e4e,stop:1 #535353);}";
// The empty first colour component is how the unit's own software has it; kept as is.
inline constexpr char GroupBox[] =
    "QGroupBox{border-radius:5px;border:2px solid rgb(83, 83, 83);background-color: rgb(, 100, 100);}";
inline constexpr char PushButton[] =
    "QPushButton{color:rgb(200,200,200);border-image: url(:/images/StyleSheet/button.png);border:3px solid "
    "rgb(100, 100, 100)}QPushButton:pressed{border-image: url(:/images/StyleSheet/btn.bmp);border:3px solid "
    "rgb(83, 83,83);border-radius:15px};";

} // namespace SearchStyles
