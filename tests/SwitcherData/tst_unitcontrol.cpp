// What each family's panel can send, checked against UnitControl and `kovactl send`: one table
// per family of the keys, lists and ranges its panel offers, with the values just past them and
// the keys it lacks. An accepted call puts the frames written out here on the wire, through
// UnitControl and through kovactl alike; a refused one sends nothing through either.
#include "SwitcherData/unitcommands.h"
#include "SwitcherData/unitlink.h"
#include "SwitcherData/unitlinks.h"
#include "SwitcherData/unitmodel.h"
#include "testframes.h"
#include "wirecapture.h"

#include <QRegularExpression>
#include <QtTest>
#include <functional>
#include <memory>

#define TO_MAIN "a5ff01000000000000000000"
#define TO_HIS "e0ff01000000000000000000"
// The address frames name the main board's kind as 00.
#define IP_MAIN "a5ff00000000000000000000"
// A call of UnitControl and its text; NO_CALL where only kovactl has a form.
#define CALL(call) Press([](UnitControl &u) { return u.call; }), #call
#define NO_CALL Press(), ""

using Press = std::function<bool(UnitControl &)>;
using E = UnitControl::Effect;
using K = UnitControl::MenuKey;
Q_DECLARE_METATYPE(Press)
Q_DECLARE_METATYPE(Family)

namespace {

// Frames as hex, separated by blanks; <N> stands for N zero bytes.
QByteArrayList frames(QByteArray text)
{
    static const QRegularExpression zeros(QStringLiteral("<(\\d+)>"));
    QString t = QString::fromLatin1(text);
    for (auto m = zeros.match(t); m.hasMatch(); m = zeros.match(t))
        t.replace(m.capturedStart(), m.capturedLength(),
                  QString(m.captured(1).toInt() * 2, QLatin1Char('0')));
    return hexList(t.toLatin1());
}

// Runs `act` on a new link of `family` bound to a unit on 127.0.0.2 with its HIS board on
// 127.0.0.3, and returns what reached either board (a marker to both bounds it).
QByteArrayList onTheWire(Family family, const Press &act, bool *accepted)
{
    WireCapture main(QStringLiteral("127.0.0.2"));
    WireCapture his(QStringLiteral("127.0.0.3"));
    const std::unique_ptr<UnitLink> link(createUnitLink(family));
    if (!main.isBound() || !his.isBound() || !link->isBound())
        return {QByteArray("not bound")};
    link->bindBoards(UnitAddress(QHostAddress(QStringLiteral("127.0.0.2")), 0xA5, 0xFF),
                     UnitAddress(QHostAddress(QStringLiteral("127.0.0.3")), 0xE0, 0xFF));
    *accepted = act(*link);
    QUdpSocket probe;
    const QByteArray marker("marker");
    probe.writeDatagram(marker, QHostAddress(QStringLiteral("127.0.0.2")), 7000);
    probe.writeDatagram(marker, QHostAddress(QStringLiteral("127.0.0.3")), 7000);
    return main.until(marker) + his.until(marker);
}

Family g_family = Family::Rvx3210;

// One row: the kovactl command (empty: none), the UnitControl call (null: none), the frames
// either sends ("": refused, nothing sent).
void row(const QStringList &command, const Press &press, const char *call, const char *sent)
{
    QStringList name;
    for (const QString &arg : command)
        name << (arg.size() > 20 ? arg.left(3) + QStringLiteral("...") : arg);
    const QString title = command.isEmpty() ? QString::fromLatin1(call) : name.join(QLatin1Char(' '));
    QTest::newRow(qPrintable(title)) << g_family << command << press << QByteArray(sent);
}

void columns(Family family)
{
    QTest::addColumn<Family>("family");
    QTest::addColumn<QStringList>("command");
    QTest::addColumn<Press>("press");
    QTest::addColumn<QByteArray>("sent");
    g_family = family;
}

} // namespace

class TestUnitControl : public QObject
{
    Q_OBJECT
private slots:
    void rvx3210_data();
    void rvx3210() { checkRow(); }
    void rvx3410_data();
    void rvx3410() { checkRow(); }
    void rvx3220_data();
    void rvx3220() { checkRow(); }
    void rvx5310_data();
    void rvx5310() { checkRow(); }
    void rvx5370_data();
    void rvx5370() { checkRow(); }
    void rvx5350_data();
    void rvx5350() { checkRow(); }
    void rvx5120_data();
    void rvx5120() { checkRow(); }
    void modelTable_data();
    void modelTable();

private:
    void checkRow();
};

void TestUnitControl::checkRow()
{
    QFETCH(Family, family);
    QFETCH(QStringList, command);
    QFETCH(Press, press);
    QFETCH(QByteArray, sent);
    const QByteArrayList expected = frames(sent);
    if (press) {
        bool accepted = false;
        QCOMPARE(onTheWire(family, press, &accepted), expected);
        QCOMPARE(accepted, !expected.isEmpty());
    }
    if (!command.isEmpty()) {
        const CommandCall call = CommandCall::check(command.first(), command.mid(1), family);
        QVERIFY2((call.verdict() == CommandCall::Verdict::Ok) == !expected.isEmpty(),
                 qPrintable(call.message()));
        // A refused call runs nothing either.
        bool accepted = false;
        QCOMPARE(onTheWire(
                     family, [&call](UnitControl &u) { return call.run(u); }, &accepted),
                 expected);
        QCOMPARE(accepted, !expected.isEmpty());
    }
}

