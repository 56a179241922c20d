#pragma once

#include <cstdint>

class AudioChannels;
class AudioModeKey;
class FrontPanel8000;
class InsetKeys;
class QByteArray;

// The part of the unit's state report every 8000-series panel shows alike: the buses, the
// transition and the wipe (`wipeType` reads the unit's wipe code), the audio mode, CH1 and CH2,
// and whether PIP is on. Nothing is sent.
void showSharedReport(const QByteArray &data, int (*wipeType)(uint8_t reported), FrontPanel8000 *front,
                      AudioModeKey *audioMode, AudioChannels *audio, InsetKeys *insets);
