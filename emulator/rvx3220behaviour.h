#pragma once

#include "popsettings.h"
#include "unitbehaviour.h"

#include <QMap>
#include <QString>
#include <cstdint>

// An RVX3220 unit: a main board only. It takes every panel command and keeps the state the
// commands imply; the panel never reads it back (it ignores the 0x49 reply), so a test reads
// it from the state file. Keys:
//   pgm pvw               inputs 1..6 on the buses; CUT and a full lever stroke swap them
//   effect wipe           mix, fade or wipe (a 0x90 arms it, 0x92 gives the pattern)
//   lever                 last lever frame as "<stroke>,<travel>"; cuts, transitions: counters
//   audio ch1 ch2 vol_NN  afv/mix, the channels' source codes, volume per source code
//   output                output-format code
//   pip* pop*             inset settings; pip and pop exclude each other as on the panel
//   requested_ip          address asked for by the address command (the unit stays put)
//   decoded               the last command in words; unknown lists codes it did not know
class Rvx3220Behaviour : public UnitBehaviour
{
    Q_OBJECT
public:
    explicit Rvx3220Behaviour(const UnitConfig &unit, QObject *parent = nullptr);

    QList<Reply> handle(Board board, uint8_t command, const QByteArray &data,
                        const QByteArray &frame) override;
    StateLines state() const override;

private:
    void swapBuses();
    QString apply(uint8_t command, const QByteArray &data);

    int m_pgm = 1;
    int m_pvw = 2;
    QString m_effect = QStringLiteral("mix");
    int m_wipe = 0;
    bool m_wipeArmed = false;
    int m_leverStroke = 0;
    int m_leverTravel = 0;
    bool m_leverAtEnd = false;
    int m_cuts = 0;
    int m_transitions = 0;
    QString m_audio = QStringLiteral("afv");
    int m_ch1 = 0x03;
    int m_ch2 = 0x04;
    QMap<int, int> m_volumes;
    int m_output = 0x07;
    int m_pip = 0;
    int m_pipBorder = 0;
    int m_pipColor = 0;
    int m_pipWidth = 2;
    int m_pipSize = 0;
    int m_pipH = 0;
    int m_pipV = 0;
    int m_pop = 0;
    PopSettings m_popSettings{1, 0, 0, 2, 0, 0};
    QString m_requestedIp;
    QString m_decoded;
};
