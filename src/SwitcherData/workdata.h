#pragma once

#include "framecodec.h"

#include <QByteArray>
#include <QHostAddress>
#include <QLoggingCategory>
#include <QObject>
#include <QStringList>
#include <cstdint>

class QUdpSocket;

Q_DECLARE_LOGGING_CATEGORY(lcLink)

// New address of a board as the address-setting commands carry it: four bytes each,
// most significant octet first (a.b.c.d typed gives a, b, c, d).
struct SET_DEV_IP
{
    uint8_t ip[4];
    uint8_t mask[4];
    uint8_t gateway[4];
};
static_assert(sizeof(SET_DEV_IP) == 12, "SET_DEV_IP travels on the wire as exactly 12 bytes");

#pragma pack(push, 1)
// One record per answering switcher. The layout is packed and fixed: the search window
// reads the table directly and the fields mirror what the unit's reply carries.
struct DevInfo_DATA
{
    uint32_t ip;      // sender of the main-board reply, first octet most significant
    uint8_t devClass; // reply byte 4
    uint8_t devNum;   // reply byte 5
    char name[32];    // not necessarily terminated
    uint8_t childType;
    uint8_t unitId[3];
    uint32_t ip2; // HIS board, 0 until its reply arrives
    uint8_t devClass2;
    uint8_t devNum2;
};
#pragma pack(pop)
static_assert(sizeof(DevInfo_DATA) == 48, "DevInfo_DATA must stay packed");

// The switcher link: control-frame builders, the broadcast search, and the device table
// filled from the replies. The unit links derive from it for the builders; only an object
// that searches opens the search socket.
class SWITCHER_DATA : public QObject
{
    Q_OBJECT
public:
    static constexpr int MaxDevices = 1024;
    static constexpr int MinFrame = FrameCodec::MinFrame;
    static constexpr int MaxFrame = 1056;
    static constexpr quint16 Port = 7000;
    // Asked of the kernel for the search socket; it grants at most its configured maximum.
    static constexpr int ReceiveBuffer = 4 * 1024 * 1024;

    // Datagrams read per pass of the event loop before the rest wait for the next pass, so a
    // flood of replies cannot hold the GUI thread.
    static constexpr int DrainBatch = 256;

    explicit SWITCHER_DATA(QObject *parent = nullptr);

    // Frame builders: pure, write into a caller-owned buffer of at least 32 bytes and
    // return the frame length.
    static uint16_t None_Char_Data(uint8_t *buf, uint8_t devClass, uint8_t devNum, uint8_t cmd);
    static uint16_t Single_Char_Data(uint8_t *buf, uint8_t devClass, uint8_t devNum, uint8_t cmd, uint8_t d1);
    static uint16_t Double_Char_Data(uint8_t *buf, uint8_t devClass, uint8_t devNum, uint8_t cmd, uint8_t d1,
                                     uint8_t d2);
    static uint16_t Three_Char_Data(uint8_t *buf, uint8_t devClass, uint8_t devNum, uint8_t cmd, uint8_t d1,
                                    uint8_t d2, uint8_t d3);
    static uint16_t Four_Char_Data(uint8_t *buf, uint8_t devClass, uint8_t devNum, uint8_t cmd, uint8_t d1,
                                   uint8_t d2, uint8_t d3, uint8_t d4);
    static uint16_t Set_ipCom(uint8_t *buf, uint8_t devClass, uint8_t devNum, uint8_t cmd,
                              const SET_DEV_IP &rec);
    // Search frame stamped with the current local date and time.
    static uint16_t SendBroadcastBuf(uint8_t *buf);
    // Same frame for a given moment; SendBroadcastBuf is this with "now".
    static uint16_t searchFrameAt(uint8_t *buf, const QDateTime &when);

    // The historical names of the codec's byte helpers.
    static uint16_t CalcCheckSum(const uint8_t *data, int count) { return FrameCodec::checkSum(data, count); }
    static uint8_t QLOBYTE(uint16_t v) { return FrameCodec::lowByte(v); }
    static uint8_t QHIBYTE(uint16_t v) { return FrameCodec::highByte(v); }
    static uint8_t TimeCRC(uint8_t v) { return FrameCodec::bcd(v); }

    void setSearcheQuipment();
    int DevInfo_DATA_IDX() const { return m_count; }
    // Records 0 to DevInfo_DATA_IDX()-1 are in use; one zero record follows the last.
    const DevInfo_DATA *devices() const { return m_devices; }

    void MYanalysis(const QHostAddress &sender, const QByteArray &data, int count);
    void Get_Bind_Dev(const QHostAddress &sender, const QByteArray &frame);

    static QString dottedIp(uint32_t ip) { return QHostAddress(ip).toString(); }

signals:
    void sigend_datapack();

public slots:
    void ReceiveDatagram();

private:
    void initUDPSOCKET();

    QUdpSocket *m_socket = nullptr;
    QByteArray m_recvBuf;
    QStringList m_names;
    int m_count = 0;
    int m_spare = 0;
    // One extra zero record after the table so the search window's walk "up to and
    // including count" never leaves the array, even with a full table.
    DevInfo_DATA m_devices[MaxDevices + 1];
};
