// kovactl end to end in the lab: the program as a script runs it, against one emulated unit of
// each family (RVX3210 with an e5 HIS board, RVX3410, RVX3220, RVX5370, RVX5350). What reached
// a unit is read from the emulator's frame log and compared with frames written out here.
#include "labstate.h"

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
    if (!p.waitForFinished(30000) || p.exitStatus() != QProcess::NormalExit) {
        p.kill();
        p.waitForFinished();
        return {};
    }
    return {p.exitCode(), p.readAllStandardOutput(), p.readAllStandardError()};
}

QString unit(int u)
{
    return qEnvironmentVariable("LAB_UNITS").split(' ', Qt::SkipEmptyParts).value(u);
}

// The emulator's received-frame lines past the first `from`, as "<unit> <board> <cmd> <data>"
// or "search" for the broadcast, once there are at least `count` of them (or 5 s passed).
QStringList receivedSince(int from, int count = 0)
{
    static const QRegularExpression rx("^rx unit=(\\S+) board=(\\S+) cmd=0x(\\S+) data=(\\S*) sum=ok");
    QStringList got;
    (void)QTest::qWaitFor(
        [&] {
            QFile file(qEnvironmentVariable("LAB_EMULATOR_LOG"));
            file.open(QIODevice::ReadOnly);
            got.clear();
            for (const QByteArray &line : file.readAll().split('\n')) {
                const QRegularExpressionMatch m = rx.match(QString::fromUtf8(line));
                if (m.hasMatch())
                    got << (m.captured(1) == "*" ? QString("search")
                                                 : QStringList(m.capturedTexts().mid(1)).join(' ').trimmed());
            }
            got = got.mid(from);
            return got.size() >= count;
        },
        5000);
    return got;
}

int receivedCount()
{
    return receivedSince(0).size();
}

} // namespace

class tst_KovactlLab : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void helpAndVersionStayOffTheNetwork();
    void searchListsEveryUnit();
    void sendPutsThePanelsFramesOnTheWire_data();
    void sendPutsThePanelsFramesOnTheWire();
    void stateDecodesWhatTheUnitReports();
    void badInputsAreRefusedQuietly_data();
    void badInputsAreRefusedQuietly();
};

void tst_KovactlLab::initTestCase()
{
    QVERIFY2(!unit(Small).isEmpty(), "run through lab/lab.sh with five units");
}

void tst_KovactlLab::helpAndVersionStayOffTheNetwork()
{
    const int before = receivedCount();
    QCOMPARE(kovactl({"--help"}).code, 0);
    QVERIFY(kovactl({"--version"}).out.startsWith("kovactl "));
    QCOMPARE(kovactl({"send", unit(Desk), "cut"}).code, 0);
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
    // The JSON form names each unit's family and leaves a missing HIS board null.
    QStringList families;
    for (const QJsonValue &v : QJsonDocument::fromJson(kovactl({"search", "--json"}).out).array()) {
        const QJsonObject o = v.toObject();
        families << o.value("name").toString() + '/' + o.value("family").toString() + '/' +
                        (o.value("hisAddress").isNull() ? "-" : o.value("hisAddress").toString());
    }
    families.sort();
    QCOMPARE(families,
             QStringList({"Desk/rvx3210/10.77.101.1", "Hall/8000/10.77.101.4", "Recorder/rvx3410/10.77.101.2",
                          "Small/rvx5350/10.77.101.5", "Truck/rvx3220/-"}));
}

void tst_KovactlLab::sendPutsThePanelsFramesOnTheWire_data()
{
    QTest::addColumn<int>("target");
    QTest::addColumn<QStringList>("command");
    // What reached the unit, as "<board> <code> <data>". A command or two a family: which command and
    // value each family takes, and its frames, are tst_unitcontrol's tables.
    QTest::addColumn<QStringList>("frames");

    auto row = [](const char *name, Unit u, const QStringList &command, const QStringList &frames) {
        QTest::newRow(name) << int(u) << command << frames;
    };
    // The state test reads the wipe back.
    row("3210 wipe left", Desk, {"transition", "wipe-left"}, {"main 8f", "main 92 23"});
    row("3210 his dns", Desk, {"his-dns", "10.1.2.3"}, {"his 23 0a01020302503b8c"});
    row("3410 menu", Recorder, {"menu", "enter", "press"}, {"main d9 6b01"});
    row("3220 level with source", Truck, {"ch2-level", "60", "in2"}, {"main b8 043c"});
    row("5370 bars", Hall, {"bar", "on"}, {"main d7 01", "main d8 01"});
    row("5350 source", Small, {"ch1-source", "mic-in1"}, {"main b9 08"});
}