// The RVX3210 panel: four inputs and the bars on both rows, the rate keys, the
// function keys, the PIP pane with its border, the audio lists and faders, and the network page.
void TestUnitControl::rvx3210_data()
{
    columns(Family::Rvx3210);
    row({"read-state"}, CALL(readState()), "a56c1400" TO_MAIN "491303ae");
    row({"pgm", "1"}, CALL(programme(1)), "a56c1500" TO_MAIN "80014c03ae");
    row({"pgm", "4"}, CALL(programme(4)), "a56c1500" TO_MAIN "80044f03ae");
    row({"pgm", "0"}, CALL(programme(0)), "");
    row({"pgm", "5"}, CALL(programme(5)), "");
    row({"pgm", "bar"}, CALL(programme(9)), "a56c1500" TO_MAIN "80095403ae");
    row({"pvw", "1"}, CALL(preview(1)), "a56c1500" TO_MAIN "81014d03ae");
    row({"pvw", "4"}, CALL(preview(4)), "a56c1500" TO_MAIN "81045003ae");
    row({"pvw", "bar"}, CALL(preview(9)), "a56c1500" TO_MAIN "81095503ae");
    row({"pvw", "5"}, CALL(preview(5)), "");
    row({"cut"}, CALL(cut()), "a56c1400" TO_MAIN "834d03ae");
    row({"auto"}, CALL(autoTransition()), "a56c1400" TO_MAIN "844e03ae");
    row({"tbar", "1", "0"}, CALL(fader(1, 0)), "a56c1600" TO_MAIN "8201004f03ae");
    row({"tbar", "0", "127"}, CALL(fader(0, 127)), "a56c1600" TO_MAIN "82007fcd03ae");
    row({"tbar", "1", "128"}, CALL(fader(1, 128)), "a56c1600" TO_MAIN "820180cf03ae");
    row({"tbar", "0", "129"}, CALL(fader(0, 129)), "");
    row({"tbar", "2", "0"}, CALL(fader(2, 0)), "");
    row({"transition", "mix"}, CALL(transition(E::Mix)), "a56c1400" TO_MAIN "8d5703ae");
    row({"transition", "fade"}, CALL(transition(E::Fade)), "a56c1400" TO_MAIN "8e5803ae");
    row({"transition", "wipe-up"}, CALL(transition(E::WipeUp)),
        "a56c1400" TO_MAIN "8f5903ae"
        " "
        "a56c1500" TO_MAIN "92258203ae");
    row({"transition", "wipe-down"}, CALL(transition(E::WipeDown)),
        "a56c1400" TO_MAIN "8f5903ae"
        " "
        "a56c1500" TO_MAIN "92298603ae");
    row({"transition", "wipe-left"}, CALL(transition(E::WipeLeft)),
        "a56c1400" TO_MAIN "8f5903ae"
        " "
        "a56c1500" TO_MAIN "92238003ae");
    row({"transition", "wipe-right"}, CALL(transition(E::WipeRight)),
        "a56c1400" TO_MAIN "8f5903ae"
        " "
        "a56c1500" TO_MAIN "92278403ae");
    row({}, CALL(transition(E(0))), "");
    row({}, CALL(transition(E(7))), "");
    row({"rate", "1"}, CALL(rate(1)), "a56c1500" TO_MAIN "b1007c03ae");
    row({"rate", "3"}, CALL(rate(3)), "a56c1500" TO_MAIN "b1027e03ae");
    row({"rate", "4"}, CALL(rate(4)), "");
    row({"rate", "0"}, CALL(rate(0)), "");
    row({"ftb"}, CALL(ftb()), "a56c1400" TO_MAIN "854f03ae");
    row({"still"}, CALL(still()), "a56c1400" TO_MAIN "cd9703ae");
    row({"format", "1080p60"}, CALL(format(0)), "a56c1500" TO_MAIN "a3006e03ae");
    row({"format", "1080i50"}, CALL(format(3)), "a56c1500" TO_MAIN "a3037103ae");
    row({"format", "1080p24"}, CALL(format(6)), "a56c1500" TO_MAIN "a3067403ae");
    row({}, CALL(format(7)), "");
    row({"format", "720p60"}, NO_CALL, "");
    row({"audio", "afv"}, CALL(audioMode(false)), "a56c1400" TO_MAIN "cc9603ae");
    row({"audio", "mix"}, CALL(audioMode(true)), "a56c1400" TO_MAIN "cb9503ae");
    row({"ch1-source", "aux-in"}, CALL(source(1, 0)), "a56c1500" TO_MAIN "b9078b03ae");
    row({"ch2-source", "mic-in2"}, CALL(source(2, 6)), "a56c1500" TO_MAIN "ba008503ae");
    row({"ch1-source", "in5"}, NO_CALL, "");
    row({}, CALL(source(1, 7)), "");
    row({}, CALL(source(3, 0)), "");
    row({"ch1-level", "0"}, CALL(level(1, 0)), "a56c1500" TO_MAIN "ce009903ae");
    row({"ch2-level", "100"}, CALL(level(2, 100)), "a56c1500" TO_MAIN "cf64fe03ae");
    row({"ch1-level", "101"}, CALL(level(1, 101)), "");
    row({"ch1-level", "50", "in1"}, NO_CALL, "");
    row({"levels", "0", "0", "0", "0"}, CALL(levels(0, 0, 0, 0)), "a56c1800" TO_MAIN "b4000000008203ae");
    row({"levels", "127", "127", "0", "127"}, CALL(levels(127, 127, 0, 127)),
        "a56c1800" TO_MAIN "b47f7f007fff04ae");
    row({"levels", "10", "20", "1", "127"}, CALL(levels(10, 20, 1, 127)), "");
    row({"levels", "128", "0", "0", "127"}, CALL(levels(128, 0, 0, 127)), "");
    row({"levels", "0", "0", "0", "128"}, CALL(levels(0, 0, 0, 128)), "");
    row({"pip", "on"}, CALL(pip(true)), "a56c1500" TO_MAIN "86015203ae");
    row({"pip", "off"}, CALL(pip(false)), "a56c1500" TO_MAIN "86005103ae");
    row({"pip-size", "small"}, CALL(pipSize(0)), "a56c1500" TO_MAIN "a2006d03ae");
    row({"pip-size", "large"}, CALL(pipSize(2)), "a56c1500" TO_MAIN "a2026f03ae");
    row({}, CALL(pipSize(3)), "");
    row({"pip-h", "0"}, CALL(pipPosition(true, 0)), "a56c1600" TO_MAIN "a000006c03ae");
    row({"pip-h", "1440"}, CALL(pipPosition(true, 1440)), "a56c1600" TO_MAIN "a0a0051104ae");
    row({"pip-h", "1441"}, CALL(pipPosition(true, 1441)), "");
    row({"pip-v", "810"}, CALL(pipPosition(false, 810)), "a56c1600" TO_MAIN "a12a039a03ae");
    row({"pip-v", "811"}, CALL(pipPosition(false, 811)), "");
    row({"pip-v", "-1"}, CALL(pipPosition(false, -1)), "");
    row({"pip-border", "on"}, CALL(pipBorder(true)), "a56c1500" TO_MAIN "9d016903ae");
    row({"pip-border-color", "green"}, CALL(pipBorderColor(3)), "a56c1500" TO_MAIN "9e036c03ae");
    row({"pip-border-width", "2"}, CALL(pipBorderWidth(2)), "a56c1500" TO_MAIN "9f026c03ae");
    row({"pip-border-width", "7"}, CALL(pipBorderWidth(7)), "a56c1500" TO_MAIN "9f077103ae");
    row({"pip-border-width", "8"}, CALL(pipBorderWidth(8)), "");
    row({}, CALL(pipBorderColor(4)), "");
    row({"pop", "on"}, CALL(pop(true)), "");
    row({"pop", "off"}, CALL(pop(false)), "");
    row({"pop-window", "2"}, CALL(popWindow(2)), "");
    row({"pop-border", "on"}, CALL(popBorder(true)), "");
    row({"pop-border-color", "red"}, CALL(popBorderColor(1)), "");
    row({"pop-border-width", "7"}, CALL(popBorderWidth(7)), "");
    row({"pop-h", "960"}, CALL(popPosition(true, 960)), "");
    row({"pop-v", "540"}, CALL(popPosition(false, 540)), "");
    row({"f2"}, CALL(f2()), "a56c1400" TO_MAIN "d09a03ae");
    row({"f3"}, CALL(mute()), "a56c1400" TO_MAIN "d49e03ae");
    row({"f7"}, CALL(f7()), "a56c1400" TO_MAIN "d6a003ae");
    row({"bar", "on"}, CALL(bar(true)), "");
    row({"bar", "off"}, CALL(bar(false)), "");
    row({"rec", "on"}, CALL(rec(true)), "");
    row({"rec", "off"}, CALL(rec(false)), "");
    row({"pause"}, CALL(pause()), "");
    row({"stream", "on"}, CALL(stream(true)), "");
    row({"stream", "off"}, CALL(stream(false)), "");
    row({"rotate"}, CALL(rotate()), "");
    row({"menu", "up", "press"}, CALL(menu(K::Up, true)), "");
    row({"reset"}, CALL(reset()), "");
    row({"set-address", "10.0.0.9"}, CALL(setAddress("10.0.0.9")),
        "a56c2000" IP_MAIN "050a0000090000000000000000ed02ae");
    row({"set-address", "0.0.0.0"}, CALL(setAddress("0.0.0.0")),
        "a56c2000" IP_MAIN "05000000000000000000000000da02ae");
    row({"set-address", "10.0.0"}, CALL(setAddress("10.0.0")), "");
    row({"set-address", "10.0.0.256"}, CALL(setAddress("10.0.0.256")), "");
    row({"set-address", "10.0.0.+9"}, CALL(setAddress("10.0.0.+9")), "");
    row({"his-address", "10.1.2.3", "255.255.255.0", "10.1.2.1"},
        CALL(hisAddress("10.1.2.3", "255.255.255.0", "10.1.2.1")),
        "a56c2000" TO_HIS "050a010203ffffff000a0102013106ae");
    row({"his-dns", "8.8.4.4"}, CALL(hisDns("8.8.4.4")), "a56c1c00" TO_HIS "230808040402503b8c6104ae");
    row({"his-read"}, CALL(readHis()), "a56c2000" TO_HIS "240000000000000000000000003503ae");
    row({"url-read", "4"}, CALL(readUrl(4)), "a56c1500" TO_HIS "6a047403ae");
    row({"url", "0", "cam", "rtmp://a"}, CALL(url(0, "cam", "rtmp://a")),
        "a56c2903" TO_HIS "6700000363616d00000000000000000000000000080072746d703a2f2f61<760>7c07ae");
    row({"url", "4", "", ""}, CALL(url(4, "", "")), "a56c2903" TO_HIS "670004<787>8803ae");
    row({"his-dns", "8.8.4"}, CALL(hisDns("8.8.4")), "");
    row({"url-read", "5"}, CALL(readUrl(5)), "");
    row({"url", "5", "cam", "rtmp://a"}, CALL(url(5, "cam", "rtmp://a")), "");
    row({"url", "0", "seventeen-bytes-x", "rtmp://a"}, CALL(url(0, "seventeen-bytes-x", "rtmp://a")), "");
    row(QStringList{"url", "0", "cam", QString(769, QLatin1Char('u'))},
        CALL(url(0, "cam", QByteArray(769, 'u'))), "");
}

