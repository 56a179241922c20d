#include "huboptions.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

const char *const HubOptions::DefaultConfig = "/etc/kova/hub.conf";

namespace {

// Each key with its value name and help; the order of --help and of the manual.
struct KeyInfo
{
    const char *key;
    const char *value; // null for a switch
    const char *help;
};
const KeyInfo Keys[] = {
    {"unit", "ADDRESS", "Hold the unit whose main board answers from ADDRESS (repeatable)."},
    {"all", nullptr, "Hold every unit the search finds; the search runs again every 30 s."},
    {"follow", "MS", "Ask each unit for its state every MS ms (0: off; default 500)."},
    {"osc-port", "PORT", "Listen for OSC commands on UDP PORT (0: off, the default)."},
    {"osc-bind", "ADDRESS", "Listen for OSC on ADDRESS (default 127.0.0.1)."},
    {"tsl", "HOST:PORT", "Send tally to HOST:PORT (repeatable)."},
    {"tsl-offset", "ADDRESS=N", "Number the tally displays of the unit at ADDRESS from N + 1."},
    {"mqtt", "URL",
     "Publish to and take commands from the broker at mqtt://[user@]host[:port] or mqtts://..."},
    {"mqtt-ca", "FILE", "The CA certificate that signed the broker's (mqtts:// only)."},
    {"mqtt-password-file", "FILE",
     "Read the broker password from FILE's first line (else KOVA_MQTT_PASSWORD)."},
    {"station", "NAME", "The station's name in the topics, [a-z0-9-] (default: the host name)."},
};

// A list key's values: separated by commas or blanks.
QStringList splitList(const QString &value)
{
    static const QRegularExpression separators(QStringLiteral("[,\\s]+"));
    QStringList out = value.split(separators, Qt::SkipEmptyParts);
    return out;
}

bool readSwitch(const QString &text, bool *on)
{
    const QString t = text.trimmed().toLower();
    if (t == QLatin1String("true") || t == QLatin1String("yes") || t == QLatin1String("on") ||
        t == QLatin1String("1"))
        *on = true;
    else if (t == QLatin1String("false") || t == QLatin1String("no") || t == QLatin1String("off") ||
             t == QLatin1String("0"))
        *on = false;
    else
        return false;
    return true;
}

} // namespace

QStringList HubOptions::keys()
{
    QStringList out;
    for (const KeyInfo &k : Keys)
        out << QLatin1String(k.key);
    return out;
}

bool HubOptions::isListKey(const QString &key)
{
    return key == QLatin1String("unit") || key == QLatin1String("tsl") || key == QLatin1String("tsl-offset");
}

QString HubOptions::set(const QString &key, const QString &value)
{
    const QString v = value.trimmed();
    if (key == QLatin1String("unit")) {
        for (const QString &address : splitList(v)) {
            QString error = live.addOpenAddress(address);
            if (!error.isEmpty())
                return error;
            if (!units.contains(address))
                units << address;
        }
        return QString();
    }
    if (key == QLatin1String("tsl")) {
        for (const QString &target : splitList(v)) {
            const QString error = live.addTslTarget(target);
            if (!error.isEmpty())
                return error;
        }
        return QString();
    }
    if (key == QLatin1String("tsl-offset")) {
        for (const QString &offset : splitList(v)) {
            const QString error = live.addTslOffset(offset);
            if (!error.isEmpty())
                return error;
        }
        return QString();
    }
    if (key == QLatin1String("all")) {
        if (!readSwitch(v, &all))
            return QStringLiteral("all: \"%1\" is not true or false").arg(value);
        return QString();
    }
    if (key == QLatin1String("follow"))
        return live.setFollowMs(v);
    if (key == QLatin1String("osc-port"))
        return live.setOscPort(v);
    if (key == QLatin1String("osc-bind"))
        return live.setOscBind(v);
    if (key == QLatin1String("mqtt"))
        return live.setMqttUrl(v);
    if (key == QLatin1String("mqtt-ca")) {
        live.mqttCa = v;
        return QString();
    }
    if (key == QLatin1String("mqtt-password-file")) {
        live.mqttPasswordFile = v;
        return QString();
    }
    if (key == QLatin1String("station"))
        return live.setStation(v);
    if (key == QLatin1String("password") || key == QLatin1String("mqtt-password"))
        return QStringLiteral(
                   "%1: the broker password is read from mqtt-password-file or KOVA_MQTT_PASSWORD only")
            .arg(key);
    return QStringLiteral("unknown key \"%1\"").arg(key);
}

