// kovactl end to end in the lab: the program as a script runs it, against one emulated unit of
// each family (RVX3210 with an e5 HIS board, RVX3410, RVX3220, RVX5370, RVX5350). What reached
// a unit is read from the emulator's frame log and compared with frames written out here.
#include "labstate.h"

#include <QElapsedTimer>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QtTest>

namespace {

enum Unit
{
    Desk,     // RVX3210
    Recorder, // RVX3410
    Truck,    // RVX3220
    Hall,     // RVX5370
    Small,    // RVX5350
};

struct Run
{
    int code = -1;
    QByteArray out;
    QByteArray err;
};

Run kovactl(const QStringList &args)
{
    QProcess p;
    p.start(QStringLiteral(KOVACTL_BINARY), args);
    Run r;
    if (!p.waitForFinished(30000)) {
        p.kill();
        p.waitForFinished();
        return r;
    }
    r.code = p.exitStatus() == QProcess::NormalExit ? p.exitCode() : -1;
    r.out = p.readAllStandardOutput();
    r.err = p.readAllStandardError();
    return r;
}

QStringList units()
{
    return qEnvironmentVariable("LAB_UNITS").split(' ', Qt::SkipEmptyParts);
}

QString unit(int u)
{
    return units().value(u);
}

// The emulator's received-frame lines, shortened to "<unit> <board> <cmd> <data>", or
// "search" for the broadcast.
QStringList received()
{
    QFile file(qEnvironmentVariable("LAB_EMULATOR_LOG"));
    QStringList out;
    if (!file.open(QIODevice::ReadOnly))
        return out;
    static const QRegularExpression rx(
        QStringLiteral("^rx unit=(\\S+) board=(\\S+) cmd=0x(\\S+) data=(\\S*) sum=ok"));
    for (const QByteArray &line : file.readAll().split('\n')) {
        const QRegularExpressionMatch m = rx.match(QString::fromUtf8(line));
        if (!m.hasMatch())
            continue;
        if (m.captured(1) == QLatin1String("*"))
            out << QStringLiteral("search");
        else
            out << QStringLiteral("%1 %2 %3 %4")
                       .arg(m.captured(1), m.captured(2), m.captured(3), m.captured(4))
                       .trimmed();
    }
    return out;
}

// Waits until the log holds at least `count` lines past `from`, and returns them all.
QStringList receivedSince(int from, int count)
{
    QElapsedTimer clock;
    clock.start();
    QStringList got;
    while ((got = received().mid(from)).size() < count && clock.elapsed() < 5000)
        QTest::qWait(20);
    return got;
}

} // namespace

class tst_KovactlLab : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void helpVersionAndExitCodes();
    void searchListsEveryUnit();
    void searchJson();
    void sendPutsThePanelsFramesOnTheWire_data();
    void sendPutsThePanelsFramesOnTheWire();
    void stateDecodesWhatTheUnitReports();
    void badInputsAreRefusedQuietly_data();
    void badInputsAreRefusedQuietly();
};

void tst_KovactlLab::initTestCase()
{
    QCOMPARE(units().size(), 5);
}

void tst_KovactlLab::helpVersionAndExitCodes()
{
    const int before = received().size();
    const Run help = kovactl({"--help"});
    QCOMPARE(help.code, 0);
    for (const char *text : {"search", "state ADDRESS", "send ADDRESS COMMAND", "transition EFFECT",
                             "pop-window", "menu KEY press|release", "Exit codes:", "4  refused"})
        QVERIFY2(help.out.contains(text), text);
    const Run version = kovactl({"--version"});
    QCOMPARE(version.code, 0);
    QVERIFY(version.out.startsWith("kovactl "));
    // Neither reaches for the network.
    const Run probe = kovactl({"send", unit(Desk), "cut"});
    QCOMPARE(probe.code, 0);
    QCOMPARE(receivedSince(before, 2), QStringList({"search", unit(Desk) + " main 83"}));
}

void tst_KovactlLab::searchListsEveryUnit()
{
    const Run r = kovactl({"search", "--timeout", "1500"});
    QCOMPARE(r.code, 0);
    QVERIFY(r.err.isEmpty());
    QStringList lines = QString::fromUtf8(r.out).split('\n', Qt::SkipEmptyParts);
    lines.sort();
    QCOMPARE(lines, QStringList({
                        unit(Desk) + "\tRVX3210\tDesk\t10.77.101.1\te5\t0a0b01",
                        unit(Recorder) + "\tRVX3410\tRecorder\t10.77.101.2\te0\t0a0b02",
                        unit(Truck) + "\tRVX3220\tTruck\t-\t-\t0a0b03",
                        unit(Hall) + "\tRVX5370\tHall\t10.77.101.4\te0\t0a0b04",
                        unit(Small) + "\tRVX5350\tSmall\t10.77.101.5\te0\t0a0b05",
                    }));
}

