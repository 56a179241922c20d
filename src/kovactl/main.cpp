// kovactl: the switchers from a shell, for cues from a playout system or checks from a
// monitoring script. It speaks through the same link objects as the panels; the only
// broadcast it sends is the search.
#include "SwitcherData/protocol.h"
#include "SwitcherData/reportinglink.h"
#include "SwitcherData/statefields.h"
#include "SwitcherData/unitcommands.h"
#include "SwitcherData/unitlinks.h"
#include "SwitcherData/unitmodel.h"
#include "SwitcherData/workdata.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QEventLoop>
#include <QHostAddress>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTextStream>
#include <QTimer>
#include <cstdio>
#include <cstring>
#include <functional>
#include <memory>

namespace {

// Exit codes, as the manual lists them.
enum Exit
{
    Ok = 0,
    Usage = 2,    // unknown command or option, malformed or out-of-range argument or address
    NoUnit = 3,   // no unit answered the search from ADDRESS (or its HIS board did not)
    Refused = 4,  // the unit's family has no such command or argument
    NoReply = 5,  // the unit did not report its state in time
    PortBusy = 6, // UDP port 7000, where the state reply comes back, is held and not shared
};

constexpr int DefaultTimeoutMs = 1000;

const char ExitCodes[] =
    "Exit codes:\n"
    "  0  done\n"
    "  2  usage: unknown command or option, malformed or out-of-range argument or address\n"
    "  3  no unit answered the search from ADDRESS (or, for a HIS command, no HIS board)\n"
    "  4  refused: the unit's family has no such command or argument\n"
    "  5  the unit did not report its state within the time-out\n"
    "  6  UDP port 7000 is held by a program that does not share it (a running kova shares it)\n";

QTextStream &out()
{
    static QTextStream s(stdout);
    return s;
}

int fail(int code, const QString &message)
{
    QTextStream err(stderr);
    err << "kovactl: " << message << '\n';
    return code;
}

QString nameOf(const DevInfo_DATA &rec)
{
    return QString::fromLatin1(rec.name, int(strnlen(rec.name, sizeof rec.name)));
}

QString hex3(const uint8_t *bytes)
{
    return QString::fromLatin1(QByteArray(reinterpret_cast<const char *>(bytes), 3).toHex());
}

// Runs the search until `enough` says so or the time is up, and returns the answering units,
// each once (a unit reached over two links answers twice).
QVector<DevInfo_DATA> search(int timeoutMs, const std::function<bool(const SWITCHER_DATA &)> &enough)
{
    SWITCHER_DATA link;
    QEventLoop loop;
    QTimer deadline;
    deadline.setSingleShot(true);
    QObject::connect(&deadline, &QTimer::timeout, &loop, &QEventLoop::quit);
    // HIS replies announce nothing, so the table is looked at on a short tick as well.
    QTimer tick;
    tick.setInterval(10);
    auto check = [&] {
        if (enough && enough(link))
            loop.quit();
    };
    QObject::connect(&tick, &QTimer::timeout, &loop, check);
    QObject::connect(&link, &SWITCHER_DATA::sigend_datapack, &loop, check);
    link.setSearcheQuipment();
    deadline.start(timeoutMs);
    tick.start();
    loop.exec();

    QVector<DevInfo_DATA> units;
    for (int i = 0; i < link.DevInfo_DATA_IDX(); ++i) {
        const DevInfo_DATA &rec = link.devices()[i];
        bool seen = false;
        for (DevInfo_DATA &u : units) {
            if (u.ip == rec.ip) {
                seen = true;
                if (!u.ip2 && rec.ip2)
                    u = rec;
            }
        }
        if (!seen)
            units.append(rec);
    }
    return units;
}

const DevInfo_DATA *unitAt(const QVector<DevInfo_DATA> &units, quint32 ip)
{
    for (const DevInfo_DATA &u : units) {
        if (u.ip == ip)
            return &u;
    }
    return nullptr;
}

// The address typed for a unit: four numbers, and one a unit could answer from.
bool unitAddress(const QString &text, quint32 *ip, QString *why)
{
    if (Protocol::addressBytes(text).size() != 4) {
        *why = QStringLiteral("'%1' is no IPv4 address").arg(text);
        return false;
    }
    const QHostAddress a(text);
    if (a.isBroadcast() || a.isMulticast() || a.isNull() || a.toIPv4Address() == 0 || a.isLoopback()) {
        *why = QStringLiteral("'%1' is no unit's address: only the search is broadcast").arg(text);
        return false;
    }
    *ip = a.toIPv4Address();
    return true;
}

int runSearch(int timeoutMs, bool json)
{
    const QVector<DevInfo_DATA> units = search(timeoutMs, nullptr);
    QJsonArray list;
    for (const DevInfo_DATA &u : units) {
        const QString his = u.ip2 ? SWITCHER_DATA::dottedIp(u.ip2) : QString();
        const QString hisClass =
            u.ip2 ? QStringLiteral("%1").arg(u.devClass2, 2, 16, QLatin1Char('0')) : QString();
        if (json) {
            QJsonObject o;
            o.insert(QStringLiteral("address"), SWITCHER_DATA::dottedIp(u.ip));
            o.insert(QStringLiteral("name"), nameOf(u));
            o.insert(QStringLiteral("model"), UnitModels::modelName(u.childType));
            o.insert(QStringLiteral("family"),
                     QLatin1String(UnitModels::forChildType(u.childType).traits().key));
            o.insert(QStringLiteral("childType"), int(u.childType));
            o.insert(QStringLiteral("unitId"), hex3(u.unitId));
            o.insert(QStringLiteral("hisAddress"), his.isEmpty() ? QJsonValue() : QJsonValue(his));
            o.insert(QStringLiteral("hisClass"), hisClass.isEmpty() ? QJsonValue() : QJsonValue(hisClass));
            list.append(o);
            continue;
        }
        out() << SWITCHER_DATA::dottedIp(u.ip) << '\t' << UnitModels::modelName(u.childType) << '\t'
              << nameOf(u) << '\t' << (his.isEmpty() ? QStringLiteral("-") : his) << '\t'
              << (hisClass.isEmpty() ? QStringLiteral("-") : hisClass) << '\t' << hex3(u.unitId) << '\n';
    }
    if (json)
        out() << QJsonDocument(list).toJson(QJsonDocument::Indented);
    return Ok;
}

// The unit's record from the search, or an exit code.
int findUnit(const QString &address, int timeoutMs, bool needHis, DevInfo_DATA *unit)
{
    quint32 ip = 0;
    QString why;
    if (!unitAddress(address, &ip, &why))
        return fail(Usage, why);
    const QVector<DevInfo_DATA> units = search(timeoutMs, [ip, needHis](const SWITCHER_DATA &link) {
        for (int i = 0; i < link.DevInfo_DATA_IDX(); ++i) {
            const DevInfo_DATA &rec = link.devices()[i];
            if (rec.ip == ip && (!needHis || rec.ip2))
                return true;
        }
        return false;
    });
    const DevInfo_DATA *found = unitAt(units, ip);
    if (!found)
        return fail(NoUnit, QStringLiteral("no unit answered the search from %1").arg(address));
    if (needHis && !found->ip2)
        return fail(NoUnit, QStringLiteral("the HIS board of %1 did not answer the search").arg(address));
    *unit = *found;
    return Ok;
}

int runState(const QString &address, int timeoutMs, bool json)
{
    DevInfo_DATA unit{};
    if (const int code = findUnit(address, timeoutMs, false, &unit))
        return code;
    const FamilyTraits &traits = UnitModels::forChildType(unit.childType).traits();
    const Family family = traits.family;
    std::unique_ptr<UnitLink> owner(createUnitLink(family));
    auto *link = qobject_cast<ReportingLink *>(owner.get());
    if (traits.state == StateLayout::None || !link)
        return fail(Refused,
                    QStringLiteral("the %1 does not report its state").arg(QLatin1String(traits.name)));
    if (!link->isBound())
        return fail(PortBusy,
                    QStringLiteral("UDP port %1 is held by another program").arg(SWITCHER_DATA::Port));
    link->bindUnit(UnitAddress::mainBoard(unit));
    // A KOVA with this unit's panel open holds the port too: tied to the unit, this socket
    // gets the unit's reply ahead of it, and KOVA keeps every other unit's.
    link->keepToUnit();

    UnitState state;
    bool got = false;
    QEventLoop loop;
    QObject::connect(link, &ReportingLink::stateReported, &loop, [&](const UnitState &reported) {
        state = reported;
        got = true;
        loop.quit();
    });
    QTimer::singleShot(timeoutMs, &loop, &QEventLoop::quit);
    link->SendCMDRead3210state();
    loop.exec();
    if (!got)
        return fail(NoReply,
                    QStringLiteral("%1 did not report its state within %2 ms").arg(address).arg(timeoutMs));

    if (json) {
        QJsonObject o;
        o.insert(QStringLiteral("address"), address);
        o.insert(QStringLiteral("model"), UnitModels::modelName(unit.childType));
        o.insert(QStringLiteral("family"), QLatin1String(traits.key));
        o.insert(QStringLiteral("state"), stateJson(state));
        out() << QJsonDocument(o).toJson(QJsonDocument::Indented);
        return Ok;
    }
    out() << "model: " << UnitModels::modelName(unit.childType) << '\n';
    for (const StateField &f : stateFields(state))
        out() << f.name << ": " << fieldText(f.value) << '\n';
    return Ok;
}

int runSend(const QString &address, const QString &command, const QStringList &args, int timeoutMs)
{
    // What no unit could take is refused before the search, so nothing at all goes out.
    quint32 ip = 0;
    QString why;
    if (!unitAddress(address, &ip, &why))
        return fail(Usage, why);
    const CommandCall any = CommandCall::checkAnyFamily(command, args);
    if (any.verdict() != CommandCall::Verdict::Ok)
        return fail(Usage, any.message());

    DevInfo_DATA unit{};
    if (const int code = findUnit(address, timeoutMs, any.needsHisBoard(), &unit))
        return code;
    const Family family = UnitModels::forChildType(unit.childType).family;
    const CommandCall call = CommandCall::check(command, args, family);
    switch (call.verdict()) {
    case CommandCall::Verdict::Ok:
        break;
    case CommandCall::Verdict::NotHere:
        return fail(Refused, QStringLiteral("%1; %2 is an %3")
                                 .arg(call.message(), address, UnitModels::modelName(unit.childType)));
    default:
        return fail(Usage, call.message());
    }

    // The link of the unit's family, bound as a panel binds it; the frames are the panel's.
    const std::unique_ptr<UnitLink> link(createUnitLink(family));
    link->bindBoards(UnitAddress::mainBoard(unit), UnitAddress::hisBoard(unit));
    // Beside a running KOVA: tied to this unit, the socket takes none of the other units'
    // replies meant for KOVA while it exists.
    link->keepToUnit();
    if (!call.run(*link))
        return fail(Refused,
                    QStringLiteral("the %1 refused '%2'").arg(QLatin1String(link->traits().name), command));
    return Ok;
}

void printHelp(const QCommandLineParser &parser)
{
    out() << parser.helpText() << "\nCommands:\n"
          << "  search                    list the units that answer the search\n"
          << "  state ADDRESS             read the unit's state (not the RVX3220: it reports none)\n"
          << "  send ADDRESS COMMAND [ARGS]\n"
          << "                            one operator action, as the unit's panel sends it:\n";
    for (const QString &line : CommandCall::listing())
        out() << "      " << line << '\n';
    out() << '\n' << ExitCodes;
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("kovactl"));
    QCoreApplication::setApplicationVersion(QStringLiteral(KOVA_VERSION));

    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Finds RVX switchers, reads their state and sends them "
                                                    "operator actions."));
    const QCommandLineOption help({QStringLiteral("h"), QStringLiteral("help")},
                                  QStringLiteral("Show this help and exit."));
    const QCommandLineOption version({QStringLiteral("v"), QStringLiteral("version")},
                                     QStringLiteral("Show the version and exit."));
    const QCommandLineOption timeout(
        QStringLiteral("timeout"),
        QStringLiteral("How long to wait for the units' answers (default %1).").arg(DefaultTimeoutMs),
        QStringLiteral("ms"));
    const QCommandLineOption json(QStringLiteral("json"), QStringLiteral("search and state: print JSON."));
    parser.addOption(help);
    parser.addOption(version);
    parser.addOption(timeout);
    parser.addOption(json);
    parser.addPositionalArgument(QStringLiteral("command"), QStringLiteral("search, state or send (below)."));
    parser.addPositionalArgument(QStringLiteral("args"), QStringLiteral("The command's arguments."),
                                 QStringLiteral("[args...]"));

    if (!parser.parse(QCoreApplication::arguments()))
        return fail(Usage, parser.errorText());
    if (parser.isSet(help)) {
        printHelp(parser);
        return Ok;
    }
    if (parser.isSet(version)) {
        out() << "kovactl " << QCoreApplication::applicationVersion() << '\n';
        return Ok;
    }

    int timeoutMs = DefaultTimeoutMs;
    if (parser.isSet(timeout)) {
        bool ok = false;
        timeoutMs = parser.value(timeout).toInt(&ok);
        if (!ok || timeoutMs < 1 || timeoutMs > 600000)
            return fail(Usage, QStringLiteral("--timeout takes 1 to 600000 ms"));
    }
    const QStringList pos = parser.positionalArguments();
    if (pos.isEmpty())
        return fail(Usage, QStringLiteral("no command given (kovactl --help)"));
    const QString command = pos.first();
    if (command == QLatin1String("search")) {
        if (pos.size() != 1)
            return fail(Usage, QStringLiteral("usage: kovactl search [--timeout ms] [--json]"));
        return runSearch(timeoutMs, parser.isSet(json));
    }
    if (command == QLatin1String("state")) {
        if (pos.size() != 2)
            return fail(Usage, QStringLiteral("usage: kovactl state ADDRESS [--timeout ms] [--json]"));
        return runState(pos.at(1), timeoutMs, parser.isSet(json));
    }
    if (command == QLatin1String("send")) {
        if (pos.size() < 3)
            return fail(Usage, QStringLiteral("usage: kovactl send ADDRESS COMMAND [ARGS]"));
        if (parser.isSet(json))
            return fail(Usage, QStringLiteral("send prints nothing: --json does not apply"));
        return runSend(pos.at(1), pos.at(2), pos.mid(3), timeoutMs);
    }
    return fail(Usage, QStringLiteral("unknown command '%1' (kovactl --help)").arg(command));
}
