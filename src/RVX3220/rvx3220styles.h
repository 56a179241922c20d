#pragma once

// Looks and fixed texts of the RVX3220 panel, kept verbatim in one place.
namespace RVX3220Styles {

// Panel frame.
inline constexpr char Window[] = "background-color: rgb(58, 58,58);";
inline constexpr char WindowTitle[] = "KOVA";
inline constexpr char ModelText[] = "HD VIDEO <br/>SWITCHER";
inline constexpr char ModelLabel[] = "font: 20pt Adobe 黑体 Std R;color:#fffffb;";
inline constexpr char VersionText[] = "V1.0.0";
inline constexpr char VersionLabel[] = "color:white";
inline constexpr char DividerShown[] = "QLabel{border-image: url(:/images/StyleSheet/limit.png);}";
inline constexpr char DividerHidden[] = "QLabel {background-color: transparent;}";
inline constexpr char TbarGroove[] =
    "QSlider::groove:vertical{border-image: url(:/images/StyleSheet/vsliderbg.png);width: 40px;}";
inline constexpr char TbarHandle[] =
    "QSlider::handle{ height: 90px;image: url(:/images/StyleSheet/vslider.png);}";
inline constexpr char SettingsButton[] = "QPushButton{border-image: url(:/images/StyleSheet/set.png);}";
inline constexpr char ReturnButton[] = "QPushButton{border-image: url(:/images/StyleSheet/return.png);}";

// Lamp pictures of the frame's own keys.
inline constexpr char CutLit[] = ":/images/red/CUT.bmp";
inline constexpr char CutUnlit[] = ":/images/white/CUT.bmp";
inline constexpr char AutoLit[] = ":/images/red/AUTO.bmp";
inline constexpr char AutoUnlit[] = ":/images/white/AUTO.bmp";
inline constexpr char PipLit[] = ":/images/red/PIP.bmp";
inline constexpr char PipUnlit[] = ":/images/white/PIP.bmp";
inline constexpr char PopLit[] = ":/images/red/POP.bmp";
inline constexpr char PopUnlit[] = ":/images/white/POP.bmp";

// Bus keys 1..6: unlit, lit on the program bus, lit on the preview bus.
inline constexpr const char *BusUnlit[6] = {":/images/white/1.bmp", ":/images/white/2.bmp",
                                            ":/images/white/3.bmp", ":/images/white/4.bmp",
                                            ":/images/white/5.bmp", ":/images/white/6.bmp"};
inline constexpr const char *PgmLit[6] = {":/images/red/1.bmp", ":/images/red/2.bmp", ":/images/red/3.bmp",
                                          ":/images/red/4.bmp", ":/images/red/5.bmp", ":/images/red/6.bmp"};
inline constexpr const char *PvwLit[6] = {":/images/green/1.bmp", ":/images/green/2.bmp",
                                          ":/images/green/3.bmp", ":/images/green/4.bmp",
                                          ":/images/green/5.bmp", ":/images/green/6.bmp"};

// Effect keys MIX, FADE, Up, Down, Left, Right. The wipe pictures are cased differently
// lit and unlit; the names are the resources' own.
inline constexpr const char *EffectNames[6] = {"MIX", "FADE", "Up", "Down", "Left", "Right"};
inline constexpr const char *EffectLit[6] = {":/images/green/MIX.bmp",  ":/images/green/FADE.bmp",
                                             ":/images/green/UP.bmp",   ":/images/green/DOWN.bmp",
                                             ":/images/green/LEFT.bmp", ":/images/green/Right.bmp"};
inline constexpr const char *EffectUnlit[6] = {":/images/white/MIX.bmp",  ":/images/white/FADE.bmp",
                                               ":/images/white/up.bmp",   ":/images/white/down.bmp",
                                               ":/images/white/Left.bmp", ":/images/white/Right.bmp"};

// Audio mode keys.
inline constexpr char AfvLit[] = ":/images/green/AFV.bmp";
inline constexpr char AfvUnlit[] = ":/images/white/AFV.bmp";
inline constexpr char MixLit[] = ":/images/green/MIX.bmp";
inline constexpr char MixUnlit[] = ":/images/white/MIX.bmp";
inline constexpr char ModeFollow[] = "Follow";
inline constexpr char ModeMixing[] = "Mixing";

// Audio pane texts and lists.
inline constexpr char AudioTitle[] = "AUDIO";
inline constexpr char Ch1VolCaption[] = "CH1_VOL";
inline constexpr char Ch2VolCaption[] = "CH2_VOL";
inline constexpr char AudioModeCaption[] = "Audio Mode";
inline constexpr char PgmOutCaption[] = "PGM Out";
inline constexpr const char *AudioSources[8] = {"Phone_IN", "RCA_IN", "IN1", "IN2",
                                                "IN3",      "IN4",    "IN5", "IN6"};
inline constexpr const char *OutputFormats[7] = {"1080p60", "1080p50", "1080I60", "1080I50",
                                                 "1080p30", "1080p25", "1080p24"};

// PIP and POP panes.
inline constexpr char PipTitle[] = "PIP";
inline constexpr char PopTitle[] = "POP";
inline constexpr char PopSize[] = "Large";
inline constexpr char Placeholder[] = "---";
inline constexpr char BorderOn[] = "On";
inline constexpr char BorderOff[] = "Off";

// Warnings. Both volume boxes name channel 1; the second one's text is the unit's own.
inline constexpr char WarningTitle[] = "Warning";
inline constexpr char ChooseCh1Source[] = "please choose CH1 source";
inline constexpr char ChooseWindowSource[] = "please choose Window source";
inline constexpr char TextEmpty[] = "Text cannot be empty";

// IP dialog.
inline constexpr char IpCaption[] = "IP addr";
inline constexpr char IpClose[] = "close";
inline constexpr char IpOk[] = "ok";
inline constexpr char IpNone[] = "0.0.0.0";

// Title bar.
inline constexpr char TitleBar[] =
    "QWidget{background:qlineargradient(spread:pad,x1:0,y1:0,x2:0,y2:1,stop:0 #4e4e4e,stop:1 #535353);}";
inline constexpr char TitleLogo[] = "QLabel{border-image: url(:/images/StyleSheet/devlog_1.png);}";
inline constexpr char TitleClose[] = "QPushButton{border-image: url(:/images/StyleSheet/close.png);}";

// Decoration of the family's controls.
inline constexpr char Caption[] =
    "QLabel{color: rgb(230, 230, 230);background: transparent;font-size: 13px;}";
inline constexpr char GroupBox[] = "QGroupBox{border-radius:8px;border:2px solid rgb(83, 83, 83);"
                                   "background-color: rgb(66, 66, 66);color: rgb(230, 230, 230);"
                                   "margin-top: 12px;}"
                                   "QGroupBox::title{subcontrol-origin: margin;left: 12px;padding: 0 4px;}";
inline constexpr char ComboBox[] =
    "QComboBox{color: rgb(230, 230, 230);border:1px solid rgb(40, 40, 40);border-radius:3px;padding-left:4px;"
    "background:qlineargradient(spread:pad,x1:0,y1:0,x2:0,y2:1,stop:0 #6a6a6a,stop:1 #474747);}"
    "QComboBox QAbstractItemView{color: rgb(230, 230, 230);background-color: rgb(70, 70, 70);"
    "selection-background-color: rgb(100, 100, 100);}";
inline constexpr char SpinBox[] =
    "QSpinBox{color: rgb(230, 230, 230);background-color: rgb(80, 80, 80);border:1px solid rgb(40, 40, 40);"
    "border-radius:3px;padding-left:4px;}";
inline constexpr char TextButton[] =
    "QPushButton{color:rgb(200,200,200);border-image: url(:/images/StyleSheet/button.png);}"
    "QPushButton:pressed{border-image: url(:/images/StyleSheet/btn.bmp);}";
inline constexpr char LineEdit[] =
    "QLineEdit{color: rgb(230, 230, 230);background-color: rgb(80, 80, 80);border:1px solid rgb(40, 40, 40);"
    "border-radius:3px;padding-left:4px;}";

} // namespace RVX3220Styles
