#pragma once

#include <QByteArray>
#include <QMetaType>
#include <QString>

// The HIS board's network settings as its address reply reports them, decoded once: each a
// dotted IPv4 text, or a null string where the reply stops short of it.
struct HisAddresses
{
    QString ip;
    QString subnet;
    QString gateway;
    QString dns;

    // The reply's payload: the address at 2, the mask at 6, the gateway at 10 and the DNS
    // server at 20, each first octet first.
    static HisAddresses decode(const QByteArray &payload);
};

Q_DECLARE_METATYPE(HisAddresses)
