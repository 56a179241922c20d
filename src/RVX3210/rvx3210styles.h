#pragma once

// Looks and fixed texts of the RVX3210 panel and the pieces the RVX3410 panel borrows from it,
// kept verbatim in one place. Resource paths are written out whole, odd slashes included:
// they are the paths the unit's own software used.
namespace Rvx3210Styles {

// ---- panel frame ----
inline constexpr char WindowTitle[] = "KOVA";
inline constexpr char WindowIcon[] = ":/images/StyleSheet/DEVapplication.png";
inline constexpr char DialogName[] = "dialog";
inline constexpr char Dialog[] = "QDialog#dialog{background-color:rgb(8,8,8);}";
inline constexpr char Splitter[] =
    "QSplitter::handle:Horizontal{width:1px;border-image:url(:/images/StyleSheet/"
    "limit.png);}QSplitter{background-color:rgb(58,58,58);}";

// ---- title bar ----
inline constexpr char TopStrip[] = "QWidget{background:qlineargradient(spread:pad,x1:0,y1:0,x2:0,y2:1,stop:0 "
                                   "#4e4e4e,stop:1 #2b2b2b);}";
inline constexpr char ModelRVX3210[] = "RVX3210";
inline constexpr char ModelRVX3220[] = "RVX3220";
inline constexpr char ModelRVX3210P[] = "RVX3210P";

// ---- common row background ----
inline constexpr char RowBackground[] = "QWidget{background-color:rgb(58,58,58);}";
inline constexpr char MiddleBackground[] = "QWidget{background-color:rgb(58,58,58);};";
inline constexpr char Caption[] = "color:white;border:0px;";

// ---- upper row ----
inline constexpr char F1Off[] = "QPushButton{image:url(:/images/white/F1.bmp);}";
inline constexpr char F1On[] = "QPushButton{image:url(:/images/green/F1.bmp);}";
inline constexpr char F2Off[] = "QPushButton{image:url(:/images/white/F2.bmp);}";
inline constexpr char F2On[] = "QPushButton{image:url(:/images/green/F2.bmp);}";
inline constexpr char F3Off[] = "QPushButton{image:url(:/images/white/F3.bmp);}";
inline constexpr char F3On[] = "QPushButton{image:url(:/images/green/F3.bmp);}";
inline constexpr char F7Off[] = "QPushButton{image:url(:/images/white/F7.bmp);}";
inline constexpr char F7On[] = "QPushButton{image:url(:/images/green/F7.bmp);}";
inline constexpr char FTBOff[] = "QPushButton{image:url(:/images/white/FTB.bmp);}";
inline constexpr char FTBOn[] = "QPushButton{image:url(:/images/red/FTB.bmp);}";
inline constexpr char ReadState[] = "QPushButton{image: url(:/images/StyleSheet/DS.bmp);}";
inline constexpr char Return[] = "QPushButton{image:url(:/images/StyleSheet/return.bmp);}";
inline constexpr int FtbBlinkMs = 400;
inline constexpr int F2FlashMs = 200;

// Output format list of the F1 dialog.
inline constexpr char PgmOutLabel[] = "PGM Out";
inline constexpr const char *PgmOutItems[] = {"1080P60", "1080P50", "1080I60", "1080I50",
                                              "1080P30", "1080P25", "1080P24"};
inline constexpr char SubDialogName[] = "_dlog";
inline constexpr char F1Dialog[] =
    "QDialog#_dlog{background-color:rgb(58,58,58);border:2px solid rgb(83, 83,83);border-radius:5px;};";

// ---- middle row ----
inline constexpr char AfvOff[] = "QPushButton{image: url(:/images/white/AFV.bmp)}";
inline constexpr char AfvOn[] = "QPushButton{image: url(:/images/green/AFV.bmp)}";
inline constexpr char MixOff[] = "QPushButton{image: url(:/images/white/MIX.bmp)}";
inline constexpr char MixOn[] = "QPushButton{image: url(:/images/green/MIX.bmp)}";
inline constexpr char FadeOff[] = "QPushButton{image: url(:/images/white/FADE.bmp)}";
inline constexpr char FadeOn[] = "QPushButton{image: url(:/images/green/FADE.bmp)}";
inline constexpr char UpOff[] = "QPushButton{image: url(:/images/white/UP.bmp)}";
inline constexpr char UpOn[] = "QPushButton{image: url(:/images/green/UP.bmp)}";
inline constexpr char DownOff[] = "QPushButton{image: url(:/images/white/DOWN.bmp)}";
inline constexpr char DownOn[] = "QPushButton{image: url(:/images/green/DOWN.bmp)}";
inline constexpr char LeftOff[] = "QPushButton{image: url(:/images/white/LEFT.bmp)}";
inline constexpr char LeftOn[] = "QPushButton{image: url(:/images/green/LEFT.bmp)}";
inline constexpr char RightOff[] = "QPushButton{image: url(:/images/white/RIGHT.bmp)}";
inline constexpr char RightOn[] = "QPushButton{image: url(:/images/green/RIGHT.bmp)}";
inline constexpr char PipOff[] = "QPushButton{image: url(:/images/white/PIP.bmp)}";
inline constexpr char PipOn[] = "QPushButton{image: url(:/images/green/PIP.bmp)}";
inline constexpr char StillOff[] = "QPushButton{image: url(:/images/white/STILL.bmp)}";
inline constexpr char StillOn[] = "QPushButton{image: url(:/images/green/STILL.bmp)}";
inline constexpr const char *SourceItems[] = {"PHONE_IN", "IN1", "IN2", "IN3", "IN4", "MIC_IN1", "MIC_IN2"};
inline constexpr char Ch1[] = "CH1";
inline constexpr char Ch2[] = "CH2";
inline constexpr char Ch1Vol[] = "CH1_VOL";
inline constexpr char Ch2Vol[] = "CH2_VOL";
inline constexpr char AudioHead[] = "AUDIO";
inline constexpr char TransitionsHead[] = "TRANSITIONS";
inline constexpr char FuncHead[] = "FUNC";
inline constexpr char SectionHead[] = "color:white;font-weight:bold;border:0px;";
inline constexpr char Inputs[] =
    "QComboBox,QSpinBox,QLineEdit{color:white;background-color:rgb(83,83,83);border:1px "
    "solid rgb(100,100,100);border-radius:3px;padding:1px 4px;}QComboBox "
    "QAbstractItemView{color:white;background-color:rgb(83,83,83);}QComboBox:disabled,"
    "QSpinBox:disabled{color:rgb(140,140,140);}";

// ---- warnings ----
inline constexpr char WarningTitle[] = "Warning";
// The CH2 volume check shows the CH1 text too; that is what operators know, so it stays.
inline constexpr char ChooseCh1Source[] = "please choose CH1 source";
inline constexpr char TextEmpty[] = "Text cannot be empty";
inline constexpr char OtherNameErrors[] = "OtherName Text Errors";
inline constexpr char UrlErrors[] = "Url Text Errors";

// ---- lower row ----
inline constexpr char BaseGrey[] =
    "QPushButton{background-color:rgb(58,58,58);border-radius:5px;}QPushButton:hover{"
    "background-color:rgb(189,189,189);}QPushButton:pressed{background-color:rgb(100,"
    "100,100);}";
inline constexpr char BaseRed[] =
    "QPushButton{background-color:rgb(58,58,58);border-radius:5px;}QPushButton:hover{"
    "background-color:rgb(229,97,97);}QPushButton:pressed{background-color:rgb(205,5,5);"
    "}";
inline constexpr char BaseGreen[] =
    "QPushButton{background-color:rgb(58,58,58);border-radius:5px;}QPushButton:hover{"
    "background-color:rgb(41,129,36);}QPushButton:pressed{background-color:rgb(19,"
    "218,0);}";
// Bus buttons in the order of their ids 1, 2, 3, 4 and 9.
inline constexpr const char *PgmWhite[] = {":/images/white/png/1.png", ":/images/white/png/2.png",
                                           ":/images/white/png/3.png", ":/images/white/png/4.png",
                                           ":/images/white/BAR.bmp"};
inline constexpr const char *PgmRed[] = {":/images/red/png/1.png", ":/images/red/png/2.png",
                                         ":/images/red/png/3.png", ":/images/red/png/4.png",
                                         ":/images/red/BAR.bmp"};
inline constexpr const char *PvwGreen[] = {":/images/green//png/1.png", ":/images/green//png/2.png",
                                           ":/images/green/png/3.png", ":/images/green/png/4.png",
                                           ":/images/green/BAR.bmp"};
inline constexpr const char *RateWhite[] = {":/images/white/RATE1.bmp", ":/images/white/RATE2.bmp",
                                            ":/images/white/RATE3.bmp"};
inline constexpr const char *RateGreen[] = {":/images/green/RATE1.bmp", ":/images/green/RATE2.bmp",
                                            ":/images/green/RATE3.bmp"};
inline constexpr char CutOn[] = ":/images/red/CUT.bmp";
inline constexpr char CutOff[] = ":/images/white/CUT.bmp";
inline constexpr char AutoOn[] = ":/images/red/AUTO.bmp";
inline constexpr char AutoOff[] = ":/images/white/AUTO.bmp";
inline constexpr int CutLightMs = 300;
inline constexpr int AutoWaitMs = 900;
inline constexpr char PgmHead[] = "PGM";
inline constexpr char PvwHead[] = "PVW";

// ---- PIP settings pane ----
inline constexpr char PipPane[] = "background-color:rgb(58,58,58);";

// ---- network page ----
inline constexpr char BottomName[] = "bwidgt";
inline constexpr char Bottom[] = "QWidget#bwidgt{border-image: url(:/images/StyleSheet/bottom_label_2.png);}";
inline constexpr char Version[] = "V1.0.0";
inline constexpr char VersionStyle[] = "color:white";
inline constexpr char SetKey[] = "SET";
inline constexpr char SetDialog[] =
    "QDialog#_dlog{background-color:rgb(58,58,58);border:1px solid rgb(83, 83,83);border-radius:5px;};";
inline constexpr char SetDialogTitle[] = "SWITCHER IP";
inline constexpr char IpAddr[] = "IP ADDR";
inline constexpr char Subnet[] = "SUBNET";
inline constexpr char Gateway[] = "GATEWAY";
inline constexpr char Dns[] = "DNS";
inline constexpr char SetIp[] = "Set IP";
inline constexpr char ReadStaus[] = "Read Staus";
inline constexpr char SetDns[] = "Set DNS";
inline constexpr char Index[] = "Index";
inline constexpr char OtherName[] = "Other Name";
inline constexpr char Url[] = "URL";
inline constexpr char SetUrl[] = "Set Url";
inline constexpr char ReadUrl[] = "Read Url";
inline constexpr int UrlSlots = 5;
inline constexpr char DialogText[] =
    "QLabel{color:white;border:0px;}QGroupBox{color:white;border:1px solid "
    "rgb(83,83,83);border-radius:5px;margin-top:8px;padding:6px;}QGroupBox::title{"
    "subcontrol-origin:margin;left:8px;}QPushButton{color:white;background-color:rgb("
    "83,83,83);border:1px solid rgb(100,100,100);border-radius:3px;padding:3px "
    "10px;}QPushButton:hover{background-color:rgb(189,189,189);color:black;}";
inline constexpr char DialogTitleStyle[] = "color:white;font-size:18px;font-weight:bold;border:0px;";

// ---- audio faders ----
inline constexpr char FaderPane[] = "QWidget{background-color:rgb(58,58,58);};";
inline constexpr char Fader[] =
    "QSlider::groove:vertical {         border: 0px solid ;         border-image: "
    "url(:/images/StyleSheet/vsliderbg.png);       }       QSlider::handle:vertical {  "
    "       border-image: url(:/images/StyleSheet/vslider.png);         width: 81;       "
    "  height: 22px;       }";
inline constexpr char FaderCaption[] = "font-size:18px;font-weight:bold; color:rgb(255,255,255);";
inline constexpr char FaderCh1[] = "CH1";
inline constexpr char FaderCh2[] = "CH2";
inline constexpr char FaderMaster[] = "MASTER";

// ---- T-bar ----
inline constexpr char TbarTop[] = "A-BUS";
inline constexpr char TbarBottom[] = "B-BUS";

} // namespace Rvx3210Styles