// The RVX3410 panel: the RVX3210 panel with REC, PAUSE, STREAM, ROTATE and the
// menu keys, whose menu key sends its press alone.
void TestUnitControl::rvx3410_data()
{
    columns(Family::Rvx3410);
    row({"read-state"}, CALL(readState()), "a56c1400" TO_MAIN "491303ae");
    row({"pgm", "1"}, CALL(programme(1)), "a56c1500" TO_MAIN "80014c03ae");
    row({"pgm", "4"}, CALL(programme(4)), "a56c1500" TO_MAIN "80044f03ae");
    row({"pgm", "0"}, CALL(programme(0)), "");
    row({"pgm", "5"}, CALL(programme(5)), "");
    row({"pgm", "bar"}, CALL(programme(9)), "a56c1500" TO_MAIN "80095403ae");
    row({"pvw", "1"}, CALL(preview(1)), "a56c1500" TO_MAIN "81014d03ae");
    row({"pvw", "4"}, CALL(preview(4)), "a56c1500" TO_MAIN "81045003ae");
    row({"pvw", "bar"}, CALL(preview(9)), "a56c1500" TO_MAIN "81095503ae");
    row({"pvw", "5"}, CALL(preview(5)), "");
    row({"cut"}, CALL(cut()), "a56c1400" TO_MAIN "834d03ae");
    row({"auto"}, CALL(autoTransition()), "a56c1400" TO_MAIN "844e03ae");
    row({"tbar", "1", "0"}, CALL(fader(1, 0)), "a56c1600" TO_MAIN "8201004f03ae");
    row({"tbar", "0", "127"}, CALL(fader(0, 127)), "a56c1600" TO_MAIN "82007fcd03ae");
    row({"tbar", "1", "128"}, CALL(fader(1, 128)), "a56c1600" TO_MAIN "820180cf03ae");
    row({"tbar", "0", "129"}, CALL(fader(0, 129)), "");
    row({"tbar", "2", "0"}, CALL(fader(2, 0)), "");
    row({"transition", "mix"}, CALL(transition(E::Mix)), "a56c1400" TO_MAIN "8d5703ae");
    row({"transition", "fade"}, CALL(transition(E::Fade)), "a56c1400" TO_MAIN "8e5803ae");
    row({"transition", "wipe-up"}, CALL(transition(E::WipeUp)),
        "a56c1400" TO_MAIN "8f5903ae"
        " "
        "a56c1500" TO_MAIN "92258203ae");
    row({"transition", "wipe-down"}, CALL(transition(E::WipeDown)),
        "a56c1400" TO_MAIN "8f5903ae"
        " "
        "a56c1500" TO_MAIN "92298603ae");
    row({"transition", "wipe-left"}, CALL(transition(E::WipeLeft)),
        "a56c1400" TO_MAIN "8f5903ae"
        " "
        "a56c1500" TO_MAIN "92238003ae");
    row({"transition", "wipe-right"}, CALL(transition(E::WipeRight)),
        "a56c1400" TO_MAIN "8f5903ae"
        " "
        "a56c1500" TO_MAIN "92278403ae");
    row({}, CALL(transition(E(0))), "");
    row({}, CALL(transition(E(7))), "");
    row({"rate", "1"}, CALL(rate(1)), "a56c1500" TO_MAIN "b1007c03ae");
    row({"rate", "3"}, CALL(rate(3)), "a56c1500" TO_MAIN "b1027e03ae");
    row({"rate", "4"}, CALL(rate(4)), "");
    row({"rate", "0"}, CALL(rate(0)), "");
    row({"ftb"}, CALL(ftb()), "a56c1400" TO_MAIN "854f03ae");
    row({"still"}, CALL(still()), "a56c1400" TO_MAIN "cd9703ae");
    row({"format", "1080p60"}, CALL(format(0)), "a56c1500" TO_MAIN "a3006e03ae");
    row({"format", "1080i50"}, CALL(format(3)), "a56c1500" TO_MAIN "a3037103ae");
    row({"format", "1080p24"}, CALL(format(6)), "a56c1500" TO_MAIN "a3067403ae");
    row({}, CALL(format(7)), "");
    row({"format", "720p60"}, NO_CALL, "");
    row({"audio", "afv"}, CALL(audioMode(false)), "a56c1400" TO_MAIN "cc9603ae");
    row({"audio", "mix"}, CALL(audioMode(true)), "a56c1400" TO_MAIN "cb9503ae");
    row({"ch1-source", "aux-in"}, CALL(source(1, 0)), "a56c1500" TO_MAIN "b9078b03ae");
    row({"ch2-source", "mic-in2"}, CALL(source(2, 6)), "a56c1500" TO_MAIN "ba008503ae");
    row({"ch1-source", "in5"}, NO_CALL, "");
    row({}, CALL(source(1, 7)), "");
    row({}, CALL(source(3, 0)), "");
    row({"ch1-level", "0"}, CALL(level(1, 0)), "a56c1500" TO_MAIN "ce009903ae");
    row({"ch2-level", "100"}, CALL(level(2, 100)), "a56c1500" TO_MAIN "cf64fe03ae");
    row({"ch1-level", "101"}, CALL(level(1, 101)), "");
    row({"ch1-level", "50", "in1"}, NO_CALL, "");
    row({"levels", "0", "0", "0", "0"}, CALL(levels(0, 0, 0, 0)), "a56c1800" TO_MAIN "b4000000008203ae");
    row({"levels", "127", "127", "0", "127"}, CALL(levels(127, 127, 0, 127)),
        "a56c1800" TO_MAIN "b47f7f007fff04ae");
    row({"levels", "10", "20", "1", "127"}, CALL(levels(10, 20, 1, 127)), "");
    row({"levels", "128", "0", "0", "127"}, CALL(levels(128, 0, 0, 127)), "");
    row({"levels", "0", "0", "0", "128"}, CALL(levels(0, 0, 0, 128)), "");
    row({"pip", "on"}, CALL(pip(true)), "a56c1500" TO_MAIN "86015203ae");
    row({"pip", "off"}, CALL(pip(false)), "a56c1500" TO_MAIN "86005103ae");
    row({"pip-size", "small"}, CALL(pipSize(0)), "a56c1500" TO_MAIN "a2006d03ae");
    row({"pip-size", "large"}, CALL(pipSize(2)), "a56c1500" TO_MAIN "a2026f03ae");
    row({}, CALL(pipSize(3)), "");
    row({"pip-h", "0"}, CALL(pipPosition(true, 0)), "a56c1600" TO_MAIN "a000006c03ae");
    row({"pip-h", "1440"}, CALL(pipPosition(true, 1440)), "a56c1600" TO_MAIN "a0a0051104ae");
    row({"pip-h", "1441"}, CALL(pipPosition(true, 1441)), "");
    row({"pip-v", "810"}, CALL(pipPosition(false, 810)), "a56c1600" TO_MAIN "a12a039a03ae");
    row({"pip-v", "811"}, CALL(pipPosition(false, 811)), "");
    row({"pip-v", "-1"}, CALL(pipPosition(false, -1)), "");
    row({"pip-border", "on"}, CALL(pipBorder(true)), "a56c1500" TO_MAIN "9d016903ae");
    row({"pip-border-color", "green"}, CALL(pipBorderColor(3)), "a56c1500" TO_MAIN "9e036c03ae");
    row({"pip-border-width", "2"}, CALL(pipBorderWidth(2)), "a56c1500" TO_MAIN "9f026c03ae");
    row({"pip-border-width", "7"}, CALL(pipBorderWidth(7)), "a56c1500" TO_MAIN "9f077103ae");
    row({"pip-border-width", "8"}, CALL(pipBorderWidth(8)), "");
    row({}, CALL(pipBorderColor(4)), "");
    row({"pop", "on"}, CALL(pop(true)), "");
    row({"pop", "off"}, CALL(pop(false)), "");
    row({"pop-window", "2"}, CALL(popWindow(2)), "");
    row({"pop-border", "on"}, CALL(popBorder(true)), "");
    row({"pop-border-color", "red"}, CALL(popBorderColor(1)), "");
    row({"pop-border-width", "7"}, CALL(popBorderWidth(7)), "");
    row({"pop-h", "960"}, CALL(popPosition(true, 960)), "");
    row({"pop-v", "540"}, CALL(popPosition(false, 540)), "");
    row({"f2"}, CALL(f2()), "a56c1400" TO_MAIN "d09a03ae");
    row({"f3"}, CALL(mute()), "a56c1400" TO_MAIN "d49e03ae");
    row({"f7"}, CALL(f7()), "a56c1400" TO_MAIN "d6a003ae");
    row({"bar", "on"}, CALL(bar(true)), "");
    row({"bar", "off"}, CALL(bar(false)), "");
    row({"rec", "on"}, CALL(rec(true)), "a56c1500" TO_MAIN "b2017e03ae");
    row({"rec", "off"}, CALL(rec(false)), "a56c1500" TO_MAIN "b2007d03ae");
    row({"pause"}, CALL(pause()), "a56c1400" TO_MAIN "c58f03ae");
    row({"stream", "on"}, CALL(stream(true)), "a56c1500" TO_MAIN "87015303ae");
    row({"stream", "off"}, CALL(stream(false)), "a56c1500" TO_MAIN "87005203ae");
    row({"rotate"}, CALL(rotate()), "a56c1400" TO_MAIN "d59f03ae");
    row({"menu", "up", "press"}, CALL(menu(K::Up, true)), "a56c1600" TO_MAIN "d94101e703ae");
    row({"menu", "up", "release"}, CALL(menu(K::Up, false)), "a56c1600" TO_MAIN "d94100e603ae");
    row({"menu", "down", "press"}, CALL(menu(K::Down, true)), "a56c1600" TO_MAIN "d94201e803ae");
    row({"menu", "down", "release"}, CALL(menu(K::Down, false)), "a56c1600" TO_MAIN "d94200e703ae");
    row({"menu", "enter", "press"}, CALL(menu(K::Enter, true)), "a56c1600" TO_MAIN "d96b011104ae");
    row({"menu", "enter", "release"}, CALL(menu(K::Enter, false)), "");
    row({"reset"}, CALL(reset()), "");
    row({"set-address", "10.0.0.9"}, CALL(setAddress("10.0.0.9")),
        "a56c2000" IP_MAIN "050a0000090000000000000000ed02ae");
    row({"set-address", "0.0.0.0"}, CALL(setAddress("0.0.0.0")),
        "a56c2000" IP_MAIN "05000000000000000000000000da02ae");
    row({"set-address", "10.0.0"}, CALL(setAddress("10.0.0")), "");
    row({"set-address", "10.0.0.256"}, CALL(setAddress("10.0.0.256")), "");
    row({"set-address", "10.0.0.+9"}, CALL(setAddress("10.0.0.+9")), "");
    row({"his-address", "10.1.2.3", "255.255.255.0", "10.1.2.1"},
        CALL(hisAddress("10.1.2.3", "255.255.255.0", "10.1.2.1")),
        "a56c2000" TO_HIS "050a010203ffffff000a0102013106ae");
    row({"his-dns", "8.8.4.4"}, CALL(hisDns("8.8.4.4")), "a56c1c00" TO_HIS "230808040402503b8c6104ae");
    row({"his-read"}, CALL(readHis()), "a56c2000" TO_HIS "240000000000000000000000003503ae");
    row({"url-read", "4"}, CALL(readUrl(4)), "a56c1500" TO_HIS "6a047403ae");
    row({"url", "0", "cam", "rtmp://a"}, CALL(url(0, "cam", "rtmp://a")),
        "a56c2903" TO_HIS "6700000363616d00000000000000000000000000080072746d703a2f2f61<760>7c07ae");
    row({"url", "4", "", ""}, CALL(url(4, "", "")), "a56c2903" TO_HIS "670004<787>8803ae");
    row({"his-dns", "8.8.4"}, CALL(hisDns("8.8.4")), "");
    row({"url-read", "5"}, CALL(readUrl(5)), "");
    row({"url", "5", "cam", "rtmp://a"}, CALL(url(5, "cam", "rtmp://a")), "");
    row({"url", "0", "seventeen-bytes-x", "rtmp://a"}, CALL(url(0, "seventeen-bytes-x", "rtmp://a")), "");
    row(QStringList{"url", "0", "cam", QString(769, QLatin1Char('u'))},
        CALL(url(0, "cam", QByteArray(769, 'u'))), "");
}

