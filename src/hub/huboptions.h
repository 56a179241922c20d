#pragma once

#include "live/liveoptions.h"

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QStringList>

// What kova-hub is told to do, from the command line and from its INI file, read into one
// value. The file's keys are the long options' names ("unit", "osc-port", "mqtt", ...); a list
// key may be given on several lines or as one line of values separated by commas or blanks.
// What the command line gives wins over the file: a list given there replaces the file's.
struct HubOptions
{
    static const char *const DefaultConfig; // /etc/kova/hub.conf
    static constexpr int DefaultFollowMs = 500;
    // A file larger than this is refused unread: a config is a few lines.
    static constexpr int MaxConfigBytes = 64 * 1024;

    QStringList units; // main-board addresses, in the order given
    bool all = false;  // every unit the search finds
    // The OSC port and address, the tally targets and offsets, the follow interval and the
    // broker settings, checked by the same rules as the GUI's options (followMs starts at
    // DefaultFollowMs here).
    LiveOptions live;
    QString configFile = QString::fromLatin1(DefaultConfig);

    HubOptions() { live.followMs = DefaultFollowMs; }

    // One key with one value as the file or the command line gives it (a list key adds to its
    // list); the reason it is refused, empty when taken.
    QString set(const QString &key, const QString &value);
    // The file's text over these options; the reason with its line number when a line is
    // refused. `name` names the file in messages.
    QString readConfig(const QByteArray &text, const QString &name);
    // What the options as a whole lack (no unit and no --all, a CA without mqtts, ...).
    QString check() const;

    using Outcome = LiveOptions::Outcome;
    // The command line (arguments[0] is the program) and the file it names, or the default
    // file when there is one. `message` gets the help or version text, or the error.
    static Outcome parse(const QStringList &arguments, HubOptions *options, QString *message);

    // Keys whose change takes a restart: the sockets and the broker connection are made once.
    QStringList restartKeysChanged(const HubOptions &newer) const;

    static QStringList keys();
    static bool isListKey(const QString &key);
};