QString HubOptions::readConfig(const QByteArray &text, const QString &name)
{
    if (text.size() > MaxConfigBytes)
        return QStringLiteral("%1: larger than %2 bytes").arg(name).arg(MaxConfigBytes);
    const QList<QByteArray> lines = text.split('\n');
    for (int n = 0; n < lines.size(); ++n) {
        const QString line = QString::fromUtf8(lines.at(n)).trimmed();
        const auto refuse = [&](const QString &why) {
            return QStringLiteral("%1:%2: %3").arg(name).arg(n + 1).arg(why);
        };
        if (line.isEmpty() || line.startsWith(QLatin1Char('#')) || line.startsWith(QLatin1Char(';')))
            continue;
        // Sections are allowed ("[hub]") and mean nothing: every key is the hub's.
        if (line.startsWith(QLatin1Char('[')) && line.endsWith(QLatin1Char(']')))
            continue;
        const int eq = line.indexOf(QLatin1Char('='));
        if (eq <= 0)
            return refuse(QStringLiteral("not KEY = VALUE"));
        const QString key = line.left(eq).trimmed();
        QString value = line.mid(eq + 1).trimmed();
        if (value.size() >= 2 && value.startsWith(QLatin1Char('"')) && value.endsWith(QLatin1Char('"')))
            value = value.mid(1, value.size() - 2);
        if (key == QLatin1String("config"))
            return refuse(QStringLiteral("a config file cannot name another"));
        const QString error = set(key, value);
        if (!error.isEmpty())
            return refuse(error);
    }
    return QString();
}

QString HubOptions::check() const
{
    if (units.isEmpty() && !all)
        return QStringLiteral("no unit to hold: give --unit ADDRESS or --all");
    if (!live.mqttCa.isEmpty() && !live.mqttUrl.startsWith(QLatin1String("mqtts://")))
        return QStringLiteral("mqtt-ca is for an mqtts:// broker only");
    if (live.mqttUrl.isEmpty() && (!live.mqttPasswordFile.isEmpty() || !live.station.isEmpty()))
        return QStringLiteral("mqtt-password-file and station need --mqtt URL");
    return QString();
}

HubOptions::Outcome HubOptions::parse(const QStringList &arguments, HubOptions *options, QString *message)
{
    const auto setMessage = [message](const QString &text) {
        if (message)
            *message = text;
    };
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral(
        "Holds links to RVX video switchers with no display, and serves them by OSC, tally and MQTT."));
    const QCommandLineOption help = parser.addHelpOption();
    const QCommandLineOption version = parser.addVersionOption();
    QList<QCommandLineOption> known;
    for (const KeyInfo &k : Keys) {
        known << (k.value ? QCommandLineOption(QLatin1String(k.key), QLatin1String(k.help),
                                               QLatin1String(k.value))
                          : QCommandLineOption(QLatin1String(k.key), QLatin1String(k.help)));
    }
    const QCommandLineOption config(
        QStringLiteral("config"),
        QStringLiteral("Read options from the INI FILE (default %1, if it exists); the command line wins.")
            .arg(QLatin1String(DefaultConfig)),
        QStringLiteral("FILE"));
    parser.addOptions(known);
    parser.addOption(config);

    const Outcome common = LiveOptions::parseCommon(parser, arguments, help, version, message);
    if (common != Outcome::Run)
        return common;

    HubOptions out;
    if (parser.isSet(config))
        out.configFile = parser.value(config);
    // The default file may be missing (everything on the command line); a file named must be there.
    if (parser.isSet(config) || QFileInfo::exists(out.configFile)) {
        QFile file(out.configFile);
        if (!file.open(QIODevice::ReadOnly)) {
            setMessage(QStringLiteral("%1: %2").arg(out.configFile, file.errorString()));
            return Outcome::Error;
        }
        const QString error = out.readConfig(file.read(MaxConfigBytes + 1), out.configFile);
        if (!error.isEmpty()) {
            setMessage(error);
            return Outcome::Error;
        }
    }

    for (const QCommandLineOption &o : qAsConst(known)) {
        const QString key = o.names().first();
        if (!parser.isSet(o))
            continue;
        if (o.valueName().isEmpty()) {
            out.all = true;
            continue;
        }
        if (key == QLatin1String("unit")) {
            out.units.clear();
            out.live.openAddresses.clear();
        } else if (key == QLatin1String("tsl")) {
            out.live.tslTargets.clear();
        } else if (key == QLatin1String("tsl-offset")) {
            out.live.tslOffsets.clear();
        }
        const QStringList values = isListKey(key) ? parser.values(o) : QStringList{parser.values(o).last()};
        for (const QString &value : values) {
            const QString error = out.set(key, value);
            if (!error.isEmpty()) {
                setMessage(QStringLiteral("--%1").arg(
                    error.startsWith(key) ? error : key + QStringLiteral(": ") + error));
                return Outcome::Error;
            }
        }
    }
    const QString error = out.check();
    if (!error.isEmpty()) {
        setMessage(error);
        return Outcome::Error;
    }
    *options = out;
    return Outcome::Run;
}

QStringList HubOptions::restartKeysChanged(const HubOptions &newer) const
{
    QStringList out;
    if (live.oscPort != newer.live.oscPort)
        out << QStringLiteral("osc-port");
    if (live.oscBind != newer.live.oscBind)
        out << QStringLiteral("osc-bind");
    if (live.mqttUrl != newer.live.mqttUrl)
        out << QStringLiteral("mqtt");
    if (live.mqttCa != newer.live.mqttCa)
        out << QStringLiteral("mqtt-ca");
    if (live.mqttPasswordFile != newer.live.mqttPasswordFile)
        out << QStringLiteral("mqtt-password-file");
    if (live.station != newer.live.station)
        out << QStringLiteral("station");
    return out;
}