// The RVX3220 panel: six inputs, a lever of 0-126 that marks no end, AUTO that
// sends nothing, levels sent with their source, PIP at up to 1440 x 810 and POP at up to 960 x 540,
// and an address dialog that refuses 0.0.0.0. It never asks for the state.
void TestUnitControl::rvx3220_data()
{
    columns(Family::Rvx3220);
    row({"read-state"}, CALL(readState()), "");
    row({"pgm", "1"}, CALL(programme(1)), "a56c1500" TO_MAIN "80014c03ae");
    row({"pgm", "6"}, CALL(programme(6)), "a56c1500" TO_MAIN "80065103ae");
    row({"pgm", "0"}, CALL(programme(0)), "");
    row({"pgm", "7"}, CALL(programme(7)), "");
    row({"pgm", "bar"}, CALL(programme(9)), "");
    row({"pvw", "1"}, CALL(preview(1)), "a56c1500" TO_MAIN "81014d03ae");
    row({"pvw", "6"}, CALL(preview(6)), "a56c1500" TO_MAIN "81065203ae");
    row({"pvw", "bar"}, CALL(preview(9)), "");
    row({"pvw", "7"}, CALL(preview(7)), "");
    row({"cut"}, CALL(cut()), "a56c1400" TO_MAIN "834d03ae");
    row({"auto"}, CALL(autoTransition()), "");
    row({"tbar", "0", "0"}, CALL(fader(0, 0)), "a56c1600" TO_MAIN "8200004e03ae");
    row({"tbar", "0", "125"}, CALL(fader(0, 125)), "a56c1600" TO_MAIN "82007dcb03ae");
    row({"tbar", "0", "126"}, CALL(fader(0, 126)), "");
    row({"tbar", "1", "126"}, CALL(fader(1, 126)), "a56c1600" TO_MAIN "82017ecd03ae");
    row({"tbar", "1", "127"}, CALL(fader(1, 127)), "");
    row({"tbar", "2", "0"}, CALL(fader(2, 0)), "");
    row({"transition", "mix"}, CALL(transition(E::Mix)), "a56c1400" TO_MAIN "8e5803ae");
    row({"transition", "fade"}, CALL(transition(E::Fade)), "a56c1400" TO_MAIN "8f5903ae");
    row({"transition", "wipe-up"}, CALL(transition(E::WipeUp)),
        "a56c1400" TO_MAIN "905a03ae"
        " "
        "a56c1500" TO_MAIN "92258203ae");
    row({"transition", "wipe-down"}, CALL(transition(E::WipeDown)),
        "a56c1400" TO_MAIN "905a03ae"
        " "
        "a56c1500" TO_MAIN "92298603ae");
    row({"transition", "wipe-left"}, CALL(transition(E::WipeLeft)),
        "a56c1400" TO_MAIN "905a03ae"
        " "
        "a56c1500" TO_MAIN "92238003ae");
    row({"transition", "wipe-right"}, CALL(transition(E::WipeRight)),
        "a56c1400" TO_MAIN "905a03ae"
        " "
        "a56c1500" TO_MAIN "92278403ae");
    row({}, CALL(transition(E(0))), "");
    row({}, CALL(transition(E(7))), "");
    row({"rate", "1"}, CALL(rate(1)), "");
    row({"rate", "3"}, CALL(rate(3)), "");
    row({"ftb"}, CALL(ftb()), "");
    row({"still"}, CALL(still()), "");
    row({"format", "1080p60"}, CALL(format(0)), "a56c1500" TO_MAIN "a3077503ae");
    row({"format", "1080i50"}, CALL(format(3)), "a56c1500" TO_MAIN "a3016f03ae");
    row({"format", "1080p24"}, CALL(format(6)), "a56c1500" TO_MAIN "a3057303ae");
    row({}, CALL(format(7)), "");
    row({"format", "720p60"}, NO_CALL, "");
    row({"audio", "afv"}, CALL(audioMode(false)), "a56c1400" TO_MAIN "cc9603ae");
    row({"audio", "mix"}, CALL(audioMode(true)), "a56c1400" TO_MAIN "cb9503ae");
    row({"ch1-source", "phone-in"}, CALL(source(1, 0)), "a56c1500" TO_MAIN "b9008403ae");
    row({"ch2-source", "in6"}, CALL(source(2, 7)), "a56c1500" TO_MAIN "ba088d03ae");
    row({"ch1-source", "aux-in"}, NO_CALL, "");
    row({}, CALL(source(1, 8)), "");
    row({}, CALL(source(3, 0)), "");
    row({"ch1-level", "0", "in1"}, CALL(level(1, 0, 2)), "a56c1600" TO_MAIN "b803008703ae");
    row({"ch2-level", "100", "rca-in"}, CALL(level(2, 100, 1)), "a56c1600" TO_MAIN "b80164e903ae");
    row({"ch1-level", "101", "in1"}, CALL(level(1, 101, 2)), "");
    row({"ch1-level", "50"}, CALL(level(1, 50)), "");
    row({"levels", "0", "0", "0", "0"}, CALL(levels(0, 0, 0, 0)), "");
    row({"levels", "127", "127", "0", "127"}, CALL(levels(127, 127, 0, 127)), "");
    row({"pip", "on"}, CALL(pip(true)), "a56c1500" TO_MAIN "86015203ae");
    row({"pip", "off"}, CALL(pip(false)), "a56c1500" TO_MAIN "86005103ae");
    row({"pip-size", "small"}, CALL(pipSize(0)), "a56c1500" TO_MAIN "a2006d03ae");
    row({"pip-size", "large"}, CALL(pipSize(2)), "a56c1500" TO_MAIN "a2026f03ae");
    row({}, CALL(pipSize(3)), "");
    row({"pip-h", "0"}, CALL(pipPosition(true, 0)), "a56c1600" TO_MAIN "a000006c03ae");
    row({"pip-h", "1440"}, CALL(pipPosition(true, 1440)), "a56c1600" TO_MAIN "a0a0051104ae");
    row({"pip-h", "1441"}, CALL(pipPosition(true, 1441)), "");
    row({"pip-v", "810"}, CALL(pipPosition(false, 810)), "a56c1600" TO_MAIN "a12a039a03ae");
    row({"pip-v", "811"}, CALL(pipPosition(false, 811)), "");
    row({"pip-v", "-1"}, CALL(pipPosition(false, -1)), "");
    row({"pip-border", "on"}, CALL(pipBorder(true)), "a56c1500" TO_MAIN "9d016903ae");
    row({"pip-border-color", "green"}, CALL(pipBorderColor(3)), "a56c1500" TO_MAIN "9e036c03ae");
    row({"pip-border-width", "2"}, CALL(pipBorderWidth(2)), "a56c1500" TO_MAIN "9f026c03ae");
    row({"pip-border-width", "7"}, CALL(pipBorderWidth(7)), "a56c1500" TO_MAIN "9f077103ae");
    row({"pip-border-width", "8"}, CALL(pipBorderWidth(8)), "");
    row({}, CALL(pipBorderColor(4)), "");
    row({"pop", "on"}, CALL(pop(true)), "a56c1500" TO_MAIN "a7017303ae");
    row({"pop", "off"}, CALL(pop(false)), "a56c1500" TO_MAIN "a7007203ae");
    row({"pop-window", "2"}, CALL(popWindow(2)), "a56c1500" TO_MAIN "a8027503ae");
    row({"pop-border", "on"}, CALL(popBorder(true)), "a56c1500" TO_MAIN "a9017503ae");
    row({"pop-border-color", "red"}, CALL(popBorderColor(1)), "a56c1500" TO_MAIN "aa017603ae");
    row({"pop-border-width", "7"}, CALL(popBorderWidth(7)), "a56c1500" TO_MAIN "ab077d03ae");
    row({"pop-h", "960"}, CALL(popPosition(true, 960)), "a56c1600" TO_MAIN "acc0033b04ae");
    row({"pop-v", "540"}, CALL(popPosition(false, 540)), "a56c1600" TO_MAIN "ad1c029703ae");
    row({"pop-window", "3"}, CALL(popWindow(3)), "");
    row({"pop-h", "961"}, CALL(popPosition(true, 961)), "");
    row({"pop-v", "541"}, CALL(popPosition(false, 541)), "");
    row({"f2"}, CALL(f2()), "");
    row({"f3"}, CALL(mute()), "");
    row({"f7"}, CALL(f7()), "");
    row({"bar", "on"}, CALL(bar(true)), "");
    row({"bar", "off"}, CALL(bar(false)), "");
    row({"rec", "on"}, CALL(rec(true)), "");
    row({"rec", "off"}, CALL(rec(false)), "");
    row({"pause"}, CALL(pause()), "");
    row({"stream", "on"}, CALL(stream(true)), "");
    row({"stream", "off"}, CALL(stream(false)), "");
    row({"rotate"}, CALL(rotate()), "");
    row({"menu", "up", "press"}, CALL(menu(K::Up, true)), "");
    row({"reset"}, CALL(reset()), "");
    row({"set-address", "10.0.0.9"}, CALL(setAddress("10.0.0.9")),
        "a56c2000" IP_MAIN "050a0000090000000000000000ed02ae");
    row({"set-address", "0.0.0.0"}, CALL(setAddress("0.0.0.0")), "");
    row({"set-address", "000.0.0.0"}, CALL(setAddress("000.0.0.0")), "");
    row({"set-address", "10.0.0"}, CALL(setAddress("10.0.0")), "");
    row({"set-address", "10.0.0.256"}, CALL(setAddress("10.0.0.256")), "");
    row({"set-address", "10.0.0.+9"}, CALL(setAddress("10.0.0.+9")), "");
    row({"his-address", "10.1.2.3", "255.255.255.0", "10.1.2.1"},
        CALL(hisAddress("10.1.2.3", "255.255.255.0", "10.1.2.1")), "");
    row({"his-dns", "8.8.4.4"}, CALL(hisDns("8.8.4.4")), "");
    row({"his-read"}, CALL(readHis()), "");
    row({"url-read", "4"}, CALL(readUrl(4)), "");
    row({"url", "0", "cam", "rtmp://a"}, CALL(url(0, "cam", "rtmp://a")), "");
    row({"url", "4", "", ""}, CALL(url(4, "", "")), "");
}

