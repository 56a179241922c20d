// kova-hub's two text inputs: its INI file and the command lines that come in by MQTT. The
// input is read whole as a config file, then each of its lines is checked as a command for
// every family. Nothing is sent: the checks build no link.
#include "SwitcherData/unitcommands.h"
#include "hub/huboptions.h"

#include <QCoreApplication>
#include <QHostAddress>
#include <cstdlib>

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    static QCoreApplication app(*argc, *argv);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray text(reinterpret_cast<const char *>(data), int(size));
    HubOptions options;
    if (options.readConfig(text, QStringLiteral("fuzz.conf")).isEmpty()) {
        // What a file that is taken sets is what the options check: no refused value slips in.
        for (const QString &unit : qAsConst(options.units))
            if (QHostAddress(unit).protocol() != QAbstractSocket::IPv4Protocol)
                std::abort();
        const int follow = options.live.followMs;
        if (follow != 0 && (follow < LiveOptions::MinFollowMs || follow > LiveOptions::MaxFollowMs))
            std::abort();
    }
    for (const QByteArray &line : text.split('\n')) {
        const QString command = QString::fromUtf8(line);
        for (Family family : AllFamilies) {
            const CommandCall call = CommandCall::checkLine(command, family);
            // A refused call always says why.
            if (call.verdict() != CommandCall::Verdict::Ok && call.message().isEmpty())
                std::abort();
        }
    }
    return 0;
}
