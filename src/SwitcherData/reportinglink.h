#pragma once

#include "hisaddresses.h"
#include "linkwatch.h"
#include "statelayout.h"
#include "streamurl.h"
#include "unitlink.h"
#include "unitstate.h"
#include "workdata.h"

#include <QByteArray>
#include <QLoggingCategory>
#include <QString>
#include <QStringList>
#include <cstdint>

#pragma pack(push, 1)
// Streaming URL slot as the HIS board stores it; the URL set frame carries bytes 1-788.
struct ST_RTMP_URL
{
    uint8_t unused;
    uint8_t index;
    uint8_t nameLen;
    uint8_t name[16];
    uint8_t urlLen[2]; // little-endian
    uint8_t url[768];
};
#pragma pack(pop)
static_assert(sizeof(ST_RTMP_URL) == 789, "ST_RTMP_URL travels on the wire with a fixed size");

// The link of a unit that reports its state and has a HIS board: the RVX3210 family and the
// 8000 series. Both reassemble, check and sort replies the same way, signal the same five
// payloads and share most of their commands; a family passes in only the codes and tables
// where it differs.
class ReportingLink : public UnitLink
{
    Q_OBJECT
public:
    static constexpr int DnsFrameSize = 28;
    static constexpr int UrlFrameSize = 809;
    // The reassembly buffer stops decoding for good once it holds this many bytes.
    static constexpr int StallSize = 1057;

    struct FamilyCodes
    {
        uint8_t rateCode;
        const uint8_t *wipePatterns; // four pattern bytes for transition types 3-6
        // The output format goes out as its table code (8000 series) or as the list index.
        bool formatByTable;
        // A long state reply cut into exactly 17 pieces has no payload piece: the 8000 series
        // drops it, the RVX3210 family passes an empty payload on.
        bool dropPiecelessLongReply;
    };

    ReportingLink(const FamilyCodes &codes, Family family, LogCategory log, QObject *parent);

    void get_DevTypeID(QString ip, uint8_t a, uint8_t b);
    void get_HISTypeID(QString ip, uint8_t a, uint8_t b);
    void get_HIS_INFO(QString ip, QString subnet, QString gateway, QString dns);

    // The HIS board: where the network and URL commands go.
    void bindHis(const UnitAddress &his)
    {
        m_his = his;
        updateRoute();
    }
    void bindBoards(const UnitAddress &unit, const UnitAddress &his) override
    {
        bindUnit(unit);
        bindHis(his);
    }
    const UnitAddress &his() const { return m_his; }

    // What the link knows of the boards: as bound, as set, or as the HIS board last reported.
    QString on_DevIP() const { return m_unit.text(); }
    QString on_HIS_IP() const { return m_his.text(); }
    QString on_HIS_Subnet() const { return m_hisSubnet; }
    QString on_HIS_Gateway() const { return m_hisGateway; }
    QString on_HIS_DNS() const { return m_hisDNS; }

    // Main board.
    void SendCMDRead3210state();
    void SendCDMPGMCH(uint8_t ch);
    void SendCMDPVWCH(uint8_t ch);
    void SwndCMDslider(uint8_t a, uint8_t b);
    void SendCMDCUT();
    void SendCMDAUTO();
    void SendCMDFTB();
    void SendCMDPIP(uint8_t on);
    void SendCMDSTREAM(int v);
    void SendCMDTRANSITIONS(uint8_t t);
    void SET_WIPE();
    void SendCMDPIP_Border_Enable(uint8_t v);
    void SendCMDPIP_Border_Color(uint8_t v);
    void SendCMDPIP_Border_Width(uint8_t v);
    void SendCMDPIP_H_Position(uint16_t v);
    void SendCMDPIP_V_Position(uint16_t v);
    void SendCMDPIP_Border_Size(uint8_t v);
    void SendCMDF1(int index);
    void SendCMDRATE(uint8_t r);
    void SendCMDREC(int v);
    void SendCMDLeftSliderVOL(uint8_t a, uint8_t b, uint8_t c, uint8_t d);
    void SendCMDCH1(int index);
    void SendCMDCH2(int index);
    void SendCMDPAUSE();
    void SendCMDMIX();
    void SendCMDAFV();
    void SendCMDSTILL();
    void SendCMDCH1_VOL(uint8_t v);
    void SendCMDCH2_VOL(uint8_t v);
    void SendCMDF2();
    void SendCMDF3();
    void SendCMDROTATE();
    void SendCMDF7();
    void SendCMD_SetIP(const QByteArray &ip, QString ipText);