void tst_KovactlLab::searchJson()
{
    const Run r = kovactl({"search", "--json"});
    QCOMPARE(r.code, 0);
    QJsonParseError error{};
    const QJsonArray list = QJsonDocument::fromJson(r.out, &error).array();
    QCOMPARE(error.error, QJsonParseError::NoError);
    QMap<QString, QString> families;
    for (const QJsonValue &v : list) {
        const QJsonObject o = v.toObject();
        families.insert(
            o.value("name").toString(),
            o.value("model").toString() + '/' + o.value("family").toString() + '/' +
                (o.value("hisAddress").isNull() ? QStringLiteral("-") : o.value("hisAddress").toString()));
    }
    QCOMPARE(families.value("Desk"), QString("RVX3210/rvx3210/10.77.101.1"));
    QCOMPARE(families.value("Recorder"), QString("RVX3410/rvx3410/10.77.101.2"));
    QCOMPARE(families.value("Truck"), QString("RVX3220/rvx3220/-"));
    QCOMPARE(families.value("Hall"), QString("RVX5370/8000/10.77.101.4"));
    QCOMPARE(families.value("Small"), QString("RVX5350/rvx5350/10.77.101.5"));
}

void tst_KovactlLab::sendPutsThePanelsFramesOnTheWire_data()
{
    QTest::addColumn<int>("target");
    QTest::addColumn<QStringList>("command");
    // What reached the unit, as "<board> <code> <data>".
    QTest::addColumn<QStringList>("frames");

    QTest::newRow("3210 pgm") << int(Desk) << QStringList{"pgm", "3"} << QStringList{"main 80 03"};
    QTest::newRow("3210 pvw bar") << int(Desk) << QStringList{"pvw", "bar"} << QStringList{"main 81 09"};
    QTest::newRow("3210 wipe left") << int(Desk) << QStringList{"transition", "wipe-left"}
                                    << QStringList{"main 8f", "main 92 23"};
    QTest::newRow("3210 format by index")
        << int(Desk) << QStringList{"format", "1080i50"} << QStringList{"main a3 03"};
    QTest::newRow("3210 rate") << int(Desk) << QStringList{"rate", "3"} << QStringList{"main b1 02"};
    QTest::newRow("3210 source") << int(Desk) << QStringList{"ch2-source", "MIC_IN1"}
                                 << QStringList{"main ba 08"};
    QTest::newRow("3210 level") << int(Desk) << QStringList{"ch1-level", "80"} << QStringList{"main ce 50"};
    QTest::newRow("3210 faders") << int(Desk) << QStringList{"levels", "10", "20", "0", "127"}
                                 << QStringList{"main b4 0a14007f"};
    QTest::newRow("3210 pip h") << int(Desk) << QStringList{"pip-h", "1440"} << QStringList{"main a0 a005"};
    QTest::newRow("3210 tbar") << int(Desk) << QStringList{"tbar", "1", "128"} << QStringList{"main 82 0180"};
    QTest::newRow("3210 his dns") << int(Desk) << QStringList{"his-dns", "10.1.2.3"}
                                  << QStringList{"his 23 0a01020302503b8c"};
    QTest::newRow("3410 menu") << int(Recorder) << QStringList{"menu", "enter", "press"}
                               << QStringList{"main d9 6b01"};
    QTest::newRow("3410 rec") << int(Recorder) << QStringList{"rec", "on"} << QStringList{"main b2 01"};
    QTest::newRow("3410 rotate") << int(Recorder) << QStringList{"rotate"} << QStringList{"main d5"};
    QTest::newRow("3220 pgm 6") << int(Truck) << QStringList{"pgm", "6"} << QStringList{"main 80 06"};
    QTest::newRow("3220 wipe up") << int(Truck) << QStringList{"transition", "wipe-up"}
                                  << QStringList{"main 90", "main 92 25"};
    QTest::newRow("3220 level with source")
        << int(Truck) << QStringList{"ch2-level", "60", "in2"} << QStringList{"main b8 043c"};
    QTest::newRow("3220 format by code")
        << int(Truck) << QStringList{"format", "1080i50"} << QStringList{"main a3 01"};
    QTest::newRow("3220 pop window") << int(Truck) << QStringList{"pop-window", "2"}
                                     << QStringList{"main a8 02"};
    QTest::newRow("5370 rate") << int(Hall) << QStringList{"rate", "1"} << QStringList{"main a5 00"};
    QTest::newRow("5370 wipe down") << int(Hall) << QStringList{"transition", "wipe-down"}
                                    << QStringList{"main 8f", "main 92 2e"};
    QTest::newRow("5370 format by code")
        << int(Hall) << QStringList{"format", "1080p50"} << QStringList{"main a3 0b"};
    QTest::newRow("5370 bars") << int(Hall) << QStringList{"bar", "on"}
                               << QStringList{"main d7 01", "main d8 01"};
    QTest::newRow("5370 reset") << int(Hall) << QStringList{"reset"} << QStringList{"main 0b"};
    QTest::newRow("5350 pgm 2") << int(Small) << QStringList{"pgm", "2"} << QStringList{"main 80 02"};
    QTest::newRow("5350 source") << int(Small) << QStringList{"ch1-source", "mic-in1"}
                                 << QStringList{"main b9 08"};
}

