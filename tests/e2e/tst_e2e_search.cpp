// End to end in the lab: the shipped program's broadcast reaches the emulated units, and the
// search window lists each of them with the label its model calls for.
#include "SwitcherData/workdata.h"
#include "app/groupbox_right.h"
#include "app/showsearch.h"
#include "labstate.h"
#include "testframes.h"

#include <QListWidget>
#include <QProcess>
#include <QProcessEnvironment>
#include <QPushButton>
#include <QRadioButton>
#include <QTemporaryDir>
#include <QtTest>

// Search frames the emulator received and the replies it sent.
static int searchFramesLogged()
{
    return LabState::logCount("cmd=0xff .*sum=ok");
}

class tst_E2eSearch : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void programBroadcastReachesUnits();
    void unitsListedThenSearchedAgain();

private:
    QStringList m_units;
};

void tst_E2eSearch::initTestCase()
{
    m_units = qEnvironmentVariable("LAB_UNITS").split(' ', Qt::SkipEmptyParts);
    QCOMPARE(m_units.size(), 3);
    QVERIFY(!qEnvironmentVariableIsEmpty("LAB_EMULATOR_LOG"));
}

void tst_E2eSearch::programBroadcastReachesUnits()
{
    const int before = searchFramesLogged();
    QProcess kova;
    kova.setProgram(QStringLiteral(KOVA_BINARY));
    kova.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    // No saved settings: the program as installed, with no option.
    QTemporaryDir config;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("XDG_CONFIG_HOME"), config.path());
    kova.setProcessEnvironment(env);
    kova.start();
    QVERIFY(kova.waitForStarted());
    QTRY_VERIFY_WITH_TIMEOUT(searchFramesLogged() > before, 15000);
    // With no option it opens no connection of any kind (no broker is asked for): the search's
    // datagrams are all it sends.
    QProcess ss;
    ss.start(QStringLiteral("ss"), {QStringLiteral("-tanp")});
    QVERIFY(ss.waitForFinished());
    const QByteArray tcp = ss.readAllStandardOutput();
    QVERIFY2(!tcp.contains("pid=" + QByteArray::number(kova.processId()) + ','), tcp.constData());
    kova.kill();
    kova.waitForFinished();
}

void tst_E2eSearch::unitsListedThenSearchedAgain()
{
    showsearch window;
    window.show();
    QListWidget *list = window.deviceList();
    QTRY_COMPARE_WITH_TIMEOUT(list->count(), 3, 10000);
    QCOMPARE(itemTexts(list), (QStringList{"Alpha Cam: " + m_units[1], "Bravo Desk: " + m_units[2],
                                           "Charlie: " + m_units[0]}));
    window.groupBox()->radio(1)->click();
    QCOMPARE(itemTexts(list), QStringList{"RVX3210S: " + m_units[0]});

    const int before = searchFramesLogged();
    window.groupBox()->searchButton()->click();
    QCOMPARE(list->count(), 0);
    QTRY_COMPARE_WITH_TIMEOUT(list->count(), 3, 10000);
    QTRY_VERIFY(searchFramesLogged() > before);
    // The HIS board answered too: the RVX3210S record knows its second address.
    QTRY_VERIFY(window.link()->devices()[0].ip2 != 0 || window.link()->devices()[1].ip2 != 0 ||
                window.link()->devices()[2].ip2 != 0);
}

QTEST_MAIN(tst_E2eSearch)
#include "tst_e2e_search.moc"
