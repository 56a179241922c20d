#include "hisaddresses.h"

#include "protocol.h"

namespace {
constexpr int IpAt = 2;
constexpr int SubnetAt = 6;
constexpr int GatewayAt = 10;
constexpr int DnsAt = 20;
} // namespace

HisAddresses HisAddresses::decode(const QByteArray &payload)
{
    return {Protocol::dottedAt(payload, IpAt), Protocol::dottedAt(payload, SubnetAt),
            Protocol::dottedAt(payload, GatewayAt), Protocol::dottedAt(payload, DnsAt)};
}
