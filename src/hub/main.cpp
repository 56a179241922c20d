// kova-hub: holds links to RVX units with no display and serves them by OSC, tally and MQTT.
#include "hub/hub.h"
#include "hub/hublog.h"
#include "hub/huboptions.h"

#include <QCoreApplication>
#include <QSocketNotifier>
#include <QTextStream>
#include <csignal>
#include <cstdio>
#include <sys/socket.h>
#include <unistd.h>

namespace {

// Signals are turned into bytes on a socket pair and handled from the event loop.
int signalPipe[2] = {-1, -1};

void onSignal(int number)
{
    const char byte = char(number);
    const ssize_t written = ::write(signalPipe[1], &byte, 1);
    (void)written;
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("kova-hub"));
    QCoreApplication::setApplicationVersion(QStringLiteral(KOVA_VERSION));

    const QStringList arguments = QCoreApplication::arguments();
    HubOptions options;
    QString message;
    switch (HubOptions::parse(arguments, &options, &message)) {
    case HubOptions::Outcome::Help:
    case HubOptions::Outcome::Version:
        QTextStream(stdout) << message << '\n';
        return 0;
    case HubOptions::Outcome::Error:
        QTextStream(stderr) << "kova-hub: " << message << '\n'
                            << "Try 'kova-hub --help' for more information.\n";
        return 2;
    case HubOptions::Outcome::Run:
        break;
    }

    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, signalPipe) != 0) {
        perror("kova-hub: socketpair");
        return 1;
    }
    struct sigaction action = {};
    action.sa_handler = onSignal;
    sigemptyset(&action.sa_mask);
    action.sa_flags = SA_RESTART;
    sigaction(SIGTERM, &action, nullptr);
    sigaction(SIGINT, &action, nullptr);
    sigaction(SIGHUP, &action, nullptr);

    Hub hub(options);
    QString error;
    if (!hub.start(&error)) {
        QTextStream(stderr) << "kova-hub: " << error << '\n';
        return 2;
    }

    QSocketNotifier notifier(signalPipe[0], QSocketNotifier::Read);
    QObject::connect(&notifier, &QSocketNotifier::activated, &app, [&] {
        char byte = 0;
        if (::read(signalPipe[0], &byte, 1) != 1)
            return;
        if (byte == SIGHUP) {
            // The file again, under the same command line, which still wins.
            HubOptions newer;
            QString why;
            if (HubOptions::parse(arguments, &newer, &why) == HubOptions::Outcome::Run)
                hub.reconfigure(newer);
            else
                qCWarning(lcHub) << "options not read again:" << why;
            return;
        }
        qCInfo(lcHub) << "stopping";
        hub.stop();
        QCoreApplication::exit(0);
    });
    qCInfo(lcHub) << "kova-hub" << KOVA_VERSION << "started";
    return app.exec();
}
