#include "liveoptions.h"

#include "mqttclient.h"
#include "mqttstation.h"

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
const QString MqttUrlKey = QStringLiteral("mqtt/url");
const QString MqttCaKey = QStringLiteral("mqtt/ca");
const QString MqttPasswordFileKey = QStringLiteral("mqtt/passwordFile");
const QString StationKey = QStringLiteral("mqtt/station");

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

QString LiveOptions::setMqttUrl(const QString &text)
{
    const QString url = text.trimmed();
    QString why;
    if (!url.isEmpty() && !MqttEndpoint::fromUrl(url, &why))
        return QStringLiteral("MQTT broker \"%1\": %2").arg(text, why);
    mqttUrl = url;
    return QString();
}

QString LiveOptions::setStation(const QString &text)
{
    const QString name = text.trimmed();
    if (!name.isEmpty() && !MqttStation::validStation(name))
        return QStringLiteral("station \"%1\" is not a name of a-z, 0-9 and '-'").arg(text);
    station = name;
    return QString();
}

QString LiveOptions::stationName() const
{
    return station.isEmpty() ? MqttStation::defaultStation() : station;
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
    const QCommandLineOption mqtt(
        QStringLiteral("mqtt"),
        QStringLiteral("Publish the open units on the MQTT broker at URL (mqtt://[user@]host[:port] "
                       "or mqtts://...) and take commands from it."),
        QStringLiteral("URL"));
    const QCommandLineOption mqttCa(QStringLiteral("mqtt-ca"),
                                    QStringLiteral("Trust the broker's certificate from the CA in FILE "
                                                   "(mqtts://)."),
                                    QStringLiteral("FILE"));
    const QCommandLineOption mqttPasswordFile(
        QStringLiteral("mqtt-password-file"),
        QStringLiteral("Read the broker password from FILE (else $KOVA_MQTT_PASSWORD)."),
        QStringLiteral("FILE"));
    const QCommandLineOption stationOption(
        QStringLiteral("station"), QStringLiteral("Publish under kova/NAME/ (default: this host's name)."),
        QStringLiteral("NAME"));
    parser.addOptions({port, bind, tsl, follow, sideBySideOption, open, tslOffset, mqtt, mqttCa,
                       mqttPasswordFile, stationOption});

    QString error;
    const auto setMessage = [message](const QString &text) {
        if (message)
            *message = text;
    };
    const Outcome common = parseCommon(parser, arguments, help, version, message);
    if (common != Outcome::Run)
        return common;
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
    if (error.isEmpty() && parser.isSet(mqtt))
        error = setMqttUrl(parser.value(mqtt));
    if (parser.isSet(mqttCa))
        this->mqttCa = parser.value(mqttCa);
    if (parser.isSet(mqttPasswordFile))
        this->mqttPasswordFile = parser.value(mqttPasswordFile);
    if (error.isEmpty() && parser.isSet(stationOption))
        error = setStation(parser.value(stationOption));
    setMessage(error);
    return error.isEmpty() ? Outcome::Run : Outcome::Error;
}

LiveOptions::Outcome LiveOptions::parseCommon(QCommandLineParser &parser, const QStringList &arguments,
                                              const QCommandLineOption &help,
                                              const QCommandLineOption &version, QString *message)
{
    QString text;
    Outcome outcome = Outcome::Run;
    if (!parser.parse(arguments)) {
        text = parser.errorText();
        outcome = Outcome::Error;
    } else if (parser.isSet(help)) {
        text = parser.helpText();
        outcome = Outcome::Help;
    } else if (parser.isSet(version)) {
        text =
            QCoreApplication::applicationName() + QLatin1Char(' ') + QCoreApplication::applicationVersion();
        outcome = Outcome::Version;
    } else if (!parser.positionalArguments().isEmpty()) {
        text = QStringLiteral("unexpected argument \"%1\"").arg(parser.positionalArguments().first());
        outcome = Outcome::Error;
    }
    if (message && outcome != Outcome::Run)
        *message = text;
    return outcome;
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
    options.setMqttUrl(settings.value(MqttUrlKey).toString());
    options.mqttCa = settings.value(MqttCaKey).toString();
    options.mqttPasswordFile = settings.value(MqttPasswordFileKey).toString();
    options.setStation(settings.value(StationKey).toString());
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
    settings.setValue(MqttUrlKey, mqttUrl);
    settings.setValue(MqttCaKey, mqttCa);
    settings.setValue(MqttPasswordFileKey, mqttPasswordFile);
    settings.setValue(StationKey, station);
}

void LiveOptions::save() const
{
    QSettings settings(QString::fromLatin1(Organisation), QString::fromLatin1(Application));
    save(settings);
}
