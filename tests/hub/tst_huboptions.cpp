// kova-hub's options: the command line and the INI file read into one value, the file's keys
// being the long options' names, the command line winning; every refusal names what is wrong.
#include "hub/huboptions.h"

#include <QTemporaryDir>
#include <QtTest>

namespace {

// The options as one comparable line.
QString summary(const HubOptions &o)
{
    QStringList offsets;
    for (auto it = o.live.tslOffsets.cbegin(); it != o.live.tslOffsets.cend(); ++it)
        offsets << QStringLiteral("%1=%2").arg(it.key()).arg(it.value());
    return QStringLiteral(
               "units=%1 all=%2 follow=%3 osc=%4@%5 tsl=%6 offsets=%7 mqtt=%8 ca=%9 pwfile=%10 station=%11")
        .arg(o.units.join(','))
        .arg(int(o.all))
        .arg(o.live.followMs)
        .arg(o.live.oscPort)
        .arg(o.live.oscBind, o.live.tslTargets.join(','), offsets.join(','), o.live.mqttUrl, o.live.mqttCa,
             o.live.mqttPasswordFile, o.live.station);
}

} // namespace

class tst_HubOptions : public QObject
{
    Q_OBJECT
private slots:
    void parse_data();
    void parse();
    void helpListsEveryKey();
    void restartKeys();
};

void tst_HubOptions::parse_data()
{
    QTest::addColumn<QStringList>("args");
    QTest::addColumn<QString>("file"); // null: no --config
    QTest::addColumn<QString>("want"); // the summary, or "error: <part of the message>"

    const QString base =
        QStringLiteral("all=0 follow=500 osc=0@127.0.0.1 tsl= offsets= mqtt= ca= pwfile= station=");
    auto row = [](const char *name, const QStringList &args, const QString &file, const QString &want) {
        QTest::newRow(name) << args << file << want;
    };
    row("units in their order, each once", {"--unit", "10.0.0.2", "--unit", "10.0.0.1", "--unit", "10.0.0.2"},
        QString(), "units=10.0.0.2,10.0.0.1 " + base);
    row("all with the defaults", {"--all"}, QString(),
        "units= all=1 follow=500 osc=0@127.0.0.1 tsl= offsets= mqtt= ca= pwfile= station=");
    row("every option",
        {"--unit",
         "10.0.0.1",
         "--follow",
         "0",
         "--osc-port",
         "9000",
         "--osc-bind",
         "0.0.0.0",
         "--tsl",
         "127.0.0.1:9100",
         "--tsl",
         "10.0.0.9:9101",
         "--tsl-offset",
         "10.0.0.1=40",
         "--mqtt",
         "mqtts://kova@broker:8883",
         "--mqtt-ca",
         "/etc/ca.pem",
         "--mqtt-password-file",
         "/etc/pw",
         "--station",
         "studio-a"},
        QString(),
        "units=10.0.0.1 all=0 follow=0 osc=9000@0.0.0.0 tsl=127.0.0.1:9100,10.0.0.9:9101 offsets=10.0.0.1=40 "
        "mqtt=mqtts://kova@broker:8883 ca=/etc/ca.pem pwfile=/etc/pw station=studio-a");
    row("the file alone", {},
        "# the studio's hub\n"
        "[hub]\n"
        "unit = 10.0.0.1, 10.0.0.2\n"
        "unit=10.0.0.3\n"
        "  ; spaced comment\n"
        "\n"
        "follow = 250\r\n"
        "osc-port = 9000\n"
        "tsl = 127.0.0.1:9100 127.0.0.1:9101\n"
        "tsl-offset = 10.0.0.2=7\n"
        "mqtt = mqtt://broker\n"
        "station = \"truck-2\"\n"
        "all = yes\n",
        "units=10.0.0.1,10.0.0.2,10.0.0.3 all=1 follow=250 osc=9000@127.0.0.1 "
        "tsl=127.0.0.1:9100,127.0.0.1:9101 "
        "offsets=10.0.0.2=7 mqtt=mqtt://broker ca= pwfile= station=truck-2");
    row("the command line wins, its lists replace the file's",
        {"--unit", "10.0.0.9", "--follow", "1000", "--tsl", "127.0.0.1:1"},
        "unit = 10.0.0.1\nfollow = 250\ntsl = 127.0.0.1:9100\nosc-port = 9000\n",
        "units=10.0.0.9 all=0 follow=1000 osc=9000@127.0.0.1 tsl=127.0.0.1:1 offsets= mqtt= ca= pwfile= "
        "station=");
    row("all = off in the file, --all on the command line", {"--all"}, "all = off\n",
        "units= all=1 follow=500 osc=0@127.0.0.1 tsl= offsets= mqtt= ca= pwfile= station=");

    const auto error = [](const char *part) { return QStringLiteral("error: ") + QLatin1String(part); };
    row("nothing to hold", {}, QString(), error("no unit to hold"));
    row("all = off holds nothing", {}, "all = off\n", error("no unit to hold"));
    row("unit not IPv4", {"--unit", "10.0.0"}, QString(), error("\"10.0.0\" is not an IPv4 address"));
    row("unit a name", {"--unit", "studio"}, QString(), error("not an IPv4 address"));
    row("follow too fast", {"--all", "--follow", "50"}, QString(), error("follow interval \"50\""));
    row("osc port too large", {"--all", "--osc-port", "70000"}, QString(), error("OSC port \"70000\""));
    row("osc bind a name", {"--all", "--osc-bind", "localhost"}, QString(), error("OSC address"));
    row("tally without port", {"--all", "--tsl", "127.0.0.1"}, QString(), error("tally target"));
    row("tally offset too large", {"--all", "--tsl-offset", "10.0.0.1=70000"}, QString(),
        error("tally offset"));
    row("mqtt of another scheme", {"--all", "--mqtt", "http://broker"}, QString(), error("--mqtt"));
    row("ca without tls", {"--all", "--mqtt", "mqtt://broker", "--mqtt-ca", "/ca.pem"}, QString(),
        error("mqtts://"));
    row("station with capitals", {"--all", "--mqtt", "mqtt://b", "--station", "Studio"}, QString(),
        error("station \"Studio\" is not"));
    row("station without mqtt", {"--all", "--station", "a"}, QString(), error("need --mqtt"));
    row("unknown option", {"--all", "--colour"}, QString(), error("colour"));
    row("stray argument", {"--all", "10.0.0.1"}, QString(), error("unexpected argument \"10.0.0.1\""));
    row("file: unknown key with its line", {}, "all = 1\n\nfolow = 100\n",
        error("hub.conf:3: unknown key \"folow\""));
    row("file: no equals sign", {}, "all\n", error("hub.conf:1: not KEY = VALUE"));
    row("file: empty key", {}, "= 3\n", error("hub.conf:1: not KEY = VALUE"));
    row("file: bad value with its line", {}, "all = 1\nosc-port = -1\n", error("hub.conf:2: OSC port"));
    row("file: not a switch", {}, "all = maybe\n", error("all: \"maybe\" is not true or false"));
    row("file: a password is never read", {}, "all = 1\npassword = secret\n",
        error("hub.conf:2: password: the broker password is read from mqtt-password-file"));
    row("file: no second file", {}, "config = /etc/other.conf\n", error("cannot name another"));
    row("file: a bad value the command line would replace still refuses", {"--follow", "500", "--all"},
        "follow = fast\n", error("hub.conf:1: follow interval"));
    row("file too large", {"--all"}, QString(HubOptions::MaxConfigBytes + 1, QLatin1Char('#')),
        error("larger than"));
}

