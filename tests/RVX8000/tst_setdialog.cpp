// The RVX5370 panel's settings window offscreen, and through it what both settings fronts
// share: the key cycles on the wire and in the signals the panel listens to, the PIP size key
// dead while locked, the flash of each key, the serial number, and the keyboard.
#include "RVX8000/setdialog.h"
#include "rig8000.h"

using namespace Rig8000;

namespace {

struct Rig
{
    Rig()
    {
        link.get_DevTypeID(QStringLiteral("127.0.0.2"), 0xA5, 0xFF);
        host.resize(400, 300);
        host.show();
        dialog.show();
    }
    QPushButton *key(const char *name) { return dialog.findChild<QPushButton *>(QLatin1String(name)); }
    QList<QByteArray> sent() { return takeFrames(spy); }
    int announced() { return size.count() + rate.count() + reso.count(); }

    RVX5ALL_workdata link;
    QSignalSpy spy{&link, &RVX5ALL_workdata::showCurrentData};
    QWidget host;
    SetDialog dialog{&host, &link};
    QSignalSpy size{&dialog, &SetDialog::setPIPSZ_Style};
    QSignalSpy rate{&dialog, &SetDialog::setRATE_Style};
    QSignalSpy reso{&dialog, &SetDialog::setRESO_Style};
};

QList<int> ints(QSignalSpy &spy)
{
    QList<int> out;
    for (const QList<QVariant> &args : spy)
        out << args.at(0).toInt();
    spy.clear();
    return out;
}

} // namespace

class TestSetDialog : public QObject
{
    Q_OBJECT
private slots:
    void resoAndRateCycles();
    void pipSizeOnlyWhileUnlocked();
    void keysFlashForTheirWait_data();
    void keysFlashForTheirWait();
    void serialNumber_data();
    void serialNumber();
    void keyboardClicksNoKey();
    void freedDuringAWaitSendsNothing();
};

void TestSetDialog::resoAndRateCycles()
{
    Rig rig;
    for (int i = 0; i < 7; ++i)
        rig.key("btn_reso")->click();
    // Format positions 1, 2, 3, 4, 5, 6, 0 go out as their codes.
    QCOMPARE(rig.sent(),
             hexList("a56c1500a5ff01000000000000000000a30b7903ae a56c1500a5ff01000000000000000000a3097703ae "
                     "a56c1500a5ff01000000000000000000a3016f03ae a56c1500a5ff01000000000000000000a3037103ae "
                     "a56c1500a5ff01000000000000000000a30d7b03ae a56c1500a5ff01000000000000000000a3057303ae "
                     "a56c1500a5ff01000000000000000000a3077503ae"));
    // RESO announces the code on the rate signal; the resolution signal stays silent.
    QCOMPARE(ints(rig.rate), (QList<int>{0x0B, 0x09, 0x01, 0x03, 0x0D, 0x05, 0x07}));
    QCOMPARE(rig.reso.count(), 0);
    QCOMPARE(rig.dialog.resoIndex(), 0);

    // From the unit's values; values outside a cycle leave it where it was.
    rig.dialog.setRESO_V(5);
    rig.dialog.setRESO_V(7);
    rig.dialog.setRARE_V(1);
    rig.dialog.setRARE_V(-1);
    rig.key("btn_reso")->click();
    for (int i = 0; i < 3; ++i)
        rig.key("btn_rate")->click();
    QCOMPARE(
        rig.sent(),
        hexList("a56c1500a5ff01000000000000000000a3057303ae a56c1500a5ff01000000000000000000a5027203ae "
                "a56c1500a5ff01000000000000000000a5007003ae a56c1500a5ff01000000000000000000a5017103ae"));
    // RESO's code 0x05, then the rate indexes.
    QCOMPARE(ints(rig.rate), (QList<int>{0x05, 2, 0, 1}));
}

