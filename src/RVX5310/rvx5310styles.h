#pragma once

#include "RVX8000/styles8000.h"

// Looks and texts of the RVX5310 panel, kept verbatim in one place.
namespace Rvx5310Styles {

using namespace Styles8000;

// The two sub-panels sit in frames drawn like the group boxes.
inline constexpr char SubPanelFrame[] = "QFrame#area_reso,QFrame#area_pip{border:2px solid "
                                        "rgb(137,137,137);border-radius:15px}";
inline constexpr char Slider[] =
    "QSlider{background:transparent;}QSlider::groove:horizontal{background:rgb(45,152,255);height:4px;}"
    "QSlider::handle:horizontal{background:qlineargradient(x1:0,y1:0,x2:0,y2:1,stop:0 #dadbde,stop:1 "
    "#808080);width:14px;margin:-8px 0;border-radius:3px;}";
inline constexpr char RedSpaced[] = "color: red";
inline constexpr char GreenSpaced[] = "color: green";

} // namespace Rvx5310Styles
