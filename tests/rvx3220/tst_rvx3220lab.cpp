// End to end in the lab: the search window opens an emulated RVX3220, the panel drives it, and
// the unit's state file shows what the panel did. Then the panel is left and opened again.
#include "RVX3220/audio.h"
#include "RVX3220/pgm.h"
#include "RVX3220/pip.h"
#include "RVX3220/pvw.h"
#include "RVX3220/rvx3220ui.h"
#include "RVX3220/transitions.h"
#include "SwitcherData/rvx3220_workdata.h"
#include "app/showsearch.h"
#include "modalanswer.h"

#include <QButtonGroup>
#include <QComboBox>
#include <QFile>
#include <QListWidget>
#include <QPushButton>
#include <QSlider>
#include <QSpinBox>
#include <QtTest>

namespace {

QMap<QString, QString> unitState(const QString &ip)
{
    QMap<QString, QString> out;
    QFile file(qEnvironmentVariable("LAB_STATE_DIR") + QLatin1Char('/') + ip + QStringLiteral(".state"));
    if (!file.open(QIODevice::ReadOnly))
        return out;
    for (const QByteArray &line : file.readAll().split('\n')) {
        const int eq = line.indexOf('=');
        if (eq > 0)
            out.insert(QString::fromUtf8(line.left(eq)), QString::fromUtf8(line.mid(eq + 1)));
    }
    return out;
}

// Waits until the unit's state holds every expected value; on time-out says what differs.
QString waitForState(const QString &ip, const QMap<QString, QString> &expected, int ms = 5000)
{
    QElapsedTimer clock;
    clock.start();
    for (;;) {
        const QMap<QString, QString> state = unitState(ip);
        QStringList wrong;
        for (auto it = expected.cbegin(); it != expected.cend(); ++it) {
            if (state.value(it.key()) != it.value())
                wrong << QStringLiteral("%1=%2 (want %3)").arg(it.key(), state.value(it.key()), it.value());
        }
        if (wrong.isEmpty())
            return QString();
        if (clock.elapsed() > ms)
            return wrong.join(QStringLiteral(", "));
        QTest::qWait(20);
    }
}

bool stateReplySent()
{
    QFile log(qEnvironmentVariable("LAB_EMULATOR_LOG"));
    if (!log.open(QIODevice::ReadOnly))
        return false;
    for (const QByteArray &line : log.readAll().split('\n')) {
        if (line.startsWith("tx ") && line.contains("cmd=0x49") && line.contains("sum=ok"))
            return true;
    }
    return false;
}

} // namespace

class TestRvx3220Lab : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void openDriveCloseReopen();

private:
    // Double-clicks the unit's entry; `drive` runs inside the modal panel and must leave it.
    void openPanel(showsearch &window, std::function<void(RVX3220UI *)> drive);

    QString m_ip;
};

void TestRvx3220Lab::initTestCase()
{
    const QStringList units = qEnvironmentVariable("LAB_UNITS").split(QLatin1Char(' '), Qt::SkipEmptyParts);
    QCOMPARE(units.size(), 1);
    m_ip = units.first();
    QVERIFY(QFile::exists(qEnvironmentVariable("LAB_STATE_DIR") + QLatin1Char('/') + m_ip + ".state"));
}

void TestRvx3220Lab::openPanel(showsearch &window, std::function<void(RVX3220UI *)> drive)
{
    QListWidget *list = window.deviceList();
    const QString entry = QStringLiteral("Desk: ") + m_ip;
    QTRY_COMPARE_WITH_TIMEOUT(list->count(), 1, 10000);
    QListWidgetItem *item = list->item(0);
    QCOMPARE(item->text(), entry);

    bool opened = false;
    ModalWatch watch([&](QWidget *w) {
        auto *panel = qobject_cast<RVX3220UI *>(w);
        if (panel) {
            opened = true;
            drive(panel);
        }
        w->close();
    });
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    list->scrollToItem(item);
    const QPoint at = list->visualItemRect(item).center();
    QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier, at);
    QTest::mouseDClick(list->viewport(), Qt::LeftButton, Qt::NoModifier, at);
    QVERIFY(opened);
    // The panel is gone and the search window is back with a fresh search.
    QVERIFY(window.isVisible());
    QTRY_VERIFY(window.findChildren<RVX3220UI *>().isEmpty());
}