// The RVX5310 panel: the bars on both rows, the PIP settings with the border,
// F1 streams and F2 is POP; the audio faders go out with 0 and 100. No network page.
void TestUnitControl::rvx5310_data()
{
    columns(Family::Rvx5310);
    row({"read-state"}, CALL(readState()), "a56c1400" TO_MAIN "491303ae");
    row({"pgm", "1"}, CALL(programme(1)), "a56c1500" TO_MAIN "80014c03ae");
    row({"pgm", "4"}, CALL(programme(4)), "a56c1500" TO_MAIN "80044f03ae");
    row({"pgm", "0"}, CALL(programme(0)), "");
    row({"pgm", "5"}, CALL(programme(5)), "");
    row({"pgm", "bar"}, CALL(programme(9)), "a56c1500" TO_MAIN "80095403ae");
    row({"pvw", "1"}, CALL(preview(1)), "a56c1500" TO_MAIN "81014d03ae");
    row({"pvw", "4"}, CALL(preview(4)), "a56c1500" TO_MAIN "81045003ae");
    row({"pvw", "bar"}, CALL(preview(9)), "a56c1500" TO_MAIN "81095503ae");
    row({"pvw", "5"}, CALL(preview(5)), "");
    row({"cut"}, CALL(cut()), "a56c1400" TO_MAIN "834d03ae");
    row({"auto"}, CALL(autoTransition()), "a56c1400" TO_MAIN "844e03ae");
    row({"tbar", "1", "0"}, CALL(fader(1, 0)), "a56c1600" TO_MAIN "8201004f03ae");
    row({"tbar", "0", "127"}, CALL(fader(0, 127)), "a56c1600" TO_MAIN "82007fcd03ae");
    row({"tbar", "1", "128"}, CALL(fader(1, 128)), "a56c1600" TO_MAIN "820180cf03ae");
    row({"tbar", "0", "129"}, CALL(fader(0, 129)), "");
    row({"tbar", "2", "0"}, CALL(fader(2, 0)), "");
    row({"transition", "mix"}, CALL(transition(E::Mix)), "a56c1400" TO_MAIN "8d5703ae");
    row({"transition", "fade"}, CALL(transition(E::Fade)), "a56c1400" TO_MAIN "8e5803ae");
    row({"transition", "wipe-up"}, CALL(transition(E::WipeUp)),
        "a56c1400" TO_MAIN "8f5903ae"
        " "
        "a56c1500" TO_MAIN "922a8703ae");
    row({"transition", "wipe-down"}, CALL(transition(E::WipeDown)),
        "a56c1400" TO_MAIN "8f5903ae"
        " "
        "a56c1500" TO_MAIN "922e8b03ae");
    row({"transition", "wipe-left"}, CALL(transition(E::WipeLeft)),
        "a56c1400" TO_MAIN "8f5903ae"
        " "
        "a56c1500" TO_MAIN "92288503ae");
    row({"transition", "wipe-right"}, CALL(transition(E::WipeRight)),
        "a56c1400" TO_MAIN "8f5903ae"
        " "
        "a56c1500" TO_MAIN "922c8903ae");
    row({}, CALL(transition(E(0))), "");
    row({}, CALL(transition(E(7))), "");
    row({"rate", "1"}, CALL(rate(1)), "a56c1500" TO_MAIN "a5007003ae");
    row({"rate", "3"}, CALL(rate(3)), "a56c1500" TO_MAIN "a5027203ae");
    row({"rate", "4"}, CALL(rate(4)), "");
    row({"rate", "0"}, CALL(rate(0)), "");
    row({"ftb"}, CALL(ftb()), "a56c1400" TO_MAIN "854f03ae");
    row({"still"}, CALL(still()), "a56c1400" TO_MAIN "cd9703ae");
    row({"format", "1080p60"}, CALL(format(0)), "a56c1500" TO_MAIN "a3077503ae");
    row({"format", "1080i50"}, CALL(format(3)), "a56c1500" TO_MAIN "a3016f03ae");
    row({"format", "1080p24"}, CALL(format(6)), "a56c1500" TO_MAIN "a3057303ae");
    row({}, CALL(format(7)), "");
    row({"format", "720p60"}, NO_CALL, "");
    row({"audio", "afv"}, CALL(audioMode(false)), "a56c1400" TO_MAIN "cc9603ae");
    row({"audio", "mix"}, CALL(audioMode(true)), "a56c1400" TO_MAIN "cb9503ae");
    row({"ch1-source", "aux-in"}, CALL(source(1, 0)), "a56c1500" TO_MAIN "b9078b03ae");
    row({"ch2-source", "mic-in2"}, CALL(source(2, 6)), "a56c1500" TO_MAIN "ba008503ae");
    row({"ch1-source", "in5"}, NO_CALL, "");
    row({}, CALL(source(1, 7)), "");
    row({}, CALL(source(3, 0)), "");
    row({"ch1-level", "0"}, CALL(level(1, 0)), "");
    row({"ch2-level", "100"}, CALL(level(2, 100)), "");
    row({"levels", "0", "0", "0", "100"}, CALL(levels(0, 0, 0, 100)), "a56c1800" TO_MAIN "b400000064e603ae");
    row({"levels", "127", "127", "0", "100"}, CALL(levels(127, 127, 0, 100)),
        "a56c1800" TO_MAIN "b47f7f0064e404ae");
    row({"levels", "10", "20", "1", "100"}, CALL(levels(10, 20, 1, 100)), "");
    row({"levels", "128", "0", "0", "100"}, CALL(levels(128, 0, 0, 100)), "");
    row({"levels", "0", "0", "0", "99"}, CALL(levels(0, 0, 0, 99)), "");
    row({"levels", "0", "0", "0", "127"}, CALL(levels(0, 0, 0, 127)), "");
    row({"pip", "on"}, CALL(pip(true)), "a56c1500" TO_MAIN "86015203ae");
    row({"pip", "off"}, CALL(pip(false)), "a56c1500" TO_MAIN "86005103ae");
    row({"pip-size", "small"}, CALL(pipSize(0)), "a56c1500" TO_MAIN "a2006d03ae");
    row({"pip-size", "large"}, CALL(pipSize(2)), "a56c1500" TO_MAIN "a2026f03ae");
    row({}, CALL(pipSize(3)), "");
    row({"pip-h", "0"}, CALL(pipPosition(true, 0)), "a56c1600" TO_MAIN "a000006c03ae");
    row({"pip-h", "1440"}, CALL(pipPosition(true, 1440)), "a56c1600" TO_MAIN "a0a0051104ae");
    row({"pip-h", "1441"}, CALL(pipPosition(true, 1441)), "");
    row({"pip-v", "810"}, CALL(pipPosition(false, 810)), "a56c1600" TO_MAIN "a12a039a03ae");
    row({"pip-v", "811"}, CALL(pipPosition(false, 811)), "");
    row({"pip-v", "-1"}, CALL(pipPosition(false, -1)), "");
    row({"pip-border", "on"}, CALL(pipBorder(true)), "a56c1500" TO_MAIN "9d016903ae");
    row({"pip-border-color", "green"}, CALL(pipBorderColor(3)), "a56c1500" TO_MAIN "9e036c03ae");
    row({"pip-border-width", "2"}, CALL(pipBorderWidth(2)), "a56c1500" TO_MAIN "9f026c03ae");
    row({"pip-border-width", "7"}, CALL(pipBorderWidth(7)), "a56c1500" TO_MAIN "9f077103ae");
    row({"pip-border-width", "8"}, CALL(pipBorderWidth(8)), "");
    row({}, CALL(pipBorderColor(4)), "");
    row({"pop", "on"}, CALL(pop(true)), "a56c1500" TO_MAIN "a7017303ae");
    row({"pop", "off"}, CALL(pop(false)), "a56c1500" TO_MAIN "a7007203ae");
    row({"pop-window", "2"}, CALL(popWindow(2)), "");
    row({"pop-border", "on"}, CALL(popBorder(true)), "");
    row({"pop-border-color", "red"}, CALL(popBorderColor(1)), "");
    row({"pop-border-width", "7"}, CALL(popBorderWidth(7)), "");
    row({"pop-h", "960"}, CALL(popPosition(true, 960)), "");
    row({"pop-v", "540"}, CALL(popPosition(false, 540)), "");
    row({"f2"}, CALL(f2()), "");
    row({"f3"}, CALL(mute()), "a56c1400" TO_MAIN "d49e03ae");
    row({"f7"}, CALL(f7()), "");
    row({"bar", "on"}, CALL(bar(true)), "");
    row({"bar", "off"}, CALL(bar(false)), "");
    row({"rec", "on"}, CALL(rec(true)), "a56c1500" TO_MAIN "b2017e03ae");
    row({"rec", "off"}, CALL(rec(false)), "a56c1500" TO_MAIN "b2007d03ae");
    row({"pause"}, CALL(pause()), "a56c1400" TO_MAIN "c58f03ae");
    row({"stream", "on"}, CALL(stream(true)), "a56c1500" TO_MAIN "87015303ae");
    row({"stream", "off"}, CALL(stream(false)), "a56c1500" TO_MAIN "87005203ae");
    row({"rotate"}, CALL(rotate()), "");
    row({"menu", "up", "press"}, CALL(menu(K::Up, true)), "");
    row({"reset"}, CALL(reset()), "a56c1400" TO_MAIN "0bd502ae");
    row({"set-address", "10.0.0.9"}, CALL(setAddress("10.0.0.9")), "");
    row({"set-address", "0.0.0.0"}, CALL(setAddress("0.0.0.0")), "");
    row({"his-address", "10.1.2.3", "255.255.255.0", "10.1.2.1"},
        CALL(hisAddress("10.1.2.3", "255.255.255.0", "10.1.2.1")), "");
    row({"his-dns", "8.8.4.4"}, CALL(hisDns("8.8.4.4")), "");
    row({"his-read"}, CALL(readHis()), "");
    row({"url-read", "4"}, CALL(readUrl(4)), "");
    row({"url", "0", "cam", "rtmp://a"}, CALL(url(0, "cam", "rtmp://a")), "");
    row({"url", "4", "", ""}, CALL(url(4, "", "")), "");
}

