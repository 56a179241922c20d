#pragma once

#include "popsettings.h"
#include "recordbehaviour.h"

// An 8000-series unit (RVX5310, RVX5370, RVX5350). Its state record has the RVX3210 layout up
// to the output format and reports audio mute at byte 24, 25 bytes in all:
//   0 PGM, 1 PVW (1-4, 9 = bar; the RVX5350 has inputs 1 and 2 only), 2 AFV 0 / MIX 1,
//   3-6 CH1 source and level, CH2 source and level, 7 transition 1 mix, 2 fade, 4 wipe,
//   8 wipe direction, 9 FTB, 10 PIP, 11-14 PIP border enable, colour, width, size,
//   15-18 PIP H and V positions high byte first, 19 STILL, 20 rate 0-2, 21 output format
//   code, 22-23 zero, 24 mute.
// Wipe directions are reported as the pattern code less 0x28 (L 0, U 2, R 4, D 6); the RVX5350
// has its own coding (L 0, R 1, D 2, U 3). The output format arrives and is reported as the
// format's code (07 0b 09 01 03 0d 05). PIP positions are kept inside the range of the PIP size.
//
// The state reply (0x49) comes in two forms, cut by the receiver at 0x23:
//   short: data = 23 01 23 <record> 23                  piece 2 = record
//   long:  data = 23 <serial> 23 (23 x15) <record> 23    piece 1 = serial, piece 2 empty,
//                                                        piece 17 = record
// By default the first read gets the long reply and every later one the short (unit key
// state=first|long|short). A record byte equal to 0x23 is sent as it is.
//
// Recording, pause, streaming, POP and its settings, the bars and rotation are not in the
// record; the state file shows them. The HIS board answers as the RVX3210's does.
class Rvx5AllBehaviour : public RecordBehaviour
{
    Q_OBJECT
public:
    enum class Model
    {
        Rvx5310,
        Rvx5370,
        Rvx5350,
    };

    enum Field8000
    {
        Mute = 24,
        RecordLength8000 = 25,
    };

    explicit Rvx5AllBehaviour(const UnitConfig &unit, QObject *parent = nullptr);

    StateLines state() const override;

    static Model modelOf(uint8_t childType);

protected:
    bool applyMain(uint8_t command, const QByteArray &data) override;
    bool takesInput(uint8_t input) const override;
    bool takesSource(uint8_t code) const override;
    void unknownCommand(Board board, uint8_t command) override;
    QByteArray readState() override;

private:
    void powerUp();
    void setPosition(int highField, int value);
    void clampPositions();
    void putBar(int busField, uint8_t on, uint8_t *kept);

    Model m_model;
    QByteArray m_serial;
    int m_reads = 0;
    bool m_recording = false;
    bool m_paused = false;
    uint8_t m_stream = 0;
    uint8_t m_pop = 0;
    PopSettings m_popSettings;
    uint8_t m_pgmBeforeBar = 1;
    uint8_t m_pvwBeforeBar = 2;
    bool m_rotated = false;
    int m_resets = 0;
};
