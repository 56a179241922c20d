#pragma once

#include "unitbehaviour.h"

#include <QByteArray>
#include <QMap>
#include <QString>
#include <cstdint>

// A unit whose main board keeps a switching state record and answers the state request with it,
// and whose HIS board keeps its network settings and streaming URL slots: the RVX3210 family
// and the 8000 series. What both do with a command is done here; a family adds its own codes,
// tables and quirks in applyMain() and hands the rest to applyCommon().
//
// Replies, all built so that the application's splitting finds the payload:
//   0x49 state:   data = '#' <lead> '#' <record> '#'     split at 0x23; lead is 01 unless the
//                                                        family says otherwise
//   0x24 network: data = 00 00 ip mask gateway 00*6 dns 24 split at 0x24 -> piece 1
//   0x6A URL:     data = <789-byte URL record> 6A          split at 0x6A -> piece 1
// A record byte equal to the separator (a volume of 35, an address octet of 36, a 'j' in a
// URL) cuts the payload short on the application side; the real unit has the same limit.
class RecordBehaviour : public UnitBehaviour
{
    Q_OBJECT
public:
    // Offsets in the state record. The families share the layout up to the output format;
    // what follows is the RVX3210's, which the others reuse or leave at zero.
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
    };

    explicit RecordBehaviour(const UnitConfig &unit, QObject *parent = nullptr);

    QList<Reply> handle(Board board, uint8_t command, const QByteArray &data,
                        const QByteArray &frame) override;
    StateLines state() const override;

protected:
    // A record of `length` zero bytes with the values of a unit after power-up; none of them
    // equals the state separator 0x23.
    void powerUpRecord(int length, uint8_t ch1, uint8_t ch2);
    void resizeRecord(int length);
    uint8_t field(int offset) const;
    void setField(int offset, uint8_t value);

    // Applies one main-board command to the record; false when the command is not known.
    virtual bool applyMain(uint8_t command, const QByteArray &data) = 0;
    // The commands every family applies alike; false for any other.
    bool applyCommon(uint8_t command, const QByteArray &data);
    // Bus inputs and audio source codes the unit takes; others leave the record as it is.
    virtual bool takesInput(uint8_t) const { return true; }
    virtual bool takesSource(uint8_t) const { return true; }
    // A command either board did not know.
    virtual void unknownCommand(Board, uint8_t) {}

    // The whole frame answering a state request.
    virtual QByteArray readState();
    QByteArray stateReply(const QByteArray &lead) const;

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
