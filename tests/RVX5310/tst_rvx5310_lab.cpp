// End to end in the lab: the search window opens an emulated RVX5310; the panel shows the
// unit's state; a bus change and a CUT, PIP with its size and the output format change the
// unit; after the panel has been told otherwise, DS reads the unit's state back.
#include "../RVX8000/lab8000.h"
#include "RVX5310/rvx5310dialog.h"
#include "RVX8000/pip_body.h"
#include "RVX8000/resobody.h"
#include "labstate.h"

#include <QComboBox>

using Rig8000::isGreen;
using Rig8000::isRed;

class TestRvx5310Lab : public QObject
{
    Q_OBJECT
private slots:
    void openChangeReadBack();
};

void TestRvx5310Lab::openChangeReadBack()
{
    showsearch window;
    QString unit;
    QPointer<RVX5310Dialog> panel;
    Lab8000::openOnlyUnit(window, unit, panel);
    if (QTest::currentTestFailed())
        return;
    QVERIFY(!window.isVisible());
    auto key = [&panel](const char *name) { return panel->findChild<QPushButton *>(QLatin1String(name)); };

    // The unit heard the panel's first read and its state lights the buses. Waited for on the
    // panel: the reply may have been read while the panel was being opened.
    QMap<QString, QString> first;
    QByteArray pgmKey;
    auto firstShown = [&] {
        first = LabState::read(unit);
        pgmKey = "btn_pgm" + first.value(QStringLiteral("pgm")).toLatin1();
        const QPushButton *lit = key(pgmKey.constData());
        return lit && isRed(lit);
    };
    QTRY_VERIFY2_WITH_TIMEOUT(firstShown(), pgmKey.constData(), 5000);
    QCOMPARE(first.value(QStringLiteral("reads")), QStringLiteral("1"));

    // Inputs 3 and 4, then CUT: the unit swaps them. PIP at size Large, and 1080P50 out.
    key("btn_pgm3")->click();
    key("btn_pvw4")->click();
    key("btn_cut")->click();
    key("btn_pip")->click();
    panel->pipBody()->sizeList()->setCurrentIndex(2);
    panel->resoBody()->formatList()->setCurrentIndex(1);
    const QString differs = LabState::waitFor(unit, {{QStringLiteral("pgm"), QStringLiteral("4")},
                                                     {QStringLiteral("pvw"), QStringLiteral("3")},
                                                     {QStringLiteral("pip"), QStringLiteral("1")},
                                                     {QStringLiteral("pip_size"), QStringLiteral("2")},
                                                     {QStringLiteral("output"), QStringLiteral("11")}});
    QVERIFY2(differs.isEmpty(), qPrintable(differs));

    // A stale picture on the panel, then DS: the unit's state comes back, and the format the
    // list already shows is not sent again.
    panel->on_toRead_5370Dtat(QByteArray::fromHex("0102000000000000000000000000"));
    QVERIFY(isRed(key("btn_pgm1")) && !isGreen(key("btn_pip")));
    Lab8000::readBack(panel.data());
    QVERIFY(isRed(key("btn_pgm4")) && isGreen(key("btn_pvw3")));
    QVERIFY(isGreen(key("btn_pip")));
    QVERIFY(panel->pipBody()->isVisible());
    QCOMPARE(panel->pipBody()->sizeList()->currentIndex(), 2);
    QCOMPARE(panel->resoBody()->formatList()->currentText(), QStringLiteral("1080P50"));
    QCOMPARE(LabState::logCount(QStringLiteral("^rx unit=%1 .*cmd=0xa3").arg(unit)), 1);
    delete panel;
}

QTEST_MAIN(TestRvx5310Lab)
#include "tst_rvx5310_lab.moc"