void tst_KovactlLab::sendPutsThePanelsFramesOnTheWire()
{
    QFETCH(int, target);
    QFETCH(QStringList, command);
    QFETCH(QStringList, frames);
    const QString address = unit(target);
    const int before = receivedCount();
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
    QVERIFY(QRegularExpression("^[0-9a-f]{2,}$").match(hall["state"]["serial"].toString()).hasMatch());

    // Set through the panels' frames, read back through the unit's own report.
    const struct
    {
        Unit unit;
        QStringList send;
        QString field;
        QVariant value;
    } cases[] = {
        {Desk, {"pgm", "4"}, "pgm", 4},
        {Desk, {"format", "1080p25"}, "format", "1080p25"},
        {Recorder, {"rec", "on"}, "rec", "recording"},
        {Hall, {"transition", "wipe-right"}, "wipe", "right"},
        {Hall, {"pip-v", "500"}, "pip-v", 500},
        {Small, {"transition", "wipe-up"}, "wipe", "up"},
        {Small, {"ch2-source", "mic-in2"}, "ch2-source", "mic-in2"},
    };
    for (const auto &c : cases) {
        const QString address = unit(c.unit);
        QCOMPARE(kovactl(QStringList{"send", address} + c.send).code, 0);
        const Run r = kovactl({"state", address, "--json"});
        const QJsonObject o = QJsonDocument::fromJson(r.out).object();
        QCOMPARE(r.code, 0);
        QCOMPARE(o.value("address").toString(), address);
        QVERIFY2(o["state"][c.field].toVariant() == c.value, qPrintable(c.send.join(' ') + " gave " + r.out));
    }

    // The text form: one "name: value" line each, the model first.
    const QStringList lines = QString::fromUtf8(kovactl({"state", unit(Desk)}).out).split('\n');
    QCOMPARE(lines.value(0), QString("model: RVX3210"));
    QVERIFY(lines.contains("pgm: 4"));
    QVERIFY(lines.contains("transition: wipe"));
}

void tst_KovactlLab::badInputsAreRefusedQuietly_data()
{
    QTest::addColumn<QStringList>("args");
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("message");
    auto row = [](const char *name, const QStringList &args, int code, const char *message) {
        QTest::newRow(name) << args << code << QString(message);
    };
    const QString desk = unit(Desk);
    row("no command", {}, 2, "no command");
    row("unknown option", {"search", "--loud"}, 2, "loud");
    row("unknown unit command", {"send", desk, "explode"}, 2, "unknown command");
    row("missing argument", {"send", desk, "pgm"}, 2, "usage: pgm INPUT");
    row("not a number", {"send", desk, "pgm", "three"}, 2, "not a number");
    row("no family has it", {"send", desk, "pgm", "7"}, 2, "out of range");
    row("url name too long", {"send", desk, "url", "1", "seventeen-bytes-x", "rtmp://a"}, 2, "at most 16");
    row("malformed address", {"send", "10.77.1", "cut"}, 2, "no IPv4 address");
    row("broadcast address", {"send", "255.255.255.255", "cut"}, 2, "only the search");
    row("nobody there", {"send", "10.77.9.9", "cut"}, 3, "no unit answered");
    // What each family refuses is tst_unitcontrol's; here, that a refusal leaves with code 4.
    row("3210 has no pop", {"send", desk, "pop", "on"}, 4, "has no 'pop'");
    row("5350 has two inputs", {"send", unit(Small), "pgm", "3"}, 4, "(1-2)");
    row("3220 reports no state", {"state", unit(Truck)}, 4, "does not report");
}

void tst_KovactlLab::badInputsAreRefusedQuietly()
{
    QFETCH(QStringList, args);
    QFETCH(int, code);
    QFETCH(QString, message);

    const int before = receivedCount();
    const Run r = kovactl(args);
    QCOMPARE(r.code, code);
    QVERIFY(r.out.isEmpty());
    QVERIFY2(r.err.startsWith("kovactl: ") && r.err.contains(message.toUtf8()), r.err.constData());

    // A probe of known frames follows; whatever the refused call sent comes before it: usage
    // errors (2) are refused before the search, the others after it.
    QCOMPARE(kovactl({"send", unit(Desk), "cut"}).code, 0);
    QStringList expected{"search", unit(Desk) + " main 83"};
    if (code != 2)
        expected.prepend("search");
    QCOMPARE(receivedSince(before, expected.size()), expected);
}

QTEST_GUILESS_MAIN(tst_KovactlLab)
#include "tst_kovactl_lab.moc"
