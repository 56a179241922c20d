#pragma once

#include "unitbehaviour.h"

#include <QByteArray>
#include <QMap>
#include <QString>
#include <cstdint>

// An RVX3210-family unit: a main board that keeps the switching state record and answers the
// state request, and a HIS board that keeps its network settings and streaming URL slots.
//
// Replies, all built so that the application's splitting finds the payload:
//   0x49 state:   data = '#' 01 '#' <record> '#'          split at 0x23 -> piece 2 = record
//   0x24 network: data = 00 00 ip mask gateway 00*6 dns 24 split at 0x24 -> piece 1
//   0x6A URL:     data = <789-byte URL record> 6A          split at 0x6A -> piece 1
// A record byte equal to the separator (a volume of 35, an address octet of 36, a 'j' in a
// URL) cuts the payload short on the application side; the real unit has the same limit.
class Rvx3210Behaviour : public UnitBehaviour
{
    Q_OBJECT
public:
    // Offsets in the state record.
    enum Field
    {
        Pgm = 0,
        Pvw = 1,
        AudioType = 2,
        AudioCh1 = 3,
        AudioVol1 = 4,
        AudioCh2 = 5,
        AudioVol2 = 6,
        TransType = 7,
        WipeType = 8,
        Ftb = 9,
        PipState = 10,
        PipBorderEnable = 11,
        PipBorderColor = 12,
        PipBorderWidth = 13,
        PipSize = 14,
        PipHHigh = 15,
        PipHLow = 16,
        PipVHigh = 17,
        PipVLow = 18,
        Still = 19,
        Rate = 20,
        OutputFormat = 21,
        RtdSource = 22,
        UvcValue = 23,
        StaticValue = 24,
        Rotate = 25,
        RecordLength3210 = 26,
    };

    explicit Rvx3210Behaviour(const UnitConfig &unit, QObject *parent = nullptr);

    QList<Reply> handle(Board board, uint8_t command, const QByteArray &data,
                        const QByteArray &frame) override;
    StateLines state() const override;

protected:
    // A family member with a longer record (the RVX3410) resizes it and adds its own fields.
    void resizeRecord(int length);
    uint8_t field(int offset) const;
    void setField(int offset, uint8_t value);
    // The last audio levels command (0xB4), shown in the state file.
    void setLevels(const QByteArray &levels);

    // Applies one main-board command to the record; false when the command is not known.
    virtual bool applyMain(uint8_t command, const QByteArray &data);
    // Byte 14 of the state reply; the RVX3410 marks its frames there.
    virtual uint8_t stateFrameMarker() const { return 0; }
    QByteArray stateReply() const;

private:
    QList<Reply> handleHis(uint8_t command, const QByteArray &data);

    QByteArray m_record;
    QByteArray m_levels; // last 0xB4 levels: ch1, ch2, third, master
    QString m_requestedIp;

    QByteArray m_hisIp;
    QByteArray m_hisMask;
    QByteArray m_hisGateway;
    QByteArray m_hisDns;
    QMap<uint8_t, QByteArray> m_urls; // slot -> 789-byte URL record
};
