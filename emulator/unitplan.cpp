#include "unitplan.h"

#include <QStringList>

namespace {
constexpr int kPerBlock = 250;
constexpr int kMainBlock = 1;
constexpr int kHisBlock = 101;
constexpr int kMaxNameLength = 32;
constexpr int kMaxSerialLength = 16;

QHostAddress planAddress(int block, int index)
{
    const quint32 third = quint32(block + index / kPerBlock);
    const quint32 fourth = quint32(1 + index % kPerBlock);
    return QHostAddress((10u << 24) | (77u << 16) | (third << 8) | fourth);
}
} // namespace

QHostAddress UnitPlan::mainAddress(int index)
{
    return planAddress(kMainBlock, index);
}

QHostAddress UnitPlan::hisAddress(int index)
{
    return planAddress(kHisBlock, index);
}

UnitConfig UnitPlan::defaults(int index)
{
    UnitConfig u;
    u.index = index;
    u.childType = 0x21;
    u.name = QStringLiteral("Unit_%1").arg(index + 1, 4, 10, QLatin1Char('0'));
    const int serial = index + 1;
    u.id = QByteArray::fromRawData("\x4b\0\0", 3);
    u.id.detach();
    u.id[1] = char((serial >> 8) & 0xFF);
    u.id[2] = char(serial & 0xFF);
    u.mainIp = mainAddress(index);
    u.hisIp = hisAddress(index);
    return u;
}

bool UnitPlan::modelHasHis(uint8_t childType)
{
    return childType != 0x22;
}

bool UnitPlan::parseByte(const QString &text, uint8_t *value)
{
    bool ok = false;
    const QString t = text.trimmed();
    const uint v =
        t.startsWith(QLatin1String("0x"), Qt::CaseInsensitive) ? t.mid(2).toUInt(&ok, 16) : t.toUInt(&ok, 16);
    if (!ok || v > 0xFF)
        return false;
    *value = uint8_t(v);
    return true;
}

bool UnitPlan::parseFault(const QString &name, Fault *fault)
{
    static const QList<QPair<QString, Fault>> names = {
        {QStringLiteral("duplicate"), Fault::Duplicate}, {QStringLiteral("his-first"), Fault::HisFirst},
        {QStringLiteral("split"), Fault::Split},         {QStringLiteral("bad-checksum"), Fault::BadChecksum},
        {QStringLiteral("silent"), Fault::Silent},
    };
    for (const auto &n : names) {
        if (n.first == name.trimmed()) {
            *fault = n.second;
            return true;
        }
    }
    return false;
}

QString UnitPlan::faultName(Fault fault)
{
    switch (fault) {
    case Fault::Duplicate:
        return QStringLiteral("duplicate");
    case Fault::HisFirst:
        return QStringLiteral("his-first");
    case Fault::Split:
        return QStringLiteral("split");
    case Fault::BadChecksum:
        return QStringLiteral("bad-checksum");
    case Fault::Silent:
        return QStringLiteral("silent");
    }
    return QString();
}

bool UnitPlan::validName(const QString &name)
{
    if (name.isEmpty() || name.size() > kMaxNameLength)
        return false;
    for (QChar c : name) {
        if (c.unicode() < 0x20 || c.unicode() > 0x7E || c == QLatin1Char('-'))
            return false;
    }
    return true;
}

bool UnitPlan::parseUnit(const QString &description, int index, UnitConfig *unit, QString *error)
{
    UnitConfig u = defaults(index);
    bool hisGiven = false;
    const QStringList parts = description.split(QLatin1Char(','), Qt::SkipEmptyParts);
    for (const QString &part : parts) {
        const int eq = part.indexOf(QLatin1Char('='));
        if (eq < 0) {
            *error = QStringLiteral("'%1' is not key=value").arg(part);
            return false;
        }
        const QString key = part.left(eq).trimmed();
        const QString value = part.mid(eq + 1);
        if (key == QLatin1String("type")) {
            if (!parseByte(value, &u.childType) || u.childType == 0xFF) {
                *error = QStringLiteral("bad type '%1'").arg(value);
                return false;
            }
        } else if (key == QLatin1String("name")) {
            if (!validName(value)) {
                *error = QStringLiteral("bad name '%1' (1-32 printable ASCII, no '-')").arg(value);
                return false;
            }
            u.name = value;
        } else if (key == QLatin1String("id")) {
            const QByteArray id = QByteArray::fromHex(value.trimmed().toLatin1());
            if (id.size() != 3 || id.toHex() != value.trimmed().toLower().toLatin1()) {
                *error = QStringLiteral("bad id '%1' (six hex digits)").arg(value);
                return false;
            }
            u.id = id;
        } else if (key == QLatin1String("ip")) {
            if (!u.mainIp.setAddress(value.trimmed()) ||
                u.mainIp.protocol() != QAbstractSocket::IPv4Protocol) {
                *error = QStringLiteral("bad ip '%1'").arg(value);
                return false;
            }
        } else if (key == QLatin1String("his")) {
            const QString v = value.trimmed();
            hisGiven = true;
            if (v == QLatin1String("auto")) {
                u.hisIp = hisAddress(index);
            } else if (v == QLatin1String("none")) {
                u.hisIp = QHostAddress();
            } else if (!u.hisIp.setAddress(v) || u.hisIp.protocol() != QAbstractSocket::IPv4Protocol) {
                *error = QStringLiteral("bad his '%1'").arg(value);
                return false;
            }
        } else if (key == QLatin1String("hisclass")) {
            if (!parseByte(value, &u.hisClass) || (u.hisClass != 0xE0 && u.hisClass != 0xE5)) {
                *error = QStringLiteral("bad hisclass '%1' (e0 or e5)").arg(value);
                return false;
            }
        } else if (key == QLatin1String("serial")) {
            const QByteArray serial = QByteArray::fromHex(value.trimmed().toLatin1());
            if (serial.isEmpty() || serial.size() > kMaxSerialLength ||
                serial.toHex() != value.trimmed().toLower().toLatin1()) {
                *error = QStringLiteral("bad serial '%1' (2-32 hex digits)").arg(value);
                return false;
            }
            u.serial = serial;
        } else if (key == QLatin1String("state")) {
            const QString v = value.trimmed();
            if (v == QLatin1String("first"))
                u.stateForm = StateForm::FirstLong;
            else if (v == QLatin1String("long"))
                u.stateForm = StateForm::Long;
            else if (v == QLatin1String("short"))
                u.stateForm = StateForm::Short;
            else {
                *error = QStringLiteral("bad state '%1' (first, long or short)").arg(value);
                return false;
            }
        } else if (key == QLatin1String("fault")) {
            for (const QString &f : value.split(QLatin1Char('+'), Qt::SkipEmptyParts)) {
                Fault fault;
                if (!parseFault(f, &fault)) {
                    *error = QStringLiteral("unknown fault '%1'").arg(f);
                    return false;
                }
                u.faults.insert(fault);
            }
        } else {
            *error = QStringLiteral("unknown key '%1'").arg(key);
            return false;
        }
    }
    if (!hisGiven && !modelHasHis(u.childType))
        u.hisIp = QHostAddress();
    *unit = u;
    return true;
}
