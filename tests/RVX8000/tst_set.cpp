// The RVX5350 panel's settings strip offscreen: the clock, the dead PIP_SZ key, the keys on
// the wire, the labels and the keyboard.
#include "RVX8000/set.h"
#include "SwitcherData/rvx5all_workdata.h"
#include "rig8000.h"
#include "testframes.h"

#include <QDateTime>
#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTimer>
#include <QVBoxLayout>
#include <QtTest>

using namespace Rig8000;

namespace {

// The strip in a dialog beside a number field: the worst host for Return.
struct Rig
{
    Rig()
    {
        link.get_DevTypeID(QStringLiteral("127.0.0.2"), 0xA5, 0xFF);
        auto *layout = new QVBoxLayout(&host);
        layout->addWidget(field);
        layout->addWidget(strip);
        host.show();
    }
    QPushButton *key(const char *name) { return strip->findChild<QPushButton *>(QLatin1String(name)); }
    QString label(const char *name) { return strip->findChild<QLabel *>(QLatin1String(name))->text(); }
    QList<QByteArray> sent() { return takeFrames(spy); }

    RVX5ALL_workdata link;
    QSignalSpy spy{&link, &RVX5ALL_workdata::showCurrentData};
    QDialog host;
    QSpinBox *field = new QSpinBox(&host);
    Set *strip = new Set(&host, &link);
    QSignalSpy size{strip, &Set::setPIPSZ_Style};
};

const QRegularExpression DottedDate(QStringLiteral("^\\d{4}\\.\\d{2}\\.\\d{2}$"));
const QRegularExpression Time(QStringLiteral("^\\d{2}:\\d{2}:\\d{2}$"));

} // namespace

class TestSet : public QObject
{
    Q_OBJECT
private slots:
    void clockTicksOnlyWhileEnabled();
    void clockFormat();
    void pipSizeOnlyWhileUnlocked();
    void keysFlashForTheirWait_data();
    void keysFlashForTheirWait();
    void labels();
    void keyboardClicksNoKey();
};

void TestSet::clockTicksOnlyWhileEnabled()
{
    Rig rig;
    QVERIFY(!rig.strip->clockRunning());
    rig.strip->setenablefalgSlots(true);
    QVERIFY(rig.strip->clockRunning());
    // Until the first tick the form's own texts stand.
    QCOMPARE(rig.label("label_data"), QStringLiteral("2022-05-13"));
    QCOMPARE(rig.label("label_time"), QStringLiteral("15:03:50"));
    QTRY_VERIFY_WITH_TIMEOUT(DottedDate.match(rig.label("label_data")).hasMatch(), 3000);
    QVERIFY(Time.match(rig.label("label_time")).hasMatch());
    rig.strip->setenablefalgSlots(false);
    QVERIFY(!rig.strip->clockRunning());
}

void TestSet::clockFormat()
{
    Rig rig;
    const QDateTime before = QDateTime::currentDateTime();
    rig.strip->show_current_time();
    const QDateTime after = QDateTime::currentDateTime();
    const QString date = rig.label("label_data");
    const QString time = rig.label("label_time");
    QVERIFY2(date == before.toString(QStringLiteral("yyyy.MM.dd")) ||
                 date == after.toString(QStringLiteral("yyyy.MM.dd")),
             qPrintable(date));
    QVERIFY2(time == before.toString(QStringLiteral("hh:mm:ss")) ||
                 time == after.toString(QStringLiteral("hh:mm:ss")),
             qPrintable(time));
}

void TestSet::pipSizeOnlyWhileUnlocked()
{
    Rig rig;
    QPushButton *pipSz = rig.key("btn_pip_sz");
    QVERIFY(!litWhilePressed(pipSz));
    QVERIFY(rig.sent().isEmpty());
    QCOMPARE(rig.size.count(), 0);

    rig.strip->setPIP_size_unlock_falg_slots(true);
    QVERIFY(litWhilePressed(pipSz));
    rig.strip->setPIP_S_V(1);
    rig.strip->setPIP_S_V(5); // outside the cycle
    pipSz->click();
    QCOMPARE(
        rig.sent(),
        hexList("a56c1500a5ff01000000000000000000a2006d03ae a56c1500a5ff01000000000000000000a2026f03ae"));
    QCOMPARE(rig.size.count(), 2);
    QCOMPARE(rig.size.at(0).at(0).toInt(), 0);
    QCOMPARE(rig.size.at(1).at(0).toInt(), 2);

    rig.strip->setPIP_size_unlock_falg_slots(false);
    QVERIFY(!litWhilePressed(pipSz));
    QVERIFY(rig.sent().isEmpty());
}

void TestSet::keysFlashForTheirWait_data()
{
    flashTable({{"DISK", "btn_disk"},
                {"LEUEL", "btn_leuel"},
                {"RATE+", "btn_rate_add"},
                {"RATE-", "btn_rate_sub"},
                {"ADDR+", "btn_addr_add"},
                {"ADDR-", "btn_addr_sub"}});
}

void TestSet::keysFlashForTheirWait()
{
    QFETCH(QByteArray, key);
    QFETCH(int, waitMs);
    QFETCH(QByteArray, frames);

    Rig rig;
    checkFlash(rig.key(key.constData()), waitMs, rig.spy, frames);
    QCOMPARE(rig.size.count(), 0);
}

void TestSet::labels()
{
    Rig rig;
    connect(&rig.link, &RVX5ALL_workdata::on_signals_5370Data, rig.strip, &Set::on_toRead_5370SMDtat);
    emit rig.link.on_signals_5370Data(hex("12000a80"));
    QCOMPARE(rig.label("label_SM"), QStringLiteral("SN:12 a 80 "));
    rig.strip->getDevIP(QStringLiteral("10.1.2.3"));
    QCOMPARE(rig.label("label_IP"), QStringLiteral("IP:10.1.2.3"));
}

void TestSet::keyboardClicksNoKey()
{
    Rig rig;
    rig.strip->setPIP_size_unlock_falg_slots(true);
    checkKeysLeaveTheKeyboard(rig.strip, 9);
    // Return in the host's field commits the field and nothing else.
    QSignalSpy committed(rig.field, &QSpinBox::editingFinished);
    rig.field->setFocus();
    rig.field->selectAll();
    QTest::keyClicks(rig.field, QStringLiteral("7"));
    QTest::keyClick(rig.field, Qt::Key_Return);
    QCOMPARE(committed.count(), 1);
    QCOMPARE(rig.field->value(), 7);
    QTest::keyClick(&rig.host, Qt::Key_Space);
    QVERIFY(rig.sent().isEmpty());
    QCOMPARE(rig.size.count(), 0);
    QVERIFY(rig.host.isVisible());
}

QTEST_MAIN(TestSet)
#include "tst_set.moc"
