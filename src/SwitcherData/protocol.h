#pragma once

#include <QByteArray>
#include <QString>
#include <cstdint>

// The switchers' vocabulary, held once for links, panels and tools: where each field of a
// state record sits, and the tables that turn list positions into the codes the units use.
// The emulator keeps its own independent copy on purpose, so a mistake here shows up as a
// disagreement instead of being shared by both ends.
namespace Protocol {

constexpr uint8_t CmdReadState = 0x49;
constexpr uint8_t CmdSetAddress = 0x05;
constexpr uint8_t CmdHisAddress = 0x24;
constexpr uint8_t CmdHisDns = 0x23;
constexpr uint8_t CmdReadUrl = 0x6A;
constexpr uint8_t CmdSetUrl = 0x67;
// Command codes, the same in every family that has the command. Where the families differ
// (the transition keys, the rate, the RVX3220's wipe) the family's link names its own.
namespace Cmd {
constexpr uint8_t Pgm = 0x80;
constexpr uint8_t Pvw = 0x81;
constexpr uint8_t Tbar = 0x82;
constexpr uint8_t Cut = 0x83;
constexpr uint8_t Auto = 0x84;
constexpr uint8_t Ftb = 0x85;
constexpr uint8_t Pip = 0x86;
constexpr uint8_t Stream = 0x87;
constexpr uint8_t WipePattern = 0x92;
constexpr uint8_t PipBorderEnable = 0x9D;
constexpr uint8_t PipBorderColor = 0x9E;
constexpr uint8_t PipBorderWidth = 0x9F;
constexpr uint8_t PipH = 0xA0;
constexpr uint8_t PipV = 0xA1;
constexpr uint8_t PipSize = 0xA2;
constexpr uint8_t Format = 0xA3;
constexpr uint8_t Pop = 0xA7;
constexpr uint8_t PopWindow = 0xA8;
constexpr uint8_t PopBorderEnable = 0xA9;
constexpr uint8_t PopBorderColor = 0xAA;
constexpr uint8_t PopBorderWidth = 0xAB;
constexpr uint8_t PopH = 0xAC;
constexpr uint8_t PopV = 0xAD;
constexpr uint8_t Rec = 0xB2;
constexpr uint8_t Levels = 0xB4;
constexpr uint8_t Level3220 = 0xB8; // the RVX3220's level: source code, then level
constexpr uint8_t Ch1Source = 0xB9;
constexpr uint8_t Ch2Source = 0xBA;
constexpr uint8_t Pause = 0xC5;
constexpr uint8_t AudioMix = 0xCB;
constexpr uint8_t AudioAfv = 0xCC;
constexpr uint8_t Still = 0xCD;
constexpr uint8_t Ch1Level = 0xCE;
constexpr uint8_t Ch2Level = 0xCF;
constexpr uint8_t F2 = 0xD0;
constexpr uint8_t F3 = 0xD4;
constexpr uint8_t Rotate = 0xD5;
constexpr uint8_t F7 = 0xD6;
} // namespace Cmd

// State replies are cut into pieces at this byte value ('#').
constexpr char StateSeparator = 0x23;

// Offsets of the state record of the RVX3210 and RVX3410 units (26 bytes) and of the 8000
// series (25 bytes; 22, 23 and 25 unused there). Positions are high byte first.
namespace State {
enum Offset : int
{
    Pgm = 0,
    Pvw = 1,
    AudioMode = 2, // 0 AFV, 1 MIX
    Ch1Source = 3,
    Ch1Level = 4,
    Ch2Source = 5,
    Ch2Level = 6,
    Transition = 7, // 1 mix, 2 fade, 4 wipe
    Wipe = 8,
    Ftb = 9,
    Pip = 10,
    PipBorderEnable = 11,
    PipBorderColor = 12,
    PipBorderWidth = 13,
    PipSize = 14,
    PipH = 15, // two bytes
    PipV = 17, // two bytes
    Still = 19,
    Rate = 20,
    Resolution = 21,
    RtdSource = 22,
    UvcValue = 23,
    Mute = 24, // the F3 setting
    Rotate = 25,
    // The RVX3410's record goes on with three bit fields.
    Recording = 26, // bits 3-4
    Streaming = 27, // bit 2
    Rotation = 28,  // bits 6-7
};
constexpr int Size3210 = 26;
constexpr int Size3410 = 29;
constexpr int Size5All = 25;
constexpr uint8_t RecordingMask = 0x18;
constexpr uint8_t StreamingMask = 0x04;
constexpr uint8_t RotationMask = 0xC0;
} // namespace State

// What the units take. The PIP size presets Small, Medium and Large are insets of 480 x 270,
// 640 x 360 and 960 x 540 inside 1920 x 1080; their top-left corner goes no further than this.
constexpr int PipSizeCount = 3;
constexpr int PipHMax[PipSizeCount] = {1440, 1280, 960};
constexpr int PipVMax[PipSizeCount] = {810, 720, 540};
constexpr int PipBorderColorCount = 4; // white, red, blue, green
constexpr int PipBorderWidthMin = 2;
constexpr int PipBorderWidthMax = 7;
// The audio faders' levels, and the T-bar's slider (the travel byte adds 128 for a
// transition's end: TravelMax). The RVX3220's lever stops at 126: its forward stroke
// travels 0-125, its return stroke 0-126, and it marks no end.
constexpr int AudioLevelMax = 127;
constexpr int TbarMax = 127;
constexpr int TravelMax = 128;
constexpr int Travel3220ForwardMax = 125;
constexpr int Travel3220BackMax = 126;
// The RVX3220's POP positions (its one POP size is the large inset), and the bars as bus
// input 9.
constexpr int Pop3220HMax = 960;
constexpr int Pop3220VMax = 540;
constexpr int BarInput = 9;
constexpr int RateKeys = 3;
// The per-channel level of the RVX3210 family and the RVX3220, in percent.
constexpr int LevelMax = 100;
constexpr int PopWindows = 2;
// The HIS board's streaming URL slots and the fields of each.
constexpr int UrlSlots = 5;
constexpr int UrlNameMax = 16;
constexpr int UrlMax = 768;
// The RVX3410's menu keys.
constexpr uint8_t MenuUp = 0x41;
constexpr uint8_t MenuDown = 0x42;
constexpr uint8_t MenuEnter = 0x6B;

// Output formats, by their position in every format list and cycle.
struct OutputFormat
{
    uint8_t code;
    const char *name;
};
constexpr OutputFormat OutputFormats[] = {
    {0x07, "1080P60"}, {0x0B, "1080P50"}, {0x09, "1080I60"}, {0x01, "1080I50"},
    {0x03, "1080P30"}, {0x0D, "1080P25"}, {0x05, "1080P24"},
};
constexpr int OutputFormatCount = int(sizeof(OutputFormats) / sizeof(OutputFormats[0]));
// List position of a reported format code, or -1 for a code outside the table.
int outputFormatIndex(uint8_t code);
// Format code of a list position, or -1 outside the table.
int outputFormatCode(int index);

// Audio sources of the CH1/CH2 lists by list position. The 8000 series and the RVX3210
// family share the first table; the RVX5350 lists only four sources.
struct AudioSource
{
    uint8_t code;
    const char *name;
};
constexpr AudioSource AudioSources[] = {
    {0x07, "AUX_IN"}, {0x03, "IN1"},     {0x04, "IN2"},     {0x05, "IN3"},
    {0x06, "IN4"},    {0x08, "MIC_IN1"}, {0x00, "MIC_IN2"},
};
constexpr AudioSource AudioSources5350[] = {
    {0x03, "IN1"}, {0x04, "IN2"}, {0x08, "MIC_IN1"}, {0x00, "MIC_IN2"}};
constexpr int AudioSourceCount = int(sizeof(AudioSources) / sizeof(AudioSources[0]));
constexpr int AudioSource5350Count = int(sizeof(AudioSources5350) / sizeof(AudioSources5350[0]));
// List position of a source code (-1 when the table has none), and the code of a position
// (-1 outside the table).
int audioSourceIndex(uint8_t code);
int audioSourceCode(int index);
int audioSource5350Index(uint8_t code);
int audioSource5350Code(int index);

// Wipe pattern bytes sent after SET_WIPE for transition types 3, 4, 5, 6 (U, D, L, R on the
// 8000 series). The families use different pattern codes for the same keys.
constexpr uint8_t WipePatterns3210[4] = {0x25, 0x29, 0x23, 0x27};
constexpr uint8_t WipePatterns5All[4] = {0x2A, 0x2E, 0x28, 0x2C};
// The 8000 series reports a wipe as its pattern code less 0x28: 0 L, 2 U, 4 R, 6 D. The
// RVX5350 reports its own order: 0 L, 1 R, 2 D, 3 U. Both give the transition type (3-6) of
// the direction, or 0 for a value outside the coding.
int wipeTypeFromReport(uint8_t reported);
int wipeTypeFromReport5350(uint8_t reported);

// The four octets of a dotted IPv4 text, first octet first; empty unless the text is
// exactly four numbers of 0-255, each one to three digits (what the panels' address
// fields let through).
QByteArray addressBytes(const QString &text);
// Dotted text of the four bytes at `at` (first octet first), or a null string when the
// bytes stop short.
QString dottedAt(const QByteArray &bytes, int at);

} // namespace Protocol
