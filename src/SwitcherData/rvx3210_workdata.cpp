#include "rvx3210_workdata.h"

#include "framecodec.h"

#include <QDebug>
#include <QHostAddress>
#include <QUdpSocket>
#include <cstring>

Q_LOGGING_CATEGORY(lc3210, "kova.rvx3210")

namespace {

// Log labels, one per sender.
const char *const LabelReadState = "点击DS按钮senbuf的数据";
const char *const LabelPgm = "点击PGM通道senbuf的数据";
const char *const LabelPvw = "点击PVW通道senbuf的数据";
const char *const LabelSlider = "点击视频推杆senbuf的数据";
const char *const LabelCut = "点击CUT切换senbuf的数据";
const char *const LabelAuto = "点击AUTO切换senbuf的数据";
const char *const LabelFtb = "FTB senbuf的数据";
const char *const LabelPip = "PIP senbuf的数据";
const char *const LabelStream = "点击RTMP按钮senbuf的数据";
const char *const LabelTransitions = "TRANSITONS设置 senbuf的数据";
const char *const LabelSetWipe = "SET_WIPE senbuf的数据";
const char *const LabelPipBorderEnable = "PIP_Border_Enable senbuf的数据";
const char *const LabelPipBorderColor = "PIP_Border_Color senbuf的数据";
const char *const LabelPipBorderWidth = "PIP_Border_Width senbuf的数据";
const char *const LabelPipHPosition = "PIP_H_Position senbuf的数据";
const char *const LabelPipVPosition = "PIP_V_Position senbuf的数据";
const char *const LabelPipBorderSize = "PIP_Border_Size senbuf的数据";
const char *const LabelF1 = "F1 分辨率设置 senbuf的数据";
const char *const LabelRate = "点击RATE切换特效senbuf的数据";
const char *const LabelRec = "点击REC按钮senbuf的数据";
const char *const LabelLevels = "CH3_vol senbuf的数据";
const char *const LabelCh1 = "选择CH1下拉列表 senbuf的数据";
const char *const LabelCh2 = "选择CH2下拉列表 senbuf的数据";
// Pause and rotate log the same label; the copy is deliberate.
const char *const LabelPause = "点击暂停按钮senbuf的数据";
const char *const LabelMix = "点击MXI senbuf的数据";
const char *const LabelAfv = "点击AFV senbuf的数据";
const char *const LabelStill = "STILL senbuf的数据";
const char *const LabelCh1Vol = "CH1_vol senbuf的数据";
const char *const LabelCh2Vol = "CH2_vol senbuf的数据";
const char *const LabelF2 = "F2 senbuf的数据";
const char *const LabelF3 = "F3 senbuf的数据";
const char *const LabelF7 = "F7 senbuf的数据";
const char *const LabelMenu = "点击菜单按钮senbuf的数据";
const char *const LabelSetIp = "SetHis_IP senbuf的数据";
const char *const LabelTest = "点击确定按钮senbuf的数据";
const char *const LabelReadHisIp = "ReadHis_IP senbuf的数据";
const char *const LabelSetHisIp = "设置设备上His板IP、网关、掩码、senbuf的数据";
const char *const LabelSetHisDns = "设置设备上His板DNS senbuf的数据";
const char *const LabelReadUrl = "读取设备上His板URL信息 senbuf的数据";
const char *const LabelSetUrl = "设置设备上His板URL信息 senbuf的数据";
const char *const LabelUrlPiece = "切割后的数据2";

constexpr uint8_t CmdReadState = 0x49;
constexpr uint8_t CmdHisAddress = 0x24;
constexpr uint8_t CmdHisDns = 0x23;
constexpr uint8_t CmdSetAddress = 0x05;
constexpr uint8_t CmdReadUrl = 0x6A;
constexpr uint8_t CmdSetUrl = 0x67;
constexpr uint8_t ChildRvx3410 = 0x27;
constexpr char StateSeparator = 0x23;

// Combo index of the CH1/CH2 source lists to the unit's source byte.
constexpr uint8_t AudioSources[] = {0x07, 0x03, 0x04, 0x05, 0x06, 0x08, 0x00};
// Wipe data bytes for transition types 3-6.
constexpr uint8_t WipeCodes[] = {0x25, 0x29, 0x23, 0x27};
// Sent as the unit expects them after the DNS address; their meaning is the HIS board's.
constexpr uint8_t DnsTail[] = {0x02, 0x50, 0x3B, 0x8C};

using FrameCodec::writeHead;
using FrameCodec::writeTail;

bool isHisBoard(const QByteArray &frame)
{
    const uint8_t cls = FrameCodec::byteAt(frame, 4);
    return (cls == 0xE0 || cls == 0xE5) && FrameCodec::byteAt(frame, 5) == 0xFF;
}

void fillFour(uint8_t *dst, const QByteArray &src)
{
    for (int i = 0; i < 4; ++i)
        dst[i] = FrameCodec::byteAt(src, i);
}

} // namespace

