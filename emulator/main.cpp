#include "emulator.h"
#include "emulatorlog.h"
#include "familyregistry.h"
#include "unitplan.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QSet>
#include <QTextStream>
#include <cstdio>
#include <sys/resource.h>

namespace {

int fail(const QString &message)
{
    std::fprintf(stderr, "kova-emulator: %s\n", qPrintable(message));
    return 2;
}

// Each unit needs a socket per board: 1024 units with HIS boards are past the usual 1024 fds.
void raiseFileLimit()
{
    rlimit limit{};
    if (getrlimit(RLIMIT_NOFILE, &limit) == 0 && limit.rlim_cur < limit.rlim_max) {
        limit.rlim_cur = limit.rlim_max;
        setrlimit(RLIMIT_NOFILE, &limit);
    }
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("kova-emulator"));

    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Plays RVX units on UDP port 7000."));
    parser.addHelpOption();
    const QCommandLineOption unitOpt(
        QStringLiteral("unit"),
        QStringLiteral("A unit: type=0x21,name=Studio_A,id=0a0b0c,ip=A,his=A|auto|none,"
                       "hisclass=e0|e5,fault=F[+F]; 8000 series also serial=HEX,"
                       "state=first|long|short. Repeatable."),
        QStringLiteral("unit"));
    const QCommandLineOption countOpt(QStringLiteral("count"),
                                      QStringLiteral("Generate N units after the --unit ones."),
                                      QStringLiteral("n"));
    const QCommandLineOption typeOpt(QStringLiteral("type"),
                                     QStringLiteral("Child type of generated units (0x21)."),
                                     QStringLiteral("byte"), QStringLiteral("0x21"));
    const QCommandLineOption hisClassOpt(QStringLiteral("hisclass"),
                                         QStringLiteral("HIS class byte of generated units (e0)."),
                                         QStringLiteral("byte"), QStringLiteral("e0"));
    const QCommandLineOption noHisOpt(QStringLiteral("no-his"),
                                      QStringLiteral("Generated units have no HIS board."));
    const QCommandLineOption delayOpt(QStringLiteral("reply-delay"),
                                      QStringLiteral("Delay every reply by MS."), QStringLiteral("ms"),
                                      QStringLiteral("0"));
    const QCommandLineOption spreadOpt(QStringLiteral("reply-spread"),
                                       QStringLiteral("Spread search replies of the units over MS."),
                                       QStringLiteral("ms"), QStringLiteral("0"));
    const QCommandLineOption faultOpt(QStringLiteral("fault"),
                                      QStringLiteral("Fault for every unit: duplicate, his-first, split, "
                                                     "bad-checksum, silent. Repeatable."),
                                      QStringLiteral("name"));
    const QCommandLineOption logOpt(QStringLiteral("log"), QStringLiteral("Also log frames to FILE."),
                                    QStringLiteral("file"));
    const QCommandLineOption stateOpt(QStringLiteral("state-dir"),
                                      QStringLiteral("Write DIR/<main-ip>.state after every change."),
                                      QStringLiteral("dir"));
    const QCommandLineOption readyOpt(QStringLiteral("ready-file"),
                                      QStringLiteral("Create FILE once every socket is bound."),
                                      QStringLiteral("file"));
    const QCommandLineOption planOpt(
        QStringLiteral("print-plan"),
        QStringLiteral("Print '<main> <his|->' per unit and exit without binding."));
    parser.addOptions({unitOpt, countOpt, typeOpt, hisClassOpt, noHisOpt, delayOpt, spreadOpt, faultOpt,
                       logOpt, stateOpt, readyOpt, planOpt});
    parser.process(app);