// The RVX5370 panel: four inputs without the bars, whose BAR key puts them
// on both buses; PIP by its preview box and SET, with no border controls.
void TestUnitControl::rvx5370_data()
{
    columns(Family::Rvx5370);
    row({"read-state"}, CALL(readState()), "a56c1400" TO_MAIN "491303ae");
    row({"pgm", "1"}, CALL(programme(1)), "a56c1500" TO_MAIN "80014c03ae");
    row({"pgm", "4"}, CALL(programme(4)), "a56c1500" TO_MAIN "80044f03ae");
    row({"pgm", "0"}, CALL(programme(0)), "");
    row({"pgm", "5"}, CALL(programme(5)), "");
    row({"pgm", "bar"}, CALL(programme(9)), "");
    row({"pvw", "1"}, CALL(preview(1)), "a56c1500" TO_MAIN "81014d03ae");
    row({"pvw", "4"}, CALL(preview(4)), "a56c1500" TO_MAIN "81045003ae");
    row({"pvw", "bar"}, CALL(preview(9)), "");
    row({"pvw", "5"}, CALL(preview(5)), "");
    row({"cut"}, CALL(cut()), "a56c1400" TO_MAIN "834d03ae");
    row({"auto"}, CALL(autoTransition()), "a56c1400" TO_MAIN "844e03ae");
    row({"tbar", "1", "0"}, CALL(fader(1, 0)), "a56c1600" TO_MAIN "8201004f03ae");
    row({"tbar", "0", "127"}, CALL(fader(0, 127)), "a56c1600" TO_MAIN "82007fcd03ae");
    row({"tbar", "1", "128"}, CALL(fader(1, 128)), "a56c1600" TO_MAIN "820180cf03ae");
    row({"tbar", "0", "129"}, CALL(fader(0, 129)), "");
    row({"tbar", "2", "0"}, CALL(fader(2, 0)), "");
    row({"transition", "mix"}, CALL(transition(E::Mix)), "a56c1400" TO_MAIN "8d5703ae");
    row({"transition", "fade"}, CALL(transition(E::Fade)), "a56c1400" TO_MAIN "8e5803ae");
    row({"transition", "wipe-up"}, CALL(transition(E::WipeUp)),
        "a56c1400" TO_MAIN "8f5903ae"
        " "
        "a56c1500" TO_MAIN "922a8703ae");
    row({"transition", "wipe-down"}, CALL(transition(E::WipeDown)),
        "a56c1400" TO_MAIN "8f5903ae"
        " "
        "a56c1500" TO_MAIN "922e8b03ae");
    row({"transition", "wipe-left"}, CALL(transition(E::WipeLeft)),
        "a56c1400" TO_MAIN "8f5903ae"
        " "
        "a56c1500" TO_MAIN "92288503ae");
    row({"transition", "wipe-right"}, CALL(transition(E::WipeRight)),
        "a56c1400" TO_MAIN "8f5903ae"
        " "
        "a56c1500" TO_MAIN "922c8903ae");
    row({}, CALL(transition(E(0))), "");
    row({}, CALL(transition(E(7))), "");
    row({"rate", "1"}, CALL(rate(1)), "a56c1500" TO_MAIN "a5007003ae");
    row({"rate", "3"}, CALL(rate(3)), "a56c1500" TO_MAIN "a5027203ae");
    row({"rate", "4"}, CALL(rate(4)), "");
    row({"rate", "0"}, CALL(rate(0)), "");
    row({"ftb"}, CALL(ftb()), "a56c1400" TO_MAIN "854f03ae");
    row({"still"}, CALL(still()), "a56c1400" TO_MAIN "cd9703ae");
    row({"format", "1080p60"}, CALL(format(0)), "a56c1500" TO_MAIN "a3077503ae");
    row({"format", "1080i50"}, CALL(format(3)), "a56c1500" TO_MAIN "a3016f03ae");
    row({"format", "1080p24"}, CALL(format(6)), "a56c1500" TO_MAIN "a3057303ae");
    row({}, CALL(format(7)), "");
    row({"format", "720p60"}, NO_CALL, "");
    row({"audio", "afv"}, CALL(audioMode(false)), "a56c1400" TO_MAIN "cc9603ae");
    row({"audio", "mix"}, CALL(audioMode(true)), "a56c1400" TO_MAIN "cb9503ae");
    row({"ch1-source", "aux-in"}, CALL(source(1, 0)), "a56c1500" TO_MAIN "b9078b03ae");
    row({"ch2-source", "mic-in2"}, CALL(source(2, 6)), "a56c1500" TO_MAIN "ba008503ae");
    row({"ch1-source", "in5"}, NO_CALL, "");
    row({}, CALL(source(1, 7)), "");
    row({}, CALL(source(3, 0)), "");
    row({"ch1-level", "0"}, CALL(level(1, 0)), "");
    row({"ch2-level", "100"}, CALL(level(2, 100)), "");
    row({"levels", "0", "0", "0", "100"}, CALL(levels(0, 0, 0, 100)), "a56c1800" TO_MAIN "b400000064e603ae");
    row({"levels", "127", "127", "0", "100"}, CALL(levels(127, 127, 0, 100)),
        "a56c1800" TO_MAIN "b47f7f0064e404ae");
    row({"levels", "10", "20", "1", "100"}, CALL(levels(10, 20, 1, 100)), "");
    row({"levels", "128", "0", "0", "100"}, CALL(levels(128, 0, 0, 100)), "");
    row({"levels", "0", "0", "0", "99"}, CALL(levels(0, 0, 0, 99)), "");
    row({"levels", "0", "0", "0", "127"}, CALL(levels(0, 0, 0, 127)), "");
    row({"pip", "on"}, CALL(pip(true)), "a56c1500" TO_MAIN "86015203ae");
    row({"pip", "off"}, CALL(pip(false)), "a56c1500" TO_MAIN "86005103ae");
    row({"pip-size", "small"}, CALL(pipSize(0)), "a56c1500" TO_MAIN "a2006d03ae");
    row({"pip-size", "large"}, CALL(pipSize(2)), "a56c1500" TO_MAIN "a2026f03ae");
    row({}, CALL(pipSize(3)), "");
    row({"pip-h", "0"}, CALL(pipPosition(true, 0)), "a56c1600" TO_MAIN "a000006c03ae");
    row({"pip-h", "1440"}, CALL(pipPosition(true, 1440)), "a56c1600" TO_MAIN "a0a0051104ae");
    row({"pip-h", "1441"}, CALL(pipPosition(true, 1441)), "");
    row({"pip-v", "810"}, CALL(pipPosition(false, 810)), "a56c1600" TO_MAIN "a12a039a03ae");
    row({"pip-v", "811"}, CALL(pipPosition(false, 811)), "");
    row({"pip-v", "-1"}, CALL(pipPosition(false, -1)), "");
    row({"pip-border", "on"}, CALL(pipBorder(true)), "");
    row({"pip-border-color", "green"}, CALL(pipBorderColor(3)), "");
    row({"pip-border-width", "2"}, CALL(pipBorderWidth(2)), "");
    row({"pip-border-width", "7"}, CALL(pipBorderWidth(7)), "");
    row({"pop", "on"}, CALL(pop(true)), "a56c1500" TO_MAIN "a7017303ae");
    row({"pop", "off"}, CALL(pop(false)), "a56c1500" TO_MAIN "a7007203ae");
    row({"pop-window", "2"}, CALL(popWindow(2)), "");
    row({"pop-border", "on"}, CALL(popBorder(true)), "");
    row({"pop-border-color", "red"}, CALL(popBorderColor(1)), "");
    row({"pop-border-width", "7"}, CALL(popBorderWidth(7)), "");
    row({"pop-h", "960"}, CALL(popPosition(true, 960)), "");
    row({"pop-v", "540"}, CALL(popPosition(false, 540)), "");
    row({"f2"}, CALL(f2()), "");
    row({"f3"}, CALL(mute()), "a56c1400" TO_MAIN "d49e03ae");
    row({"f7"}, CALL(f7()), "");
    row({"bar", "on"}, CALL(bar(true)),
        "a56c1500" TO_MAIN "d701a303ae"
        " "
        "a56c1500" TO_MAIN "d801a403ae");
    row({"bar", "off"}, CALL(bar(false)),
        "a56c1500" TO_MAIN "d700a203ae"
        " "
        "a56c1500" TO_MAIN "d800a303ae");
    row({"rec", "on"}, CALL(rec(true)), "a56c1500" TO_MAIN "b2017e03ae");
    row({"rec", "off"}, CALL(rec(false)), "a56c1500" TO_MAIN "b2007d03ae");
    row({"pause"}, CALL(pause()), "a56c1400" TO_MAIN "c58f03ae");
    row({"stream", "on"}, CALL(stream(true)), "a56c1500" TO_MAIN "87015303ae");
    row({"stream", "off"}, CALL(stream(false)), "a56c1500" TO_MAIN "87005203ae");
    row({"rotate"}, CALL(rotate()), "");
    row({"menu", "up", "press"}, CALL(menu(K::Up, true)), "");
    row({"reset"}, CALL(reset()), "a56c1400" TO_MAIN "0bd502ae");
    row({"set-address", "10.0.0.9"}, CALL(setAddress("10.0.0.9")), "");
    row({"set-address", "0.0.0.0"}, CALL(setAddress("0.0.0.0")), "");
    row({"his-address", "10.1.2.3", "255.255.255.0", "10.1.2.1"},
        CALL(hisAddress("10.1.2.3", "255.255.255.0", "10.1.2.1")), "");
    row({"his-dns", "8.8.4.4"}, CALL(hisDns("8.8.4.4")), "");
    row({"his-read"}, CALL(readHis()), "");
    row({"url-read", "4"}, CALL(readUrl(4)), "");
    row({"url", "0", "cam", "rtmp://a"}, CALL(url(0, "cam", "rtmp://a")), "");
    row({"url", "4", "", ""}, CALL(url(4, "", "")), "");
}