RVX3210_workdata::RVX3210_workdata(QObject *parent) : SWITCHER_DATA(parent)
{
    initUdp();
}

void RVX3210_workdata::initUdp()
{
    m_udp = new QUdpSocket(this);
    // Bound once, before any device IP is known; Qt takes a null address as the IPv4
    // wildcard, spelled out here. Sharing lets the next panel's link object bind port 7000
    // while this one still exists (on Linux the newest socket gets the unicast replies), and
    // lets a local listener take port 7000 on its own address.
    QHostAddress local(m_devIP);
    if (local.isNull())
        local = QHostAddress::AnyIPv4;
    if (!m_udp->bind(local, Port, QAbstractSocket::ShareAddress | QAbstractSocket::ReuseAddressHint))
        qCDebug(lc3210) << "bind on port" << Port << "failed:" << m_udp->errorString();
    connect(m_udp, &QUdpSocket::readyRead, this, &RVX3210_workdata::ReceiveData);
}

void RVX3210_workdata::releasePort()
{
    if (m_udp)
        m_udp->close();
    m_released = true;
}

bool RVX3210_workdata::isBound() const
{
    return m_udp && m_udp->state() == QAbstractSocket::BoundState;
}

void RVX3210_workdata::get_DevTypeID(QString ip, uint8_t a, uint8_t b)
{
    m_devIP = ip;
    m_devClass = a;
    m_devNum = b;
}

void RVX3210_workdata::get_HISTypeID(QString ip, uint8_t a, uint8_t b)
{
    m_hisIP = ip;
    m_hisClass = a;
    m_hisNum = b;
}

void RVX3210_workdata::get_HIS_INFO(QString ip, QString subnet, QString gateway, QString dns)
{
    m_hisIP = ip;
    m_hisSubnet = subnet;
    m_hisGateway = gateway;
    m_hisDNS = dns;
}

void RVX3210_workdata::ShowCurrentSendData(QByteArray frame)
{
    emit showCurrentData(frame);
}

uint8_t RVX3210_workdata::audioSourceCode(int index)
{
    if (index < 0 || index >= int(sizeof(AudioSources)))
        return 0;
    return AudioSources[index];
}

// ---- sending ----

void RVX3210_workdata::sendFrame(const uint8_t *buf, uint16_t len, const QString &host, const char *label)
{
    if (len == 0)
        return;
    const QByteArray frame(reinterpret_cast<const char *>(buf), len);
    qCDebug(lc3210).noquote() << QString::fromUtf8(label) << frame.toHex(' ');
    // A released link must not quietly rebind to a random port by sending.
    if (m_udp && !m_released)
        m_udp->writeDatagram(frame, QHostAddress(host), Port);
    ShowCurrentSendData(frame);
}

namespace {
uint16_t buildData(uint8_t *buf, uint8_t devClass, uint8_t devNum, uint8_t cmd,
                   std::initializer_list<uint8_t> d)
{
    const uint8_t *p = d.begin();
    switch (d.size()) {
    case 0:
        return SWITCHER_DATA::None_Char_Data(buf, devClass, devNum, cmd);
    case 1:
        return SWITCHER_DATA::Single_Char_Data(buf, devClass, devNum, cmd, p[0]);
    case 2:
        return SWITCHER_DATA::Double_Char_Data(buf, devClass, devNum, cmd, p[0], p[1]);
    case 3:
        return SWITCHER_DATA::Three_Char_Data(buf, devClass, devNum, cmd, p[0], p[1], p[2]);
    case 4:
        return SWITCHER_DATA::Four_Char_Data(buf, devClass, devNum, cmd, p[0], p[1], p[2], p[3]);
    default:
        return 0;
    }
}
} // namespace

