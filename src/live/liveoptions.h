#pragma once

#include <QMap>
#include <QString>
#include <QStringList>

class QCommandLineOption;
class QCommandLineParser;
class QSettings;

// What the live features are told to do: the OSC remote's port and address, where tally goes
// and how often the unit's state is followed. Everything is off by default, and off means the
// program opens, binds and sends nothing more than without them.
struct LiveOptions
{
    static constexpr int MinFollowMs = 100;
    static constexpr int MaxFollowMs = 60000;
    // Where the settings live; the program sets no organisation of its own.
    static const char *const Organisation;
    static const char *const Application;

    quint16 oscPort = 0; // 0: no OSC remote
    QString oscBind = QStringLiteral("127.0.0.1");
    QStringList tslTargets; // "HOST:PORT", HOST an IPv4 address
    int followMs = 0;       // 0: off
    // Each unit's panel in a window of its own, the search window staying up.
    bool sideBySide = false;
    // Units whose panels open as soon as the search finds them, in this order (this run only).
    QStringList openAddresses;
    // Tally index offsets by the unit's main-board address (this run only); a unit without
    // one gets (number - 1) * 100.
    QMap<QString, int> tslOffsets;
    // The production's MQTT broker, "mqtt://[user@]host[:port]" or "mqtts://..."; empty: off.
    QString mqttUrl;
    QString mqttCa;           // the CA certificate file for mqtts://
    QString mqttPasswordFile; // the broker password's file; never the password itself
    QString station;          // empty: the host's name

    // Side by side in effect: asked for, or more than one unit to open.
    bool panelsSideBySide() const { return sideBySide || openAddresses.size() > 1; }

    // Each takes one value as typed and returns why it is refused, empty when it is taken.
    QString setOscPort(const QString &text);
    QString setOscBind(const QString &text);
    QString addTslTarget(const QString &text);
    QString setFollowMs(const QString &text);
    QString addOpenAddress(const QString &text);
    QString addTslOffset(const QString &text); // ADDRESS=N
    QString setMqttUrl(const QString &text);   // empty: off
    QString setStation(const QString &text);   // empty: the host's name
    // The station's name in effect.
    QString stationName() const;

    enum class Outcome
    {
        Run,
        Help,
        Version,
        Error
    };
    // Reads the command line (arguments()[0] is the program) over what the options hold, so
    // that what is given there wins for this run; --tsl replaces the saved targets. `message`
    // gets the help or version text, or the error.
    Outcome parseArguments(const QStringList &arguments, QString *message);
    // What every program's command line goes through first: the parse itself, the help and
    // version options and no stray argument. Run when the program's own options are to be read;
    // otherwise `message` says why not.
    static Outcome parseCommon(QCommandLineParser &parser, const QStringList &arguments,
                               const QCommandLineOption &help, const QCommandLineOption &version,
                               QString *message);

    // Values saved by hand that would be refused are left at their defaults.
    static LiveOptions load(QSettings &settings);
    static LiveOptions load();
    void save(QSettings &settings) const;
    void save() const;

    friend bool operator==(const LiveOptions &a, const LiveOptions &b)
    {
        return a.oscPort == b.oscPort && a.oscBind == b.oscBind && a.tslTargets == b.tslTargets &&
               a.followMs == b.followMs && a.sideBySide == b.sideBySide &&
               a.openAddresses == b.openAddresses && a.tslOffsets == b.tslOffsets && a.mqttUrl == b.mqttUrl &&
               a.mqttCa == b.mqttCa && a.mqttPasswordFile == b.mqttPasswordFile && a.station == b.station;
    }
};