    // HIS board.
    void SendCMD_Read_His_IP();
    void SendCMD_Set_HIS_IP(const QByteArray &ip, const QByteArray &b, const QByteArray &c,
                            QStringList texts);
    void SendCMD_Set_HIS_DNS(const QByteArray &dns, QString dnsText);
    void SendCMD_Read_Url(int index);
    void SendCMD_Set_Url(int index, const QByteArray &otherName, const QByteArray &url);

    // Pure builders of the two long HIS frames; buf must hold 28 / 809 bytes.
    static uint16_t CreateMcuUdpDataBuf_ipDns(uint8_t *buf, uint8_t devClass, uint8_t devNum,
                                              const QByteArray &dns);
    static uint16_t CreateMcuUdpDataBuf_url(uint8_t *buf, uint8_t devClass, uint8_t devNum,
                                            const ST_RTMP_URL &rec);

    void ShowCurrentSendData(QByteArray frame);

    // The layout state replies are decoded by: the family's. The link cannot tell an RVX3410
    // from an RVX3210, nor an RVX5350 from another 8000-series unit: the panel opened sets the
    // family (setFamily).
    StateLayout stateLayout() const { return traits().state; }
    // The newest state shown (empty until the first).
    const UnitState &unitState() const { return m_unitState; }

    // Bytes received and not yet decoded (for the stall's bound).
    int heldBytes() const { return m_recvBuf.size(); }

    // Whether the unit answers the state requests sent to it (see LinkWatch).
    const LinkWatch *watch() const { return &m_watch; }

    // Reassembly and sorting of received bytes, as the socket's receive loop calls them;
    // public so a test or a fuzzer can feed datagrams without a socket.
    void Receive3210Data(const QByteArray &datagram, int length);
    void AnalysisData(const QByteArray &frame);

signals:
    void on_signals_3210Data(const QByteArray &data);
    void on_signals_3410Data(const QByteArray &data);
    void on_signals_3210HISData(const QByteArray &data);
    void on_signals_3210HIS_URL_Data(const QByteArray &data);
    void on_signals_5370Data(const QByteArray &data);
    void showCurrentData(QByteArray frame);
    // Each state shown, decoded once, right after its bytes went out on the signals above.
    void stateReported(const UnitState &state);
    // The HIS board's address reply and URL reply, decoded, right after their payloads went out
    // on the signals above. The addresses it reports are the link's from then on.
    void hisAddressesReported(const HisAddresses &addresses);
    void streamUrlReported(const StreamUrl &url);

protected:
    QVector<QHostAddress> senders() const override { return {m_unit.host, m_his.host}; }
    void datagramArrived(const QByteArray &datagram, int length) override;
    void passEnded() override;
    void frameSent(const QByteArray &frame) override;
    void sendHis(const char *label, uint8_t cmd, std::initializer_list<uint8_t> data = {});
    // Keeps what the HIS board's address reply reports, then signals it.
    void takeHisAddresses(const HisAddresses &addresses);

    void perform(const Call &call) override;

    const FamilyCodes m_family;
    UnitAddress m_his;
    QString m_hisSubnet;
    QString m_hisGateway;
    QString m_hisDNS;
    SET_DEV_IP m_devIpRec{};
    SET_DEV_IP m_hisIpRec{};
    QByteArray m_recvBuf;
    LinkWatch m_watch;

private:
    // Shows a state reply's payloads (the 8000 series' piece, when the reply has one, then the
    // record). Each reply carries the whole state, so of the replies read in one pass from
    // the socket only the newest is shown, at the end of the pass: a unit (or a stranger)
    // sending state faster than the panel can restyle itself cannot hold the GUI thread.
    void showState(const QByteArray *piece5370, const QByteArray &record);
    UnitState m_unitState;
    bool m_inPass = false;
    bool m_stateHeld = false;
    bool m_heldHas5370 = false;
    QByteArray m_held5370;
    QByteArray m_heldRecord;
};