void tst_KovactlLab::sendPutsThePanelsFramesOnTheWire()
{
    QFETCH(int, target);
    QFETCH(QStringList, command);
    QFETCH(QStringList, frames);
    const QString address = unit(target);
    const int before = received().size();
    const Run r = kovactl(QStringList{"send", address} + command);
    QCOMPARE(r.code, 0);
    QVERIFY(r.out.isEmpty());
    QStringList expected{"search"};
    for (const QString &f : frames)
        expected << address + ' ' + f;
    QCOMPARE(receivedSince(before, expected.size()), expected);
}

void tst_KovactlLab::stateDecodesWhatTheUnitReports()
{
    // The 8000 series answers its first read in the long form, with its serial number.
    const Run first = kovactl({"state", unit(Hall), "--json"});
    QCOMPARE(first.code, 0);
    const QJsonObject hall = QJsonDocument::fromJson(first.out).object();
    QCOMPARE(hall.value("model").toString(), QString("RVX5370"));
    QVERIFY(QRegularExpression("^[0-9a-f]{2,}$")
                .match(hall.value("state").toObject().value("serial").toString())
                .hasMatch());

    // Set through the panels' frames, read back through the unit's own report.
    struct Case
    {
        Unit unit;
        QStringList send;
        QString field;
        QJsonValue value;
    };
    const Case cases[] = {
        {Desk, {"pgm", "4"}, "pgm", 4},
        {Desk, {"transition", "wipe-down"}, "wipe", "down"},
        {Desk, {"format", "1080p25"}, "format", "1080p25"},
        {Desk, {"pip", "on"}, "pip", true},
        {Recorder, {"rec", "on"}, "rec", "recording"},
        {Recorder, {"stream", "on"}, "stream", true},
        {Hall, {"ch2-source", "in4"}, "ch2-source", "in4"},
        {Hall, {"transition", "wipe-right"}, "wipe", "right"},
        {Hall, {"pip-v", "500"}, "pip-v", 500},
        {Small, {"transition", "wipe-up"}, "wipe", "up"},
        {Small, {"ch2-source", "mic-in2"}, "ch2-source", "mic-in2"},
    };
    for (const Case &c : cases) {
        const QString address = unit(c.unit);
        QCOMPARE(kovactl(QStringList{"send", address} + c.send).code, 0);
        const Run r = kovactl({"state", address, "--json"});
        QCOMPARE(r.code, 0);
        const QJsonObject o = QJsonDocument::fromJson(r.out).object();
        QCOMPARE(o.value("address").toString(), address);
        QVERIFY2(o.value("state").toObject().value(c.field) == c.value,
                 qPrintable(c.send.join(' ') + " gave " + QString::fromUtf8(r.out)));
    }

    // The text form: one "name: value" line each, the model first.
    const Run text = kovactl({"state", unit(Desk)});
    QCOMPARE(text.code, 0);
    const QStringList lines = QString::fromUtf8(text.out).split('\n', Qt::SkipEmptyParts);
    QCOMPARE(lines.value(0), QString("model: RVX3210"));
    QVERIFY(lines.contains("pgm: 4"));
    QVERIFY(lines.contains("transition: wipe"));
}

