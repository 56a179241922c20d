// An operator PC with two links: the default route leads to an office network without units,
// the units sit behind the other. A broadcast following the routing table would reach only the
// office; the search must leave by both links, once each, and list every unit.
#include "SwitcherData/searchinterfaces.h"
#include "SwitcherData/workdata.h"
#include "labstate.h"

#include <QProcess>
#include <QSignalSpy>
#include <QtTest>

namespace {

// Broadcasts the office namespace received with nobody listening.
int officeBroadcastsHeard()
{
    QProcess cat;
    cat.start(QStringLiteral("ip"),
              {QStringLiteral("netns"), QStringLiteral("exec"), qEnvironmentVariable("LAB_OFFICE_NS"),
               QStringLiteral("cat"), QStringLiteral("/proc/net/snmp")});
    if (!cat.waitForFinished(5000) || cat.exitCode() != 0)
        return -1;
    QList<QByteArray> names;
    for (const QByteArray &line : cat.readAllStandardOutput().split('\n')) {
        if (!line.startsWith("Udp: "))
            continue;
        const QList<QByteArray> fields = line.simplified().split(' ');
        if (names.isEmpty()) {
            names = fields;
            continue;
        }
        const int at = names.indexOf("IgnoredMulti");
        return at > 0 && at < fields.size() ? fields.at(at).toInt() : -1;
    }
    return -1;
}

int searchesHeardByUnits()
{
    return LabState::logCount(
        QStringLiteral("^rx unit=\\* board=any cmd=0xff data=[0-9a-f]{14} sum=ok dev=81ff "
                       "from=10\\.77\\.0\\.1:"));
}

} // namespace

class tst_SearchLinksLab : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void bothLinksUsableLoopbackNot();
    void everyUnitFoundBehindTheSecondLink();
};

void tst_SearchLinksLab::initTestCase()
{
    QVERIFY2(!qEnvironmentVariableIsEmpty("LAB_OFFICE_NS"), "run in lab/lab.sh --office-link");
    QCOMPARE(qEnvironmentVariable("LAB_UNITS").split(' ', Qt::SkipEmptyParts).size(), 3);
}

void tst_SearchLinksLab::bothLinksUsableLoopbackNot()
{
    QStringList seen;
    for (const SearchInterfaces::Link &link : SearchInterfaces::usable())
        seen << link.name + QLatin1Char('=') + link.address.toString();
    seen.sort();
    QCOMPARE(seen, QStringList({"kova0=10.77.0.1", "kova2=10.78.0.1"}));
}

void tst_SearchLinksLab::everyUnitFoundBehindTheSecondLink()
{
    const int officeBefore = officeBroadcastsHeard();
    QVERIFY(officeBefore >= 0);
    const int unitsBefore = searchesHeardByUnits();

    SWITCHER_DATA link;
    QSignalSpy added(&link, &SWITCHER_DATA::sigend_datapack);
    for (int round = 1; round <= 2; ++round) {
        link.setSearcheQuipment();
        QTRY_COMPARE_WITH_TIMEOUT(link.DevInfo_DATA_IDX(), 3, 10000);
        // The HIS boards of the two units that have one answer as well.
        QTRY_VERIFY_WITH_TIMEOUT(link.devices()[0].ip2 != 0 || link.devices()[1].ip2 != 0, 5000);
        // One search frame per link and search: the units heard it once (so no unit answers
        // twice and is listed twice), the office once.
        QTRY_COMPARE(searchesHeardByUnits() - unitsBefore, round);
        QTRY_COMPARE(officeBroadcastsHeard() - officeBefore, round);
    }

    QStringList found;
    const QStringList units = qEnvironmentVariable("LAB_UNITS").split(' ', Qt::SkipEmptyParts);
    for (int i = 0; i < link.DevInfo_DATA_IDX(); ++i) {
        const DevInfo_DATA &rec = link.devices()[i];
        found << QStringLiteral("%1 %2 %3")
                     .arg(QString::fromLatin1(rec.name, int(strnlen(rec.name, sizeof rec.name))))
                     .arg(rec.childType, 2, 16, QLatin1Char('0'))
                     .arg(SWITCHER_DATA::dottedIp(rec.ip));
    }
    found.sort();
    QCOMPARE(found,
             QStringList({"Desk 21 " + units.at(0), "Hall 55 " + units.at(2), "Truck 22 " + units.at(1)}));
}

QTEST_GUILESS_MAIN(tst_SearchLinksLab)
#include "tst_searchlinks_lab.moc"
