#pragma once

class AudioChannels;
class AudioModeKey;
class FrontPanel8000;
class InsetKeys;
class UnitState;

// The part of the unit's state report every 8000-series panel shows alike: the buses, the
// transition and the wipe, the audio mode, CH1 and CH2, and whether PIP is on. Nothing is sent.
void showSharedReport(const UnitState &s, FrontPanel8000 *front, AudioModeKey *audioMode,
                      AudioChannels *audio, InsetKeys *insets);
