#include "liveoptions.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QHostAddress>
#include <QSettings>

const char *const LiveOptions::Organisation = "KOVA";
const char *const LiveOptions::Application = "kova";

namespace {

bool readPort(const QString &text, bool allowZero, quint16 *port)
{
    bool ok = false;
    const uint value = text.trimmed().toUInt(&ok);
    if (!ok || value > 65535 || (value == 0 && !allowZero))
        return false;
    *port = quint16(value);
    return true;
}

// Dotted IPv4 only: the switchers' network is plain IPv4, and a name would need a lookup.
bool isIPv4(const QString &text)
{
    QHostAddress address;
    return address.setAddress(text) && address.protocol() == QAbstractSocket::IPv4Protocol &&
           text.count(QLatin1Char('.')) == 3;
}

const QString PortKey = QStringLiteral("live/oscPort");
const QString BindKey = QStringLiteral("live/oscBind");
const QString TslKey = QStringLiteral("live/tslTargets");
const QString FollowKey = QStringLiteral("live/followMs");
const QString SideBySideKey = QStringLiteral("panels/sideBySide");

} // namespace

QString LiveOptions::setOscPort(const QString &text)
{
    if (!readPort(text, true, &oscPort))
        return QStringLiteral("OSC port \"%1\" is not a port from 0 (off) to 65535").arg(text);
    return QString();
}

QString LiveOptions::setOscBind(const QString &text)
{
    if (!isIPv4(text.trimmed()))
        return QStringLiteral("OSC address \"%1\" is not an IPv4 address").arg(text);
    oscBind = text.trimmed();
    return QString();
}

QString LiveOptions::addTslTarget(const QString &text)
{
    const QString target = text.trimmed();
    const int colon = target.lastIndexOf(QLatin1Char(':'));
    quint16 port = 0;
    if (colon < 0 || !isIPv4(target.left(colon)) || !readPort(target.mid(colon + 1), false, &port))
        return QStringLiteral("tally target \"%1\" is not an IPv4 HOST:PORT").arg(text);
    tslTargets.append(target);
    return QString();
}

QString LiveOptions::setFollowMs(const QString &text)
{
    bool ok = false;
    const int value = text.trimmed().toInt(&ok);
    if (!ok || (value != 0 && (value < MinFollowMs || value > MaxFollowMs)))
        return QStringLiteral("follow interval \"%1\" is not 0 (off) or %2 to %3 ms")
            .arg(text)
            .arg(MinFollowMs)
            .arg(MaxFollowMs);
    followMs = value;
    return QString();
}

QString LiveOptions::addOpenAddress(const QString &text)
{
    if (!isIPv4(text.trimmed()))
        return QStringLiteral("unit address \"%1\" is not an IPv4 address").arg(text);
    if (!openAddresses.contains(text.trimmed()))
        openAddresses.append(text.trimmed());
    return QString();
}

QString LiveOptions::addTslOffset(const QString &text)
{
    const int eq = text.indexOf(QLatin1Char('='));
    bool ok = false;
    const int offset = eq < 0 ? -1 : text.mid(eq + 1).trimmed().toInt(&ok);
    // The index is 16 bits wide, and the unit's inputs go on top of the offset.
    if (eq < 0 || !isIPv4(text.left(eq).trimmed()) || !ok || offset < 0 || offset > 65000)
        return QStringLiteral("tally offset \"%1\" is not ADDRESS=N with N from 0 to 65000").arg(text);
    tslOffsets.insert(text.left(eq).trimmed(), offset);
    return QString();
}