void tst_KovactlLab::badInputsAreRefusedQuietly_data()
{
    QTest::addColumn<QStringList>("args");
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("message");
    QTest::addColumn<bool>("searched"); // the search went out before the refusal

    const QString desk = unit(Desk);
    QTest::newRow("no command") << QStringList{} << 2 << "no command" << false;
    QTest::newRow("unknown program command") << QStringList{"frobnicate"} << 2 << "unknown command" << false;
    QTest::newRow("unknown option") << QStringList{"search", "--loud"} << 2 << "loud" << false;
    QTest::newRow("bad timeout") << QStringList{"search", "--timeout", "0"} << 2 << "--timeout" << false;
    QTest::newRow("unknown unit command")
        << QStringList{"send", desk, "explode"} << 2 << "unknown command" << false;
    QTest::newRow("missing argument") << QStringList{"send", desk, "pgm"} << 2 << "usage: pgm INPUT" << false;
    QTest::newRow("not a number") << QStringList{"send", desk, "pgm", "three"} << 2 << "not a number"
                                  << false;
    QTest::newRow("no family has it")
        << QStringList{"send", desk, "pgm", "7"} << 2 << "out of range" << false;
    QTest::newRow("travel too far") << QStringList{"send", desk, "tbar", "0", "200"} << 2 << "out of range"
                                    << false;
    QTest::newRow("unknown effect") << QStringList{"send", desk, "transition", "spin"} << 2 << "wipe-left"
                                    << false;
    QTest::newRow("url name too long")
        << QStringList{"send", desk, "url", "1", "seventeen-bytes-x", "rtmp://a"} << 2 << "at most 16"
        << false;
    QTest::newRow("malformed address")
        << QStringList{"send", "10.77.1", "cut"} << 2 << "no IPv4 address" << false;
    QTest::newRow("broadcast address")
        << QStringList{"send", "255.255.255.255", "cut"} << 2 << "only the search" << false;
    QTest::newRow("json on send") << QStringList{"send", desk, "cut", "--json"} << 2 << "--json" << false;
    QTest::newRow("nobody there") << QStringList{"send", "10.77.9.9", "cut"} << 3 << "no unit answered"
                                  << true;
    QTest::newRow("3210 has no pop") << QStringList{"send", desk, "pop", "on"} << 4 << "has no 'pop'" << true;
    QTest::newRow("3220 auto sends nothing")
        << QStringList{"send", unit(Truck), "auto"} << 4 << "has no 'auto'" << true;
    QTest::newRow("3220 has no rate")
        << QStringList{"send", unit(Truck), "rate", "1"} << 4 << "has no 'rate'" << true;
    QTest::newRow("3220 input 5 only there")
        << QStringList{"send", desk, "pgm", "5"} << 4 << "1-4 or bar" << true;
    QTest::newRow("5350 has two inputs")
        << QStringList{"send", unit(Small), "pgm", "3"} << 4 << "1-2 or bar" << true;
    QTest::newRow("5350 sources") << QStringList{"send", unit(Small), "ch1-source", "aux-in"} << 4
                                  << "mic-in1" << true;
    QTest::newRow("3220 reports no state")
        << QStringList{"state", unit(Truck)} << 4 << "does not report" << true;
    QTest::newRow("3410 has no bars")
        << QStringList{"send", unit(Recorder), "bar", "on"} << 4 << "has no 'bar'" << true;
}

void tst_KovactlLab::badInputsAreRefusedQuietly()
{
    QFETCH(QStringList, args);
    QFETCH(int, code);
    QFETCH(QString, message);
    QFETCH(bool, searched);

    const int before = received().size();
    const Run r = kovactl(args);
    QCOMPARE(r.code, code);
    QVERIFY(r.out.isEmpty());
    QVERIFY2(r.err.startsWith("kovactl: ") && r.err.contains(message.toUtf8()), r.err.constData());

    // A probe of known frames follows; whatever the refused call sent comes before it.
    QCOMPARE(kovactl({"send", unit(Desk), "cut"}).code, 0);
    QStringList expected;
    if (searched)
        expected << "search";
    expected << "search" << unit(Desk) + " main 83";
    QCOMPARE(receivedSince(before, expected.size()), expected);
}

QTEST_GUILESS_MAIN(tst_KovactlLab)
#include "tst_kovactl_lab.moc"