void RVX3210_workdata::sendMain(const char *label, uint8_t cmd, std::initializer_list<uint8_t> data)
{
    uint8_t buf[128] = {};
    sendFrame(buf, buildData(buf, m_devClass, m_devNum, cmd, data), m_devIP, label);
}

void RVX3210_workdata::sendHis(const char *label, uint8_t cmd, std::initializer_list<uint8_t> data)
{
    uint8_t buf[128] = {};
    sendFrame(buf, buildData(buf, m_hisClass, m_hisNum, cmd, data), m_hisIP, label);
}

void RVX3210_workdata::SendCMDRead3210state()
{
    sendMain(LabelReadState, CmdReadState);
}
void RVX3210_workdata::SendCDMPGMCH(uint8_t ch)
{
    sendMain(LabelPgm, 0x80, {ch});
}
void RVX3210_workdata::SendCMDPVWCH(uint8_t ch)
{
    sendMain(LabelPvw, 0x81, {ch});
}
void RVX3210_workdata::SwndCMDslider(uint8_t a, uint8_t b)
{
    sendMain(LabelSlider, 0x82, {a, b});
}
void RVX3210_workdata::SendCMDCUT()
{
    sendMain(LabelCut, 0x83);
}
void RVX3210_workdata::SendCMDAUTO()
{
    sendMain(LabelAuto, 0x84);
}
void RVX3210_workdata::SendCMDFTB()
{
    sendMain(LabelFtb, 0x85);
}
void RVX3210_workdata::SendCMDPIP(uint8_t on)
{
    sendMain(LabelPip, 0x86, {on});
}
void RVX3210_workdata::SendCMDSTREAM(int v)
{
    sendMain(LabelStream, 0x87, {uint8_t(v & 0xFF)});
}

void RVX3210_workdata::SendCMDTRANSITIONS(uint8_t t)
{
    if (t == 1) {
        sendMain(LabelTransitions, 0x8D);
    } else if (t == 2) {
        sendMain(LabelTransitions, 0x8E);
    } else if (t >= 3 && t <= 6) {
        SET_WIPE();
        sendMain(LabelTransitions, 0x92, {WipeCodes[t - 3]});
    }
}

void RVX3210_workdata::SET_WIPE()
{
    sendMain(LabelSetWipe, 0x8F);
}
void RVX3210_workdata::SendCMDPIP_Border_Enable(uint8_t v)
{
    sendMain(LabelPipBorderEnable, 0x9D, {v});
}
void RVX3210_workdata::SendCMDPIP_Border_Color(uint8_t v)
{
    sendMain(LabelPipBorderColor, 0x9E, {v});
}
void RVX3210_workdata::SendCMDPIP_Border_Width(uint8_t v)
{
    sendMain(LabelPipBorderWidth, 0x9F, {v});
}

// Positions go out low byte first, although the state record reports them high byte first.
void RVX3210_workdata::SendCMDPIP_H_Position(uint16_t v)
{
    sendMain(LabelPipHPosition, 0xA0, {QLOBYTE(v), QHIBYTE(v)});
}

void RVX3210_workdata::SendCMDPIP_V_Position(uint16_t v)
{
    sendMain(LabelPipVPosition, 0xA1, {QLOBYTE(v), QHIBYTE(v)});
}

void RVX3210_workdata::SendCMDPIP_Border_Size(uint8_t v)
{
    sendMain(LabelPipBorderSize, 0xA2, {v});
}
void RVX3210_workdata::SendCMDF1(int index)
{
    sendMain(LabelF1, 0xA3, {uint8_t(index & 0xFF)});
}
void RVX3210_workdata::SendCMDRATE(uint8_t r)
{
    sendMain(LabelRate, 0xB1, {r});
}
void RVX3210_workdata::SendCMDREC(int v)
{
    sendMain(LabelRec, 0xB2, {uint8_t(v & 0xFF)});
}

void RVX3210_workdata::SendCMDLeftSliderVOL(uint8_t ch1, uint8_t ch2, uint8_t ch3, uint8_t master)
{
    sendMain(LabelLevels, 0xB4, {ch1, ch2, ch3, master});
}