LiveOptions::Outcome LiveOptions::parseArguments(const QStringList &arguments, QString *message)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Control panel for RVX video switchers."));
    const QCommandLineOption help = parser.addHelpOption();
    const QCommandLineOption version = parser.addVersionOption();
    const QCommandLineOption port(QStringLiteral("osc-port"),
                                  QStringLiteral("Listen for OSC commands on UDP PORT (0: off)."),
                                  QStringLiteral("PORT"));
    const QCommandLineOption bind(QStringLiteral("osc-bind"),
                                  QStringLiteral("Listen for OSC on ADDRESS (default 127.0.0.1)."),
                                  QStringLiteral("ADDRESS"));
    const QCommandLineOption tsl(QStringLiteral("tsl"),
                                 QStringLiteral("Send tally to HOST:PORT (may be given more than once)."),
                                 QStringLiteral("HOST:PORT"));
    const QCommandLineOption follow(QStringLiteral("follow"),
                                    QStringLiteral("Ask the open unit for its state every MS ms (0: off)."),
                                    QStringLiteral("MS"));
    const QCommandLineOption sideBySideOption(
        QStringLiteral("side-by-side"),
        QStringLiteral("Open each unit in a window of its own; the search window stays up."));
    const QCommandLineOption open(
        QStringLiteral("open"),
        QStringLiteral("Open the panel of the unit at ADDRESS as soon as the search finds "
                       "it (may be given more than once; two or more open side by side)."),
        QStringLiteral("ADDRESS"));
    const QCommandLineOption tslOffset(
        QStringLiteral("tsl-offset"),
        QStringLiteral(
            "Number the tally displays of the unit at ADDRESS from N + 1 (default: (unit number - 1) "
            "* 100)."),
        QStringLiteral("ADDRESS=N"));
    parser.addOptions({port, bind, tsl, follow, sideBySideOption, open, tslOffset});

    QString error;
    const auto setMessage = [message](const QString &text) {
        if (message)
            *message = text;
    };
    if (!parser.parse(arguments)) {
        setMessage(parser.errorText());
        return Outcome::Error;
    }
    if (parser.isSet(help)) {
        setMessage(parser.helpText());
        return Outcome::Help;
    }
    if (parser.isSet(version)) {
        setMessage(QCoreApplication::applicationName() + QLatin1Char(' ') +
                   QCoreApplication::applicationVersion());
        return Outcome::Version;
    }
    if (!parser.positionalArguments().isEmpty())
        error = QStringLiteral("unexpected argument \"%1\"").arg(parser.positionalArguments().first());
    if (error.isEmpty() && parser.isSet(port))
        error = setOscPort(parser.value(port));
    if (error.isEmpty() && parser.isSet(bind))
        error = setOscBind(parser.value(bind));
    if (error.isEmpty() && parser.isSet(tsl)) {
        tslTargets.clear();
        for (const QString &target : parser.values(tsl))
            if (error.isEmpty())
                error = addTslTarget(target);
    }
    if (error.isEmpty() && parser.isSet(follow))
        error = setFollowMs(parser.value(follow));
    if (parser.isSet(sideBySideOption))
        sideBySide = true;
    for (const QString &address : parser.values(open))
        if (error.isEmpty())
            error = addOpenAddress(address);
    for (const QString &offset : parser.values(tslOffset))
        if (error.isEmpty())
            error = addTslOffset(offset);
    setMessage(error);
    return error.isEmpty() ? Outcome::Run : Outcome::Error;
}

LiveOptions LiveOptions::load(QSettings &settings)
{
    LiveOptions options;
    if (settings.contains(PortKey))
        options.setOscPort(settings.value(PortKey).toString());
    if (settings.contains(BindKey))
        options.setOscBind(settings.value(BindKey).toString());
    for (const QString &target : settings.value(TslKey).toStringList())
        options.addTslTarget(target);
    if (settings.contains(FollowKey))
        options.setFollowMs(settings.value(FollowKey).toString());
    options.sideBySide = settings.value(SideBySideKey, false).toBool();
    return options;
}

LiveOptions LiveOptions::load()
{
    QSettings settings(QString::fromLatin1(Organisation), QString::fromLatin1(Application));
    return load(settings);
}

void LiveOptions::save(QSettings &settings) const
{
    settings.setValue(PortKey, oscPort);
    settings.setValue(BindKey, oscBind);
    settings.setValue(TslKey, tslTargets);
    settings.setValue(FollowKey, followMs);
    settings.setValue(SideBySideKey, sideBySide);
}

void LiveOptions::save() const
{
    QSettings settings(QString::fromLatin1(Organisation), QString::fromLatin1(Application));
    save(settings);
}