void TestRvx3220Lab::openDriveCloseReopen()
{
    showsearch window;
    window.show();
    QStringList failures;
    auto check = [&failures](const QString &what, const QString &problem) {
        if (!problem.isEmpty())
            failures << what + QStringLiteral(": ") + problem;
    };

    openPanel(window, [&](RVX3220UI *panel) {
        check(QStringLiteral("port"),
              panel->model()->isBound() ? QString() : QStringLiteral("7000 not bound"));
        panel->pgm()->buttonGroup()->button(3)->click();
        panel->pvw()->buttonGroup()->button(5)->click();
        check(QStringLiteral("buses"), waitForState(m_ip, {{"pgm", "3"}, {"pvw", "5"}}));

        panel->cutButton()->click();
        check(QStringLiteral("cut"), waitForState(m_ip, {{"pgm", "5"}, {"pvw", "3"}, {"cuts", "1"}}));
        if (panel->pgm()->BtnPGMstate() != 5 || panel->pvw()->BtnPVWstate() != 3)
            failures << QStringLiteral("panel shows other buses than the unit after CUT");

        panel->transitions()->buttonGroup()->button(5)->click(); // wipe left
        check(QStringLiteral("wipe"), waitForState(m_ip, {{"effect", "wipe"}, {"wipe", "left"}}));

        // A full lever push is a transition on the unit too.
        for (int v = 1; v <= 126; ++v)
            panel->tbar()->setValue(v);
        check(QStringLiteral("lever"),
              waitForState(m_ip, {{"pgm", "3"}, {"pvw", "5"}, {"lever", "1,0"}, {"transitions", "2"}}));
        if (panel->pgm()->BtnPGMstate() != 3 || panel->pvw()->BtnPVWstate() != 5)
            failures << QStringLiteral("panel shows other buses than the unit after the lever");

        panel->audio()->ch1Source()->setCurrentIndex(2); // IN1
        panel->audio()->ch1Volume()->setValue(70);
        panel->audio()->pgmOut()->setCurrentIndex(3); // 1080I50
        panel->audio()->modeGroup()->button(2)->click();
        check(
            QStringLiteral("audio"),
            waitForState(m_ip, {{"ch1", "0x03"}, {"vol_0x03", "70"}, {"output", "0x01"}, {"audio", "mix"}}));

        panel->pipButton()->click();
        panel->pip()->sizeList()->setCurrentIndex(0);
        panel->pip()->hPosition()->setValue(1440);
        check(QStringLiteral("pip"),
              waitForState(m_ip, {{"pip", "1"}, {"pop", "0"}, {"pip_size", "0"}, {"pip_h", "1440"}}));
        panel->popButton()->click();
        check(QStringLiteral("pop"), waitForState(m_ip, {{"pip", "0"}, {"pop", "1"}}));
        panel->popButton()->click();
        check(QStringLiteral("pop off"), waitForState(m_ip, {{"pop", "0"}}));

        // The unit answers a state read; the panel must take no notice.
        panel->model()->SendCMDReadstate();
        check(QStringLiteral("read"), waitForState(m_ip, {{"decoded", "read state"}}));
        if (!stateReplySent())
            failures << QStringLiteral("no well-formed 0x49 reply in the emulator's log");
        panel->returnButton()->click();
    });
    QVERIFY2(failures.isEmpty(), qPrintable(failures.join('\n')));

    // The second panel gets port 7000 back and still reaches the unit.
    openPanel(window, [&](RVX3220UI *panel) {
        check(QStringLiteral("port again"),
              panel->model()->isBound() ? QString() : QStringLiteral("7000 not bound"));
        panel->pgm()->buttonGroup()->button(6)->click();
        check(QStringLiteral("reopened"), waitForState(m_ip, {{"pgm", "6"}}));
        panel->returnButton()->click();
    });
    QVERIFY2(failures.isEmpty(), qPrintable(failures.join('\n')));
}

QTEST_MAIN(TestRvx3220Lab)
#include "tst_rvx3220lab.moc"
