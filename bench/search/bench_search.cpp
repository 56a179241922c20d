// Measures the search path as an operator meets it:
//   startup  - from starting the program to its search frame on the wire (run in a private
//              network namespace: tests/netns-run.sh bench_search startup)
//   burst    - from the search leaving to every emulated unit listed, with the longest time
//              the GUI thread was blocked meanwhile (run in the lab with many units)
//   rescan   - the same for a second search (the Scan key) after the search socket's receive
//              buffer was set to the given size, as the kernel grants it under a lower
//              net.core.rmem_max: 212992 is Debian's default limit. The limit itself is one for
//              the whole machine (a namespace cannot lower it), so the bench asks for less.
#include "SwitcherData/workdata.h"
#include "app/showsearch.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QListWidget>
#include <QProcess>
#include <QTimer>
#include <QUdpSocket>
#include <algorithm>
#include <cstdio>

namespace {

struct Stats
{
    double median;
    double worst;
};

Stats stats(QVector<double> v)
{
    std::sort(v.begin(), v.end());
    return {v.isEmpty() ? 0 : v.at(v.size() / 2), v.isEmpty() ? 0 : v.last()};
}

int startup(int runs)
{
    QUdpSocket catcher;
    if (!catcher.bind(QHostAddress::AnyIPv4, SWITCHER_DATA::Port, QUdpSocket::ShareAddress)) {
        std::fprintf(stderr, "cannot bind port 7000\n");
        return 1;
    }
    QVector<double> times;
    for (int i = 0; i < runs; ++i) {
        QProcess kova;
        kova.setProgram(QStringLiteral(KOVA_BINARY));
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert("QT_QPA_PLATFORM", "offscreen");
        kova.setProcessEnvironment(env);
        QElapsedTimer clock;
        clock.start();
        kova.start();
        while (!catcher.hasPendingDatagrams() && clock.elapsed() < 10000)
            catcher.waitForReadyRead(10000);
        const double ms = double(clock.nsecsElapsed()) / 1e6;
        QByteArray frame(int(catcher.pendingDatagramSize()), '\0');
        catcher.readDatagram(frame.data(), frame.size());
        if (frame.size() != 27 || uint8_t(frame.at(16)) != 0xFF) {
            std::fprintf(stderr, "unexpected first datagram\n");
            return 1;
        }
        times << ms;
        kova.kill();
        kova.waitForFinished();
    }
    const Stats s = stats(times);
    std::printf("startup_to_search_frame_ms runs=%d median=%.1f worst=%.1f\n", runs, s.median, s.worst);
    return 0;
}

int burst(int expected, bool perReply)
{
    // A 1 ms ticker: the longest gap between two ticks is the longest the GUI thread was
    // kept from its event loop.
    QElapsedTimer sinceTick;
    double longestBlock = 0;
    QTimer ticker;
    ticker.setInterval(1);
    QObject::connect(&ticker, &QTimer::timeout, [&] {
        longestBlock = std::max(longestBlock, double(sinceTick.nsecsElapsed()) / 1e6);
        sinceTick.restart();
    });

    QElapsedTimer clock;
    clock.start();
    showsearch window; // the search leaves during construction
    window.show();
    // For comparison: what a full rebuild of the list on every reply would cost.
    if (perReply)
        QObject::connect(window.link(), &SWITCHER_DATA::sigend_datapack, &window, &showsearch::setBtnall);
    sinceTick.start();
    ticker.start();
    QListWidget *list = window.deviceList();
    double listedMs = -1;
    QTimer poll;
    poll.setInterval(0);
    QObject::connect(&poll, &QTimer::timeout, [&] {
        if (list->count() >= expected && listedMs < 0) {
            listedMs = double(clock.nsecsElapsed()) / 1e6;
            QTimer::singleShot(200, qApp, &QCoreApplication::quit);
        }
    });
    poll.start();
    QTimer::singleShot(30000, qApp, &QCoreApplication::quit);
    qApp->exec();
    std::printf("%s units=%d listed=%d all_listed_ms=%.1f longest_gui_block_ms=%.1f\n",
                perReply ? "burst_rebuild_per_reply" : "burst", expected, list->count(), listedMs,
                longestBlock);
    return list->count() >= expected ? 0 : 1;
}

int rescan(int expected, int bufferBytes)
{
    showsearch window;
    window.show();
    QListWidget *list = window.deviceList();
    QElapsedTimer clock;
    clock.start();
    while (list->count() < expected && clock.elapsed() < 10000)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 50);
    QUdpSocket *socket = window.link()->findChild<QUdpSocket *>();
    if (!socket)
        return 1;
    socket->setSocketOption(QAbstractSocket::ReceiveBufferSizeSocketOption, bufferBytes);
    const int granted = socket->socketOption(QAbstractSocket::ReceiveBufferSizeSocketOption).toInt();

    QElapsedTimer sinceTick;
    double longestBlock = 0;
    QTimer ticker;
    ticker.setInterval(1);
    QObject::connect(&ticker, &QTimer::timeout, [&] {
        longestBlock = std::max(longestBlock, double(sinceTick.nsecsElapsed()) / 1e6);
        sinceTick.restart();
    });
    double listedMs = -1;
    QTimer poll;
    poll.setInterval(0);
    QObject::connect(&poll, &QTimer::timeout, [&] {
        if (list->count() >= expected && listedMs < 0) {
            listedMs = double(clock.nsecsElapsed()) / 1e6;
            QTimer::singleShot(200, qApp, &QCoreApplication::quit);
        }
    });
    // Every reply has had a second to arrive when the window stops.
    QTimer::singleShot(3000, qApp, &QCoreApplication::quit);
    clock.restart();
    sinceTick.start();
    ticker.start();
    poll.start();
    window.m_on_SendCMD_Scan();
    qApp->exec();
    std::printf("rescan units=%d rcvbuf_asked=%d granted=%d listed=%d all_listed_ms=%.1f "
                "longest_gui_block_ms=%.1f\n",
                expected, bufferBytes, granted, list->count(), listedMs, longestBlock);
    return list->count() >= expected ? 0 : 1;
}

} // namespace

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    const QStringList args = app.arguments();
    const QString mode = args.value(1);
    if (mode == "startup")
        return startup(args.value(2, "20").toInt());
    if (mode == "burst" || mode == "burst-per-reply")
        return burst(args.value(2, "1024").toInt(), mode == "burst-per-reply");
    if (mode == "rescan")
        return rescan(args.value(2, "1024").toInt(), args.value(3, "212992").toInt());
    std::fprintf(stderr, "usage: bench_search startup [runs] | burst [units] | burst-per-reply [units] | "
                         "rescan [units] [receive-buffer-bytes]\n");
    return 2;
}
