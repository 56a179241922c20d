// The RVX5350 panel's settings strip offscreen, what it has beside the PIP size and RESET keys it
// shares with the RVX5370's settings window: the clock, its own keys' flashes, and the keyboard in
// a host with a number field.
#include "RVX8000/set.h"
#include "rig8000.h"

#include <QDialog>
#include <QRegularExpression>
#include <QSpinBox>
#include <QVBoxLayout>

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

    RVX5ALL_workdata link;
    QSignalSpy spy{&link, &RVX5ALL_workdata::showCurrentData};
    QDialog host;
    QSpinBox *field = new QSpinBox(&host);
    Set *strip = new Set(&host, &link);
    QSignalSpy size{strip, &Set::setPIPSZ_Style};
};

} // namespace

class TestSet : public QObject
{
    Q_OBJECT
private slots:
    void clockTicksOnlyWhileEnabled();
    void keysFlashForTheirWait_data();
    void keysFlashForTheirWait();
    void keyboardClicksNoKey();
};

void TestSet::clockTicksOnlyWhileEnabled()
{
    Rig rig;
    QVERIFY(!rig.strip->clockRunning());
    rig.strip->setenablefalgSlots(true);
    QVERIFY(rig.strip->clockRunning());
    // Until the first tick the form's own texts stand; then the date is dotted.
    QCOMPARE(rig.label("label_data"), QStringLiteral("2022-05-13"));
    QTRY_VERIFY_WITH_TIMEOUT(QRegularExpression(QStringLiteral("^\\d{4}\\.\\d{2}\\.\\d{2}$"))
                                 .match(rig.label("label_data"))
                                 .hasMatch(),
                             3000);
    QVERIFY(QRegularExpression(QStringLiteral("^\\d{2}:\\d{2}:\\d{2}$"))
                .match(rig.label("label_time"))
                .hasMatch());
    rig.strip->setenablefalgSlots(false);
    QVERIFY(!rig.strip->clockRunning());
}

void TestSet::keysFlashForTheirWait_data()
{
    flashTable({"btn_disk", "btn_leuel", "btn_rate_add", "btn_rate_sub", "btn_addr_add", "btn_addr_sub"});
}

void TestSet::keysFlashForTheirWait()
{
    QFETCH(QByteArray, key);
    Rig rig;
    checkFlash(rig.key(key.constData()), rig.spy);
    QCOMPARE(rig.size.count(), 0);
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
    QVERIFY(rig.spy.isEmpty());
    QCOMPARE(rig.size.count(), 0);
    QVERIFY(rig.host.isVisible());
}

QTEST_MAIN(TestSet)
#include "tst_set.moc"
