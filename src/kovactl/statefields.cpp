#include "statefields.h"

#include "SwitcherData/protocol.h"

namespace {

using namespace Protocol;

class Reader
{
public:
    Reader(const QByteArray &record, QVector<StateField> *out) : m_record(record), m_out(out) {}

    bool has(int offset, int width = 1) const { return offset + width <= m_record.size(); }
    uint8_t at(int offset) const { return uint8_t(m_record.at(offset)); }

    void add(const char *name, const QJsonValue &value) { m_out->append({QLatin1String(name), value}); }
    void number(const char *name, int offset)
    {
        if (has(offset))
            add(name, at(offset));
    }
    void flag(const char *name, int offset)
    {
        if (has(offset))
            add(name, at(offset) != 0);
    }
    // A name from `names` by the byte's value, the number itself when it names nothing.
    template <int N> void named(const char *name, int offset, const char *const (&names)[N])
    {
        if (!has(offset))
            return;
        const uint8_t v = at(offset);
        add(name, v < N && names[v] ? QJsonValue(QLatin1String(names[v])) : QJsonValue(v));
    }
    void bigEndian(const char *name, int offset)
    {
        if (has(offset, 2))
            add(name, at(offset) << 8 | at(offset + 1));
    }

private:
    const QByteArray &m_record;
    QVector<StateField> *m_out;
};

QString lowered(const char *text)
{
    return QString::fromLatin1(text).toLower().replace(QLatin1Char('_'), QLatin1Char('-'));
}

QJsonValue bus(uint8_t v)
{
    return v == 9 ? QJsonValue(QStringLiteral("bar")) : QJsonValue(v);
}

QJsonValue source(Family family, uint8_t code)
{
    if (family == Family::Rvx5350) {
        const int i = audioSource5350Index(code);
        return i < 0 ? QJsonValue(code) : QJsonValue(lowered(AudioSources5350[i].name));
    }
    const int i = audioSourceIndex(code);
    return i < 0 ? QJsonValue(code) : QJsonValue(lowered(AudioSources[i].name));
}

QJsonValue wipe(Family family, uint8_t reported)
{
    static const char *const directions[] = {"up", "down", "left", "right"};
    const int type =
        family == Family::Rvx5350 ? wipeTypeFromReport5350(reported) : wipeTypeFromReport(reported);
    return type >= 3 && type <= 6 ? QJsonValue(QLatin1String(directions[type - 3])) : QJsonValue(reported);
}

} // namespace

QVector<StateField> decodeState(Family family, const QByteArray &record, const QByteArray &serial)
{
    QVector<StateField> out;
    Reader r(record, &out);
    const bool series8000 = family == Family::Series8000 || family == Family::Rvx5350;
    if (series8000 && !serial.isEmpty())
        r.add("serial", QString::fromLatin1(serial.toHex())); // bytes, as the settings dialogs show them

    static const char *const audioModes[] = {"afv", "mix"};
    static const char *const transitions[] = {nullptr, "mix", "fade", nullptr, "wipe"};
    static const char *const sizes[] = {"small", "medium", "large"};
    static const char *const colors[] = {"white", "red", "blue", "green"};

    if (r.has(State::Pgm))
        r.add("pgm", bus(r.at(State::Pgm)));
    if (r.has(State::Pvw))
        r.add("pvw", bus(r.at(State::Pvw)));
    r.named("audio", State::AudioMode, audioModes);
    if (r.has(State::Ch1Source))
        r.add("ch1-source", source(family, r.at(State::Ch1Source)));
    r.number("ch1-level", State::Ch1Level);
    if (r.has(State::Ch2Source))
        r.add("ch2-source", source(family, r.at(State::Ch2Source)));
    r.number("ch2-level", State::Ch2Level);
    r.named("transition", State::Transition, transitions);
    if (r.has(State::Wipe))
        r.add("wipe", wipe(family, r.at(State::Wipe)));
    r.flag("ftb", State::Ftb);
    r.flag("pip", State::Pip);
    r.flag("pip-border", State::PipBorderEnable);
    r.named("pip-border-color", State::PipBorderColor, colors);
    r.number("pip-border-width", State::PipBorderWidth);
    r.named("pip-size", State::PipSize, sizes);
    r.bigEndian("pip-h", State::PipH);
    r.bigEndian("pip-v", State::PipV);
    r.flag("still", State::Still);
    // The rate keys are numbered from 1, the unit counts from 0.
    if (r.has(State::Rate))
        r.add("rate", r.at(State::Rate) + 1);
    if (r.has(State::Resolution)) {
        const uint8_t code = r.at(State::Resolution);
        const int i = outputFormatIndex(code);
        r.add("format", i < 0 ? QJsonValue(code) : QJsonValue(lowered(OutputFormats[i].name)));
    }
    if (series8000) {
        r.flag("mute", State::Mute);
        return out;
    }
    r.number("f3", State::Mute);
    if (family == Family::Rvx3410) {
        // The RVX3410 record goes on past the RVX3210's 26 bytes, one bit field each, as its
        // panel reads them: recording in bits 3-4, streaming bit 2, rotation bits 6-7.
        constexpr int Recording = State::Size3210;
        static const char *const recording[] = {"idle", "recording", "paused"};
        if (r.has(Recording)) {
            const int v = (r.at(Recording) & 0x18) >> 3;
            r.add("rec", v < 3 ? QJsonValue(QLatin1String(recording[v])) : QJsonValue(v));
        }
        if (r.has(Recording + 1))
            r.add("stream", (r.at(Recording + 1) & 0x04) != 0);
        if (r.has(Recording + 2))
            r.add("rotate", (r.at(Recording + 2) & 0xC0) == 0x40);
    }
    return out;
}

QString fieldText(const QJsonValue &value)
{
    if (value.isBool())
        return value.toBool() ? QStringLiteral("on") : QStringLiteral("off");
    if (value.isDouble())
        return QString::number(value.toInt());
    return value.toString();
}
