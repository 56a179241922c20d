#pragma once

#include "unitlink.h"
#include "workdata.h"

#include <QByteArray>
#include <QLoggingCategory>
#include <QString>
#include <cstdint>

Q_DECLARE_LOGGING_CATEGORY(lc3220)

// Link object of one RVX3220 unit. It only talks: the panel shows the operator's own last
// choices, so what the unit sends back is checked for shape and then ignored, and no
// state is kept or signalled from it.
class RVX3220_workdata : public UnitLink
{
    Q_OBJECT
public:
    explicit RVX3220_workdata(QObject *parent = nullptr);
    ~RVX3220_workdata() override;

    // Where the frames go and the device address they carry. No check, no re-bind.
    void DevTypeID(QString ip, quint8 classByte, quint8 numberByte);
    QString unitAddress() const { return m_unit.text(); }
    quint8 devClass() const { return m_unit.devClass; }
    quint8 devNum() const { return m_unit.devNum; }

    // Examines one received datagram. Virtual only so a test can watch what is examined.
    virtual void Read3220State_Data(const QByteArray &frame, int length);

    // How far a received datagram gets through the receive checks.
    enum class Verdict
    {
        TooShort,   // fewer than 2 bytes
        BadLeadIn,  // not A5 6C
        BadTrailer, // last byte (by the read count) not AE
        NotState,   // command code is not the state reply, or the datagram ends before it
        StateReply, // a state reply: recognised, and dropped like the rest
    };
    static Verdict examine(const QByteArray &frame, int length);

    void SendCMDReadstate();
    void SendCMDPGM(quint8 ch);
    void SendCMDPVW(quint8 ch);
    void SwndCMDslider(quint8 stroke, quint8 travel);
    void SendCMDCUT();
    void SendCMDAUTO();
    void SendCMDPIP(quint8 on);
    void SendCMDTRANSITIONS(quint8 effect);
    void SET_WIPE();
    void SendCMDPIP_Border_Enable(quint8 v);
    void SendCMDPIP_Border_Color(quint8 v);
    void SendCMDPIP_Border_Width(quint8 v);
    void SendCMDPIP_H_Position(quint16 x);
    void SendCMDPIP_V_Position(quint16 y);
    void SendCMDPIP_Border_Size(quint8 v);
    void SendCMDPGM_OUT(int index);
    void SendCMDPOP(quint8 on);
    void SendCMDPOP_Window(quint8 w);
    void SendCMDPOP_Border_Enable(quint8 on);
    void SendCMDPOP_Border_Color(quint8 v);
    void SendCMDPOP_Border_Width(quint8 v);
    void SendCMDPOP_H_Position(quint16 x);
    void SendCMDPOP_V_Position(quint16 y);
    void SendCMDCH1_VOL(int src, quint8 vol);
    void SendCMDCH2_VOL(int src, quint8 vol);
    void SendCMDCH1(int src);
    void SendCMDCH2(int src);
    void SendCMDMIX();
    void SendCMDAFV();
    // Sends the new address to the current one; later commands go to newIp.
    void SendCMD_IP(QByteArray &ip4, QString newIp);

protected:
    void datagramArrived(const QByteArray &datagram, int length) override;
    void perform(const Call &call) override;

private:
    void send0(uint8_t cmd);
    void send1(uint8_t cmd, uint8_t d1);
    void send2(uint8_t cmd, uint8_t d1, uint8_t d2);

    SET_DEV_IP m_ipBlock{};
};
