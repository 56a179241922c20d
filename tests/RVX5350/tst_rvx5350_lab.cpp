// End to end in the lab: the search window opens an emulated RVX5350; the panel shows the
// unit's input, and the other input, a RESO press and a drag of the PIP preview change the
// unit, which a state read (DS) brings back after the panel has been told otherwise.
#include "../RVX8000/lab8000.h"
#include "RVX5350/rvx5350.h"
#include "RVX8000/pipgro.h"
#include "labstate.h"

class TestRvx5350Lab : public QObject
{
    Q_OBJECT
private slots:
    void openChangeReadBack();
};

void TestRvx5350Lab::openChangeReadBack()
{
    showsearch window;
    QString unit;
    QPointer<RVX5350> panel;
    Lab8000::openOnlyUnit(window, unit, panel);
    if (QTest::currentTestFailed())
        return;
    // The unit has one of its two inputs on air, and the panel shows which. (Waited for on the
    // panel: the reply may have been read while the panel was being opened.)
    QTRY_VERIFY_WITH_TIMEOUT(panel->inputOnAir() != 0, 5000);
    const int first = panel->inputOnAir();
    QVERIFY2(first == 1 || first == 2, qPrintable(QString::number(first)));

    auto key = [&panel](const char *name) {
        return panel->findChild<QAbstractButton *>(QLatin1String(name));
    };
    auto label = [&panel](const char *name) {
        return panel->findChild<QLabel *>(QLatin1String(name))->text();
    };
    key(first == 1 ? "btn_in2" : "btn_in1")->click();
    const QString formatBefore = label("label_reso");
    key("btn_reso")->click();
    const QString format = label("label_reso");
    QVERIFY(format != formatBefore);

    // Drag the preview box by the mouse: 90 right, 50 down.
    PIPGro *box = panel->pipBox();
    Lab8000::drag(box, QPoint(90, 50));
    const QPoint dragged = box->pos();
    QTRY_VERIFY_WITH_TIMEOUT(LabState::logCount(QStringLiteral("^rx unit=%1 .*cmd=0xa1").arg(unit)) >= 1,
                             5000);

    // A stale picture on the panel: the first input, another format, the box in its corner.
    panel->m_on_toRead_5370Dtat(QByteArray::fromHex(first == 1 ? "01" : "02"));
    QByteArray stale(22, '\0');
    stale[21] = format == QLatin1String("1080P60") ? 0x0B : 0x07;
    panel->m_on_toRead_5370Dtat(stale);
    QVERIFY(label("label_reso") != format);
    box->set_H_Vposition_Style(0, 0);
    Lab8000::readBack(panel.data());
    QCOMPARE(panel->inputOnAir(), 3 - first);
    QCOMPARE(label("label_reso"), format);
    Lab8000::checkSamePlace(box->pos(), dragged);
    delete panel;
}

QTEST_MAIN(TestRvx5350Lab)
#include "tst_rvx5350_lab.moc"
