// 512 emulated units with HIS boards answer one search within milliseconds: more replies than a
// stock receive buffer holds, while the GUI thread is busy. Every unit must still be listed, each
// with its HIS board bound.
#include "SwitcherData/workdata.h"

#include <QElapsedTimer>
#include <QThread>
#include <QUdpSocket>
#include <QtTest>

class tst_SearchBurstLab : public QObject
{
    Q_OBJECT
private slots:
    void everyUnitListedWhileTheGuiThreadIsBusy();
};

void tst_SearchBurstLab::everyUnitListedWhileTheGuiThreadIsBusy()
{
    const int units = QString::fromLocal8Bit(qgetenv("LAB_UNITS")).split(' ', Qt::SkipEmptyParts).size();
    QVERIFY2(units >= 512, "run through lab/lab.sh with --count 512");

    SWITCHER_DATA search;
    search.setSearcheQuipment(); // opens the socket; its replies are not the ones counted
    QUdpSocket *socket = search.findChild<QUdpSocket *>();
    QVERIFY(socket);
    // 212992 bytes is Debian's default net.core.rmem_max, and what the socket's 4 MiB request
    // is cut to there; the kernel doubles it for its bookkeeping, as it does for the cut request.
    socket->setSocketOption(QAbstractSocket::ReceiveBufferSizeSocketOption, 212992);
    QTRY_COMPARE(search.DevInfo_DATA_IDX(), units);

    search.setSearcheQuipment();
    // The GUI thread is kept from its event loop for longer than the whole burst takes to come.
    QElapsedTimer busy;
    busy.start();
    while (busy.elapsed() < 500)
        QThread::usleep(1000);
    QTRY_COMPARE_WITH_TIMEOUT(search.DevInfo_DATA_IDX(), units, 10000);
    for (int i = 0; i < units; ++i)
        QVERIFY2(search.devices()[i].ip2 != 0, qPrintable(QStringLiteral("unit %1 has no HIS board").arg(i)));
}

QTEST_GUILESS_MAIN(tst_SearchBurstLab)
#include "tst_searchburst_lab.moc"
