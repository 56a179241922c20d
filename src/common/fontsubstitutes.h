#pragma once

// Gives the font families that the panels' style sheets name but Debian does not ship an
// installed stand-in that fits the fixed labels they are set on. Safe to call again; must
// run after the application object exists and before those labels are laid out.
void registerFontSubstitutes();
