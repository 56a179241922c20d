// The OSC remote's receive path: the input is one datagram, handed to liblo's decoder (messages,
// bundles, address patterns) and on to the remote's commands, which act on a stand-in panel.
// Binds the remote's port, so it refuses to run outside a private network namespace.
#include "live/oscremote.h"
#include "live/remotetarget.h"
#include "netnsguard.h"

#include <QCoreApplication>
#include <QHostAddress>
#include <cstdlib>

namespace {

class StandInPanel : public RemoteTarget
{
public:
    QStringList keys{"cut", "auto",  "ftb",  "mix",  "fade", "pip", "pop",
                     "rec", "still", "pgm1", "pgm2", "pvw1", "pvw2"};
    QString modelName() const override { return QStringLiteral("RVX3210"); }
    QString unitAddress() const override { return QStringLiteral("10.0.0.5"); }
    int inputCount() const override { return 2; }
    QStringList keyNames() const override { return keys; }
    // Only keys the panel lists reach a press, and the fader only moves within its travel.
    bool pressKey(const QString &name) override
    {
        if (!keys.contains(name))
            std::abort();
        m_lit = !m_lit;
        return true;
    }
    std::optional<bool> keyLit(const QString &name) const override
    {
        if (name == QLatin1String("rec"))
            return std::nullopt;
        return m_lit;
    }
    bool setFader(double f) override
    {
        if (!(f >= 0.0 && f <= 1.0))
            std::abort();
        return true;
    }
    bool requestState() override { return m_lit; }

private:
    bool m_lit = false;
};

OscRemote *remote = nullptr;

} // namespace

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    static QCoreApplication app(*argc, *argv);
    requirePrivateNetwork();
    static StandInPanel panel;
    static OscRemote osc;
    if (!osc.listen(QHostAddress(QHostAddress::LocalHost), 9000))
        std::abort();
    osc.setTarget(&panel);
    osc.setWholeState({{"link", 1}, {"model", "RVX3210"}, {"fader", 0.5}});
    remote = &osc;
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    remote->dispatch(QByteArray(reinterpret_cast<const char *>(data), int(size)));
    return 0;
}
