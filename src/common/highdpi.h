#pragma once

// Scales the windows by the screen's factor and draws pictures at its pixel ratio, so the
// panels keep their layout and stay sharp on high-DPI screens. Qt 6 always does both; Qt 5
// does when asked, before the application object is made.
void enableHighDpi();