    QList<UnitConfig> units;
    QString error;
    for (const QString &description : parser.values(unitOpt)) {
        UnitConfig unit;
        if (!UnitPlan::parseUnit(description, units.size(), &unit, &error))
            return fail(QStringLiteral("--unit %1: %2").arg(description, error));
        units.append(unit);
    }
    if (parser.isSet(countOpt)) {
        bool ok = false;
        const int count = parser.value(countOpt).toInt(&ok);
        uint8_t type = 0;
        uint8_t hisClass = 0;
        if (!ok || count < 0 || units.size() + count > UnitPlan::kMaxUnits)
            return fail(QStringLiteral("bad --count"));
        if (!UnitPlan::parseByte(parser.value(typeOpt), &type) || type == 0xFF)
            return fail(QStringLiteral("bad --type"));
        if (!UnitPlan::parseByte(parser.value(hisClassOpt), &hisClass) ||
            (hisClass != 0xE0 && hisClass != 0xE5))
            return fail(QStringLiteral("bad --hisclass"));
        for (int i = 0; i < count; ++i) {
            UnitConfig unit = UnitPlan::defaults(units.size());
            unit.childType = type;
            unit.hisClass = hisClass;
            if (parser.isSet(noHisOpt) || !UnitPlan::modelHasHis(type))
                unit.hisIp = QHostAddress();
            units.append(unit);
        }
    }
    for (const QString &name : parser.values(faultOpt)) {
        Fault fault;
        if (!UnitPlan::parseFault(name, &fault))
            return fail(QStringLiteral("unknown fault '%1'").arg(name));
        for (UnitConfig &unit : units)
            unit.faults.insert(fault);
    }
    if (units.isEmpty())
        return fail(QStringLiteral("no units (use --unit or --count)"));
    QSet<quint32> addresses;
    for (const UnitConfig &unit : qAsConst(units)) {
        for (const QHostAddress &a : {unit.mainIp, unit.hisIp}) {
            if (a.isNull())
                continue;
            if (addresses.contains(a.toIPv4Address()))
                return fail(QStringLiteral("address %1 used twice").arg(a.toString()));
            addresses.insert(a.toIPv4Address());
        }
    }

    if (parser.isSet(planOpt)) {
        QTextStream out(stdout);
        for (const UnitConfig &unit : qAsConst(units))
            out << unit.mainIp.toString() << ' '
                << (unit.hasHis() ? unit.hisIp.toString() : QStringLiteral("-")) << '\n';
        return 0;
    }

    EmulatorOptions options;
    bool ok = false;
    options.replyDelayMs = parser.value(delayOpt).toInt(&ok);
    if (!ok || options.replyDelayMs < 0)
        return fail(QStringLiteral("bad --reply-delay"));
    options.replySpreadMs = parser.value(spreadOpt).toInt(&ok);
    if (!ok || options.replySpreadMs < 0)
        return fail(QStringLiteral("bad --reply-spread"));
    options.stateDir = parser.value(stateOpt);
    if (!options.stateDir.isEmpty() && !QDir().mkpath(options.stateDir))
        return fail(QStringLiteral("cannot create %1").arg(options.stateDir));

    EmulatorLog log;
    if (parser.isSet(logOpt) && !log.open(parser.value(logOpt), &error))
        return fail(QStringLiteral("--log: %1").arg(error));

    raiseFileLimit();

    Emulator emulator(units, options, &log);
    if (!emulator.start(&error))
        return fail(error);
    for (const UnitConfig &unit : qAsConst(units))
        log.line(QStringLiteral("unit %1 type=0x%2 family=%3 his=%4")
                     .arg(unit.mainIp.toString())
                     .arg(unit.childType, 2, 16, QLatin1Char('0'))
                     .arg(FamilyRegistry::family(unit.childType),
                          unit.hasHis() ? unit.hisIp.toString() : QStringLiteral("-")));
    if (parser.isSet(readyOpt)) {
        QFile ready(parser.value(readyOpt));
        if (!ready.open(QIODevice::WriteOnly))
            return fail(QStringLiteral("cannot create %1").arg(ready.fileName()));
    }
    std::fputs("ready\n", stdout);
    std::fflush(stdout);
    return app.exec();
}