void TestSetDialog::pipSizeOnlyWhileUnlocked()
{
    Rig rig;
    QPushButton *pipS = rig.key("btn_pip_s");
    QVERIFY(!litWhilePressed(pipS));
    QVERIFY(rig.sent().isEmpty());
    QCOMPARE(rig.size.count(), 0);

    rig.dialog.setPIP_size_unlock_falg_slots(true);
    QVERIFY(litWhilePressed(pipS));
    pipS->click();
    QCOMPARE(
        rig.sent(),
        hexList("a56c1500a5ff01000000000000000000a2006d03ae a56c1500a5ff01000000000000000000a2016e03ae"));
    QCOMPARE(ints(rig.size), (QList<int>{0, 1}));
    QVERIFY(isOff(pipS));

    rig.dialog.setPIP_S_V(0);
    rig.dialog.setPIP_S_V(3); // outside the cycle
    pipS->click();
    QCOMPARE(rig.sent(), hexList("a56c1500a5ff01000000000000000000a2016e03ae"));

    rig.dialog.setPIP_size_unlock_falg_slots(false);
    QVERIFY(!litWhilePressed(pipS));
    QVERIFY(rig.sent().isEmpty());
    QCOMPARE(rig.size.count(), 1);
}

void TestSetDialog::keysFlashForTheirWait_data()
{
    flashTable({"btn_micvol", "btn_key", "btn_l_1", "btn_l_2"});
}

void TestSetDialog::keysFlashForTheirWait()
{
    QFETCH(QByteArray, key);
    Rig rig;
    checkFlash(rig.key(key.constData()), rig.spy);
    QCOMPARE(rig.announced(), 0);
}

void TestSetDialog::serialNumber_data()
{
    QTest::addColumn<QByteArray>("sn");
    QTest::addColumn<QString>("text");
    auto row = [](const char *name, const char *sn, const char *text) {
        QTest::newRow(name) << hex(sn) << QString(text);
    };
    row("zero bytes skipped", "12000a", "SN:12 a ");
    row("high bytes as two digits", "80ff9c01", "SN:80 ff 9c 1 ");
    row("all zero", "00000000", "SN:");
    row("empty", "", "SN:");
}

void TestSetDialog::serialNumber()
{
    QFETCH(QByteArray, sn);
    QFETCH(QString, text);
    Rig rig;
    rig.dialog.on_toRead_5370SMDtat(sn);
    QCOMPARE(rig.dialog.findChild<QLabel *>("label_SM")->text(), text);
}

void TestSetDialog::keyboardClicksNoKey()
{
    Rig rig;
    rig.dialog.setPIP_size_unlock_falg_slots(true);
    rig.dialog.activateWindow();
    checkKeysLeaveTheKeyboard(&rig.dialog, 9);
    for (Qt::Key k : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space})
        QTest::keyClick(&rig.dialog, k);
    QVERIFY(rig.sent().isEmpty());
    QCOMPARE(rig.announced(), 0);
    QVERIFY(rig.dialog.isVisible());

    // Esc closes this window only; the panel learns of it through rejected().
    QSignalSpy rejected(&rig.dialog, &QDialog::rejected);
    QTest::keyClick(&rig.dialog, Qt::Key_Escape);
    QCOMPARE(rejected.count(), 1);
    QVERIFY(!rig.dialog.isVisible() && rig.host.isVisible());
    QVERIFY(rig.sent().isEmpty());
}

void TestSetDialog::freedDuringAWaitSendsNothing()
{
    Rig rig;
    auto *dialog = new SetDialog(&rig.host, &rig.link);
    dialog->show();
    QTimer::singleShot(50, &rig.host, [dialog] { delete dialog; });
    dialog->findChild<QPushButton *>(QStringLiteral("btn_reset"))->click();
    QVERIFY(rig.sent().isEmpty());
}

QTEST_MAIN(TestSetDialog)
#include "tst_setdialog.moc"