void RVX3210_workdata::SendCMDCH1(int index)
{
    sendMain(LabelCh1, 0xB9, {audioSourceCode(index)});
}
void RVX3210_workdata::SendCMDCH2(int index)
{
    sendMain(LabelCh2, 0xBA, {audioSourceCode(index)});
}
void RVX3210_workdata::SendCMDPAUSE()
{
    sendMain(LabelPause, 0xC5);
}
void RVX3210_workdata::SendCMDMIX()
{
    sendMain(LabelMix, 0xCB);
}
void RVX3210_workdata::SendCMDAFV()
{
    sendMain(LabelAfv, 0xCC);
}
void RVX3210_workdata::SendCMDSTILL()
{
    sendMain(LabelStill, 0xCD);
}
void RVX3210_workdata::SendCMDCH1_VOL(uint8_t v)
{
    sendMain(LabelCh1Vol, 0xCE, {v});
}
void RVX3210_workdata::SendCMDCH2_VOL(uint8_t v)
{
    sendMain(LabelCh2Vol, 0xCF, {v});
}
void RVX3210_workdata::SendCMDF2()
{
    sendMain(LabelF2, 0xD0);
}
void RVX3210_workdata::SendCMDF3()
{
    sendMain(LabelF3, 0xD4);
}
void RVX3210_workdata::SendCMDROTATE()
{
    sendMain(LabelPause, 0xD5);
}
void RVX3210_workdata::SendCMDF7()
{
    sendMain(LabelF7, 0xD6);
}
void RVX3210_workdata::SendCMDMenu(uint8_t a, uint8_t b)
{
    sendMain(LabelMenu, 0xD9, {a, b});
}

void RVX3210_workdata::SendCMD_SetIP(const QByteArray &ip, QString ipText)
{
    std::memset(&m_devIpRec, 0, sizeof(m_devIpRec));
    fillFour(m_devIpRec.ip, ip);
    uint8_t buf[128] = {};
    const uint16_t len = Set_ipCom(buf, m_devClass, m_devNum, CmdSetAddress, m_devIpRec);
    sendFrame(buf, len, m_devIP, LabelSetIp);
    // Only now: the frame itself must still reach the old address.
    m_devIP = ipText;
}

void RVX3210_workdata::SendCMDTest(QByteArray raw)
{
    sendFrame(reinterpret_cast<const uint8_t *>(raw.constData()), uint16_t(qMin(raw.size(), 0xFFFF)), m_devIP,
              LabelTest);
}

void RVX3210_workdata::SendCMD_Read_His_IP()
{
    const SET_DEV_IP zero{};
    uint8_t buf[128] = {};
    sendFrame(buf, Set_ipCom(buf, m_hisClass, m_hisNum, CmdHisAddress, zero), m_hisIP, LabelReadHisIp);
}

void RVX3210_workdata::SendCMD_Set_HIS_IP(const QByteArray &ip, const QByteArray &b, const QByteArray &c,
                                          QStringList texts)
{
    std::memset(&m_hisIpRec, 0, sizeof(m_hisIpRec));
    fillFour(m_hisIpRec.ip, ip);
    fillFour(m_hisIpRec.mask, b);
    fillFour(m_hisIpRec.gateway, c);
    uint8_t buf[128] = {};
    sendFrame(buf, Set_ipCom(buf, m_hisClass, m_hisNum, CmdSetAddress, m_hisIpRec), m_hisIP, LabelSetHisIp);
    m_hisIP = texts.value(0);
    m_hisSubnet = texts.value(1);
    m_hisGateway = texts.value(2);
}

void RVX3210_workdata::SendCMD_Set_HIS_DNS(const QByteArray &dns, QString dnsText)
{
    uint8_t buf[128] = {};
    sendFrame(buf, CreateMcuUdpDataBuf_ipDns(buf, m_hisClass, m_hisNum, dns), m_hisIP, LabelSetHisDns);
    m_hisDNS = dnsText;
}

void RVX3210_workdata::SendCMD_Read_Url(int index)
{
    sendHis(LabelReadUrl, CmdReadUrl, {uint8_t(index & 0xFF)});
}

void RVX3210_workdata::SendCMD_Set_Url(int index, const QByteArray &otherName, const QByteArray &url)
{
    ST_RTMP_URL rec;
    std::memset(&rec, 0, sizeof(rec));
    rec.index = uint8_t(index & 0xFF);
    // The panel keeps name and URL within their fields; clip anyway rather than overrun.
    const int nameLen = qMin(otherName.size(), int(sizeof(rec.name)));
    const int urlLen = qMin(url.size(), int(sizeof(rec.url)));
    rec.nameLen = uint8_t(nameLen);
    std::memcpy(rec.name, otherName.constData(), size_t(nameLen));
    rec.urlLen[0] = QLOBYTE(uint16_t(urlLen));
    rec.urlLen[1] = QHIBYTE(uint16_t(urlLen));
    std::memcpy(rec.url, url.constData(), size_t(urlLen));
    uint8_t buf[1024] = {};
    sendFrame(buf, CreateMcuUdpDataBuf_url(buf, m_hisClass, m_hisNum, rec), m_hisIP, LabelSetUrl);
}

