// End to end in the lab: the search window's RVX5120 key opens the RVX5120 panel with no unit
// chosen, and the panel puts nothing on the wire: the emulated unit hears the search and then
// only the test's own probe.
#include "RVX5120/rvx5120.h"
#include "app/groupbox_right.h"
#include "app/showsearch.h"
#include "labstate.h"
#include "testframes.h"

#include <QHostAddress>
#include <QListWidget>
#include <QRadioButton>
#include <QUdpSocket>
#include <QtTest>

class TestRvx5120Lab : public QObject
{
    Q_OBJECT
private slots:
    void searchKeyOpensSilentPanel();
};

void TestRvx5120Lab::searchKeyOpensSilentPanel()
{
    const QStringList units = qEnvironmentVariable("LAB_UNITS").split(QLatin1Char(' '), Qt::SkipEmptyParts);
    QCOMPARE(units.size(), 1);
    const QString unit = units.first();

    showsearch window;
    window.show();
    QTRY_COMPARE_WITH_TIMEOUT(window.deviceList()->count(), 1, 10000);
    window.groupBox()->radio(4)->click();
    QTRY_VERIFY(!window.isVisible());
    QPointer<RVX5120> panel;
    for (QWidget *w : QApplication::topLevelWidgets())
        if (auto *p = qobject_cast<RVX5120 *>(w))
            panel = p;
    QVERIFY(panel);
    QVERIFY(panel->isVisible());
    QCoreApplication::processEvents();

    // A state read from a socket of the test's own marks the end of what the unit heard.
    QUdpSocket probe;
    probe.writeDatagram(hex("a56c1400a5ff01000000000000000000491303ae"), QHostAddress(unit), 7000);
    QTRY_COMPARE_WITH_TIMEOUT(LabState::logCount(QStringLiteral("^rx unit=%1 .*cmd=0x49").arg(unit)), 1,
                              5000);
    // Everything but the search broadcasts: the probe alone.
    QCOMPARE(LabState::logCount(QStringLiteral("^rx (?!.*cmd=0xff)")), 1);
    delete panel;
}

QTEST_MAIN(TestRvx5120Lab)
#include "tst_rvx5120_lab.moc"
