#pragma once

#include "rvx3210behaviour.h"

// An RVX3410 unit: an RVX3210 whose state record carries three bytes more, for recording,
// streaming and rotation, and which marks its state reply with 0x27 at byte 14.
//
//   byte 26 bits 3-4: 0 idle, 1 recording, 2 paused   (REC 0xB2, PAUSE 0xC5)
//   byte 27 bit 2:    streaming                       (STREAM 0x87)
//   byte 28 bits 6-7: 01 rotated, 00 not              (ROTATE 0xD5)
// MUTE (F3, 0xD4) is the RVX3210's byte 24. The menu keys (0xD9) drive an on-screen menu the
// record does not report; the state file shows it.
class Rvx3410Behaviour : public Rvx3210Behaviour
{
    Q_OBJECT
public:
    enum Field3410
    {
        Recording = 26,
        Streaming = 27,
        Rotation = 28,
        RecordLength3410 = 29,
    };

    explicit Rvx3410Behaviour(const UnitConfig &unit, QObject *parent = nullptr);

    StateLines state() const override;

protected:
    bool applyMain(uint8_t command, const QByteArray &data) override;
    QByteArray readState() override;

private:
    uint8_t recordingState() const;
    void setRecordingState(uint8_t s);
    void menuKey(uint8_t key, uint8_t pressed);

    bool m_menuOpen = false;
    int m_menuLine = 0;
    QByteArray m_lastMenuKey;
};