// The RVX5350 panel: two inputs on one bus, with no PVW row, CUT, FTB,
// PAUSE or bars, and four audio sources.
void TestUnitControl::rvx5350_data()
{
    columns(Family::Rvx5350);
    row({"read-state"}, CALL(readState()), "a56c1400" TO_MAIN "491303ae");
    row({"pgm", "1"}, CALL(programme(1)), "a56c1500" TO_MAIN "80014c03ae");
    row({"pgm", "2"}, CALL(programme(2)), "a56c1500" TO_MAIN "80024d03ae");
    row({"pgm", "0"}, CALL(programme(0)), "");
    row({"pgm", "3"}, CALL(programme(3)), "");
    row({"pgm", "bar"}, CALL(programme(9)), "");
    row({"pvw", "1"}, CALL(preview(1)), "");
    row({"pvw", "2"}, CALL(preview(2)), "");
    row({"pvw", "bar"}, CALL(preview(9)), "");
    row({"pvw", "3"}, CALL(preview(3)), "");
    row({"cut"}, CALL(cut()), "");
    row({"auto"}, CALL(autoTransition()), "a56c1400" TO_MAIN "844e03ae");
    row({"tbar", "1", "0"}, CALL(fader(1, 0)), "a56c1600" TO_MAIN "8201004f03ae");
    row({"tbar", "0", "127"}, CALL(fader(0, 127)), "a56c1600" TO_MAIN "82007fcd03ae");
    row({"tbar", "1", "128"}, CALL(fader(1, 128)), "a56c1600" TO_MAIN "820180cf03ae");
    row({"tbar", "0", "129"}, CALL(fader(0, 129)), "");
    row({"tbar", "2", "0"}, CALL(fader(2, 0)), "");
    row({"transition", "mix"}, CALL(transition(E::Mix)), "a56c1400" TO_MAIN "8d5703ae");
    row({"transition", "fade"}, CALL(transition(E::Fade)), "a56c1400" TO_MAIN "8e5803ae");
    row({"transition", "wipe-up"}, CALL(transition(E::WipeUp)),
        "a56c1400" TO_MAIN "8f5903ae"
        " "
        "a56c1500" TO_MAIN "922a8703ae");
    row({"transition", "wipe-down"}, CALL(transition(E::WipeDown)),
        "a56c1400" TO_MAIN "8f5903ae"
        " "
        "a56c1500" TO_MAIN "922e8b03ae");
    row({"transition", "wipe-left"}, CALL(transition(E::WipeLeft)),
        "a56c1400" TO_MAIN "8f5903ae"
        " "
        "a56c1500" TO_MAIN "92288503ae");
    row({"transition", "wipe-right"}, CALL(transition(E::WipeRight)),
        "a56c1400" TO_MAIN "8f5903ae"
        " "
        "a56c1500" TO_MAIN "922c8903ae");
    row({}, CALL(transition(E(0))), "");
    row({}, CALL(transition(E(7))), "");
    row({"rate", "1"}, CALL(rate(1)), "a56c1500" TO_MAIN "a5007003ae");
    row({"rate", "3"}, CALL(rate(3)), "a56c1500" TO_MAIN "a5027203ae");
    row({"rate", "4"}, CALL(rate(4)), "");
    row({"rate", "0"}, CALL(rate(0)), "");
    row({"ftb"}, CALL(ftb()), "");
    row({"still"}, CALL(still()), "a56c1400" TO_MAIN "cd9703ae");
    row({"format", "1080p60"}, CALL(format(0)), "a56c1500" TO_MAIN "a3077503ae");
    row({"format", "1080i50"}, CALL(format(3)), "a56c1500" TO_MAIN "a3016f03ae");
    row({"format", "1080p24"}, CALL(format(6)), "a56c1500" TO_MAIN "a3057303ae");
    row({}, CALL(format(7)), "");
    row({"format", "720p60"}, NO_CALL, "");
    row({"audio", "afv"}, CALL(audioMode(false)), "a56c1400" TO_MAIN "cc9603ae");
    row({"audio", "mix"}, CALL(audioMode(true)), "a56c1400" TO_MAIN "cb9503ae");
    row({"ch1-source", "in1"}, CALL(source(1, 0)), "a56c1500" TO_MAIN "b9038703ae");
    row({"ch2-source", "mic-in2"}, CALL(source(2, 3)), "a56c1500" TO_MAIN "ba008503ae");
    row({"ch1-source", "aux-in"}, NO_CALL, "");
    row({}, CALL(source(1, 4)), "");
    row({}, CALL(source(3, 0)), "");
    row({"ch1-level", "0"}, CALL(level(1, 0)), "");
    row({"ch2-level", "100"}, CALL(level(2, 100)), "");
    row({"levels", "0", "0", "0", "100"}, CALL(levels(0, 0, 0, 100)), "a56c1800" TO_MAIN "b400000064e603ae");
    row({"levels", "127", "127", "0", "100"}, CALL(levels(127, 127, 0, 100)),
        "a56c1800" TO_MAIN "b47f7f0064e404ae");
    row({"levels", "10", "20", "1", "100"}, CALL(levels(10, 20, 1, 100)), "");
    row({"levels", "128", "0", "0", "100"}, CALL(levels(128, 0, 0, 100)), "");
    row({"levels", "0", "0", "0", "99"}, CALL(levels(0, 0, 0, 99)), "");
    row({"levels", "0", "0", "0", "127"}, CALL(levels(0, 0, 0, 127)), "");
    row({"pip", "on"}, CALL(pip(true)), "a56c1500" TO_MAIN "86015203ae");
    row({"pip", "off"}, CALL(pip(false)), "a56c1500" TO_MAIN "86005103ae");
    row({"pip-size", "small"}, CALL(pipSize(0)), "a56c1500" TO_MAIN "a2006d03ae");
    row({"pip-size", "large"}, CALL(pipSize(2)), "a56c1500" TO_MAIN "a2026f03ae");
    row({}, CALL(pipSize(3)), "");
    row({"pip-h", "0"}, CALL(pipPosition(true, 0)), "a56c1600" TO_MAIN "a000006c03ae");
    row({"pip-h", "1440"}, CALL(pipPosition(true, 1440)), "a56c1600" TO_MAIN "a0a0051104ae");
    row({"pip-h", "1441"}, CALL(pipPosition(true, 1441)), "");
    row({"pip-v", "810"}, CALL(pipPosition(false, 810)), "a56c1600" TO_MAIN "a12a039a03ae");
    row({"pip-v", "811"}, CALL(pipPosition(false, 811)), "");
    row({"pip-v", "-1"}, CALL(pipPosition(false, -1)), "");
    row({"pip-border", "on"}, CALL(pipBorder(true)), "");
    row({"pip-border-color", "green"}, CALL(pipBorderColor(3)), "");
    row({"pip-border-width", "2"}, CALL(pipBorderWidth(2)), "");
    row({"pip-border-width", "7"}, CALL(pipBorderWidth(7)), "");
    row({"pop", "on"}, CALL(pop(true)), "a56c1500" TO_MAIN "a7017303ae");
    row({"pop", "off"}, CALL(pop(false)), "a56c1500" TO_MAIN "a7007203ae");
    row({"pop-window", "2"}, CALL(popWindow(2)), "");
    row({"pop-border", "on"}, CALL(popBorder(true)), "");
    row({"pop-border-color", "red"}, CALL(popBorderColor(1)), "");
    row({"pop-border-width", "7"}, CALL(popBorderWidth(7)), "");
    row({"pop-h", "960"}, CALL(popPosition(true, 960)), "");
    row({"pop-v", "540"}, CALL(popPosition(false, 540)), "");
    row({"f2"}, CALL(f2()), "");
    row({"f3"}, CALL(mute()), "a56c1400" TO_MAIN "d49e03ae");
    row({"f7"}, CALL(f7()), "");
    row({"bar", "on"}, CALL(bar(true)), "");
    row({"bar", "off"}, CALL(bar(false)), "");
    row({"rec", "on"}, CALL(rec(true)), "a56c1500" TO_MAIN "b2017e03ae");
    row({"rec", "off"}, CALL(rec(false)), "a56c1500" TO_MAIN "b2007d03ae");
    row({"pause"}, CALL(pause()), "");
    row({"stream", "on"}, CALL(stream(true)), "a56c1500" TO_MAIN "87015303ae");
    row({"stream", "off"}, CALL(stream(false)), "a56c1500" TO_MAIN "87005203ae");
    row({"rotate"}, CALL(rotate()), "");
    row({"menu", "up", "press"}, CALL(menu(K::Up, true)), "");
    row({"reset"}, CALL(reset()), "a56c1400" TO_MAIN "0bd502ae");
    row({"set-address", "10.0.0.9"}, CALL(setAddress("10.0.0.9")), "");
    row({"set-address", "0.0.0.0"}, CALL(setAddress("0.0.0.0")), "");
    row({"his-address", "10.1.2.3", "255.255.255.0", "10.1.2.1"},
        CALL(hisAddress("10.1.2.3", "255.255.255.0", "10.1.2.1")), "");
    row({"his-dns", "8.8.4.4"}, CALL(hisDns("8.8.4.4")), "");
    row({"his-read"}, CALL(readHis()), "");
    row({"url-read", "4"}, CALL(readUrl(4)), "");
    row({"url", "0", "cam", "rtmp://a"}, CALL(url(0, "cam", "rtmp://a")), "");
    row({"url", "4", "", ""}, CALL(url(4, "", "")), "");
}