void tst_HubOptions::parse()
{
    QFETCH(QStringList, args);
    QFETCH(QString, file);
    QFETCH(QString, want);
    QTemporaryDir dir;
    QStringList argv{QStringLiteral("kova-hub")};
    if (!file.isNull()) {
        QFile f(dir.filePath(QStringLiteral("hub.conf")));
        QVERIFY(f.open(QIODevice::WriteOnly));
        f.write(file.toUtf8());
        argv << QStringLiteral("--config") << f.fileName();
    } else {
        // A file named and missing is refused; the default file is never looked at here.
        argv << QStringLiteral("--config") << QStringLiteral("/dev/null");
    }
    HubOptions options;
    QString message;
    const HubOptions::Outcome outcome = HubOptions::parse(argv + args, &options, &message);
    if (want.startsWith(QLatin1String("error: "))) {
        QCOMPARE(outcome, HubOptions::Outcome::Error);
        QVERIFY2(message.contains(want.mid(7)), qPrintable(message));
        return;
    }
    QVERIFY2(outcome == HubOptions::Outcome::Run, qPrintable(message));
    QCOMPARE(summary(options), want);
}

void tst_HubOptions::helpListsEveryKey()
{
    QString text;
    HubOptions options;
    QCOMPARE(HubOptions::parse({"kova-hub", "--help"}, &options, &text), HubOptions::Outcome::Help);
    QStringList keys = HubOptions::keys();
    keys << QStringLiteral("config");
    for (const QString &key : qAsConst(keys))
        QVERIFY2(text.contains(QLatin1String("--") + key), qPrintable(key));
    QCOMPARE(HubOptions::parse({"kova-hub", "--config", "/nonexistent/hub.conf", "--all"}, &options, &text),
             HubOptions::Outcome::Error);
    QVERIFY2(text.startsWith(QLatin1String("/nonexistent/hub.conf: ")), qPrintable(text));
}

void tst_HubOptions::restartKeys()
{
    HubOptions a;
    QVERIFY(a.set(QStringLiteral("unit"), QStringLiteral("10.0.0.1")).isEmpty());
    HubOptions b = a;
    QVERIFY(b.set(QStringLiteral("unit"), QStringLiteral("10.0.0.2")).isEmpty());
    QVERIFY(b.set(QStringLiteral("follow"), QStringLiteral("1000")).isEmpty());
    QVERIFY(b.set(QStringLiteral("tsl"), QStringLiteral("127.0.0.1:9")).isEmpty());
    QCOMPARE(a.restartKeysChanged(b), QStringList());
    QVERIFY(b.set(QStringLiteral("osc-port"), QStringLiteral("9000")).isEmpty());
    QVERIFY(b.set(QStringLiteral("mqtt"), QStringLiteral("mqtt://b")).isEmpty());
    QVERIFY(b.set(QStringLiteral("station"), QStringLiteral("s")).isEmpty());
    QCOMPARE(a.restartKeysChanged(b), QStringList({"osc-port", "mqtt", "station"}));
}

QTEST_GUILESS_MAIN(tst_HubOptions)
#include "tst_huboptions.moc"