uint16_t RVX3210_workdata::CreateMcuUdpDataBuf_ipDns(uint8_t *buf, uint8_t devClass, uint8_t devNum,
                                                     const QByteArray &dns)
{
    writeHead(buf, DnsFrameSize, devClass, devNum, CmdHisDns);
    // The frame has room for four address bytes; callers pass exactly four.
    fillFour(buf + 17, dns);
    std::memcpy(buf + 21, DnsTail, sizeof(DnsTail));
    return writeTail(buf, 25);
}

uint16_t RVX3210_workdata::CreateMcuUdpDataBuf_url(uint8_t *buf, uint8_t devClass, uint8_t devNum,
                                                   const ST_RTMP_URL &rec)
{
    writeHead(buf, UrlFrameSize, devClass, devNum, CmdSetUrl);
    buf[17] = 0;
    std::memcpy(buf + 18, reinterpret_cast<const uint8_t *>(&rec) + 1, sizeof(rec) - 1);
    return writeTail(buf, 18 + int(sizeof(rec)) - 1);
}

// ---- receiving ----

void RVX3210_workdata::ReceiveData()
{
    while (m_udp && m_udp->hasPendingDatagrams()) {
        const qint64 pending = m_udp->pendingDatagramSize();
        QByteArray datagram;
        datagram.resize(int(qMax<qint64>(pending, 0)));
        QHostAddress sender;
        quint16 port = 0;
        const qint64 n = m_udp->readDatagram(datagram.data(), datagram.size(), &sender, &port);
        if (n <= 0)
            break;
        Receive3210Data(datagram, int(n));
    }
}

void RVX3210_workdata::Receive3210Data(const QByteArray &datagram, int length)
{
    m_recvBuf.append(datagram.constData(), qBound(0, length, datagram.size()));
    // Once the buffer has reached the stall size it is never cleared again: from then on
    // nothing more is decoded. The unit's firmware tooling relies on the same behaviour.
    if (m_recvBuf.size() < MinFrame || m_recvBuf.size() >= StallSize)
        return;
    QByteArray frame;
    if (FrameCodec::joinFrames(m_recvBuf, &frame) == FrameCodec::Scan::Incomplete)
        return;
    if (FrameCodec::checksumOk(frame))
        AnalysisData(frame);
    m_recvBuf.clear();
}

void RVX3210_workdata::AnalysisData(const QByteArray &frame)
{
    using FrameCodec::byteAt;
    const bool mainBoard = byteAt(frame, 4) == 0xA5 && byteAt(frame, 5) == 0xFF;
    const uint8_t cmd = byteAt(frame, 16);

    if (mainBoard && byteAt(frame, 14) == ChildRvx3410)
        emit on_signals_3410Data(frame);

    if (mainBoard && cmd == CmdReadState) {
        const QList<QByteArray> pieces = frame.split(StateSeparator);
        if (pieces.size() < 3)
            return;
        if (pieces.at(2).isEmpty()) {
            // Long form: the record sits in piece 17. Exactly 17 pieces means it is absent.
            if (pieces.size() < 17)
                return;
            emit on_signals_5370Data(pieces.at(1));
            emit on_signals_3210Data(pieces.value(17));
        } else {
            emit on_signals_3210Data(pieces.at(2));
        }
    }

    if (!isHisBoard(frame) || byteAt(frame, 17) != 0x00)
        return;

    if (cmd == CmdReadUrl) {
        const QList<QByteArray> pieces = frame.split(char(CmdReadUrl));
        if (pieces.size() >= 2) {
            emit on_signals_3210HIS_URL_Data(pieces.at(1));
            qCDebug(lc3210).noquote() << QString::fromUtf8(LabelUrlPiece) << pieces.at(1).toHex(' ');
        }
    }
    if (cmd == CmdHisAddress) {
        const QList<QByteArray> pieces = frame.split(char(CmdHisAddress));
        if (pieces.size() >= 2)
            emit on_signals_3210HISData(pieces.at(1));
    }
}