// The RVX5120 panel draws its keys and sends nothing.
void TestUnitControl::rvx5120_data()
{
    columns(Family::Rvx5120);
    row({"read-state"}, CALL(readState()), "");
    row({"pgm", "1"}, CALL(programme(1)), "");
    row({"auto"}, CALL(autoTransition()), "");
    row({"tbar", "1", "0"}, CALL(fader(1, 0)), "");
    row({"transition", "mix"}, CALL(transition(E::Mix)), "");
    row({"format", "1080p60"}, CALL(format(0)), "");
    row({"audio", "mix"}, CALL(audioMode(true)), "");
    row({"ch1-source", "in1"}, CALL(source(1, 1)), "");
    row({"levels", "0", "0", "0", "100"}, CALL(levels(0, 0, 0, 100)), "");
    row({"pip", "on"}, CALL(pip(true)), "");
    row({"pip-size", "small"}, CALL(pipSize(0)), "");
    row({"pip-h", "0"}, CALL(pipPosition(true, 0)), "");
    row({"still"}, CALL(still()), "");
    row({"f3"}, CALL(mute()), "");
    row({"pop", "on"}, CALL(pop(true)), "");
    row({"reset"}, CALL(reset()), "");
    row({"rate", "1"}, CALL(rate(1)), "");
}

void TestUnitControl::modelTable_data()
{
    QTest::addColumn<int>("childType");
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("panel");
    QTest::addColumn<Family>("family");
    QTest::addColumn<QString>("label");
    QTest::addColumn<int>("filter"); // the filter besides "all" that lists it, 0 for none
    auto row = [](int type, const char *name, PanelKind panel, Family family, const char *label,
                  ModelFilter filter) {
        QTest::newRow(qPrintable(QStringLiteral("0x%1").arg(type, 2, 16, QLatin1Char('0'))))
            << type << QString(name) << int(panel) << family << QString(label) << int(filter);
    };
    using P = PanelKind;
    using F = Family;
    using M = ModelFilter;
    row(0x21, "RVX3210", P::Rvx3210, F::Rvx3210, "RVX3210: ", M::Rvx3210);
    row(0x23, "RVX3210", P::Rvx3210, F::Rvx3210, "", M::All);
    row(0x24, "RVX3210S", P::Rvx3210, F::Rvx3210, "RVX3210S: ", M::Rvx3210);
    row(0x25, "RVX3210(2021)", P::Rvx3210, F::Rvx3210, "RVX3210(2021): ", M::Rvx3210);
    row(0x26, "RVX3210P", P::Rvx3210, F::Rvx3210, "RVX3210P: ", M::Rvx3210);
    row(0x47, "RVX3210", P::Rvx3210, F::Rvx3210, "", M::All);
    row(0x22, "RVX3220", P::Rvx3220, F::Rvx3220, "RVX3220: ", M::Rvx3220);
    row(0x28, "RVX3410", P::Rvx3410, F::Rvx3410, "", M::All);
    row(0x4f, "RVX5310", P::Rvx5310, F::Rvx5310, "", M::All);
    row(0x56, "RVX5370", P::Rvx5370, F::Rvx5370, "", M::All);
    row(0x55, "RVX5350", P::Rvx5350, F::Rvx5350, "", M::All);
    row(0x99, "unknown (0x99)", P::Rvx3210, F::Rvx3210, "", M::All);
}

void TestUnitControl::modelTable()
{
    QFETCH(int, childType);
    QFETCH(int, filter);
    const uint8_t type = uint8_t(childType);
    const UnitModel &model = UnitModels::forChildType(type);
    QTEST(UnitModels::modelName(type), "name");
    QTEST(int(model.panel), "panel");
    QTEST(model.family, "family");
    QTEST(UnitModels::filterLabel(type), "label");
    for (ModelFilter f : {ModelFilter::Rvx3210, ModelFilter::Rvx3220, ModelFilter::Rvx5370})
        QCOMPARE(UnitModels::admits(f, type), int(f) == filter);
    QVERIFY(UnitModels::admits(ModelFilter::All, type));
    // The panel opened speaks the model's family.
    QCOMPARE(UnitModels::forPanel(model.panel).family, model.family);
}

QTEST_GUILESS_MAIN(TestUnitControl)
#include "tst_unitcontrol.moc"
