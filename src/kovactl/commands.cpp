#include "commands.h"

#include "SwitcherData/protocol.h"
#include "SwitcherData/rvx3210_workdata.h"
#include "SwitcherData/rvx3220_workdata.h"
#include "SwitcherData/rvx5all_workdata.h"

#include <QHostAddress>

ReportingLink *Links::reporting() const
{
    if (rvx3210)
        return rvx3210;
    return series8000;
}

namespace {

// Family sets of the command table.
enum : unsigned
{
    F3210 = 1u << int(Family::Rvx3210),
    F3410 = 1u << int(Family::Rvx3410),
    F3220 = 1u << int(Family::Rvx3220),
    F8000 = 1u << int(Family::Series8000),
    F5350 = 1u << int(Family::Rvx5350),
    Reporting = F3210 | F3410 | F8000 | F5350,
    Every = Reporting | F3220,
};

// Names an operator types for list entries: lower case, '-' for '_' and blanks.
QString cliName(const char *text)
{
    return QString::fromLatin1(text).toLower().replace(QLatin1Char('_'), QLatin1Char('-'));
}

QString normalised(const QString &arg)
{
    return arg.toLower().replace(QLatin1Char('_'), QLatin1Char('-'));
}

const char *const PipSizes[] = {"small", "medium", "large"};
const char *const BorderColors[] = {"white", "red", "blue", "green"};
// The RVX3220's source list, in its order (the link maps the position to the unit's code).
const char *const Sources3220[] = {"phone-in", "rca-in", "in1", "in2", "in3", "in4", "in5", "in6"};
// The RVX3210 panel's level sliders and spin boxes, and the PIP and POP position bounds of the
// panels' spin boxes (the widest size preset).
constexpr int LevelMax = 100;
constexpr int SliderMax = 127;
constexpr int PipHMax = 1440;
constexpr int PipVMax = 810;
constexpr int Pip3220HMax = 960;
constexpr int Pip3220VMax = 540;
constexpr int BorderWidthMin = 2;
constexpr int BorderWidthMax = 7;
constexpr int UrlSlots = 5;
constexpr int UrlNameMax = 16;
constexpr int UrlMax = 768;
// The RVX3410's menu keys.
constexpr uint8_t MenuUp = 0x41;
constexpr uint8_t MenuDown = 0x42;
constexpr uint8_t MenuEnter = 0x6B;
// Lever command: the stroke byte, then the travel (128 marks the end of a stroke).
constexpr int TravelMax = 128;
constexpr int Travel3220Max = 126;
constexpr int BarInput = 9;

struct CommandDef;

} // namespace

struct CallBuilder
{
    const CommandDef *def;
    Family family;
    QStringList args;
    CommandCall call;
    bool done = false;

    void fail(CommandCall::Verdict v, const QString &message)
    {
        if (done)
            return;
        done = true;
        call.m_verdict = v;
        call.m_message = message;
        call.m_action = nullptr;
    }
    void lacks();
    bool count(int n);
    bool countBetween(int lo, int hi);
    bool number(int i, int lo, int hi, int *out, const QString &rangeText = QString());
    bool choice(int i, const QStringList &names, int *out);
    bool onOff(int i, bool *out);
    bool address(int i, QByteArray *bytes);
    void send(std::function<void(const Links &)> action, bool his = false)
    {
        if (done)
            return;
        done = true;
        call.m_verdict = CommandCall::Verdict::Ok;
        call.m_action = std::move(action);
        call.m_needsHis = his;
    }
};

namespace {

struct CommandDef
{
    const char *name;
    const char *args;
    const char *help;
    unsigned families;
    void (*handler)(CallBuilder &);
};

QStringList names(const char *const *list, int n)
{
    QStringList out;
    for (int i = 0; i < n; ++i)
        out << QString::fromLatin1(list[i]);
    return out;
}

QStringList formatNames()
{
    QStringList out;
    for (const Protocol::OutputFormat &f : Protocol::OutputFormats)
        out << cliName(f.name);
    return out;
}

QStringList sourceNames(Family family)
{
    QStringList out;
    if (family == Family::Rvx3220)
        return names(Sources3220, 8);
    if (family == Family::Rvx5350) {
        for (const Protocol::AudioSource &s : Protocol::AudioSources5350)
            out << cliName(s.name);
        return out;
    }
    for (const Protocol::AudioSource &s : Protocol::AudioSources)
        out << cliName(s.name);
    return out;
}

// Inputs of the buses: 1-4 and the bar source, two inputs on the RVX5350, six on the RVX3220.
bool input(CallBuilder &b, int *out)
{
    if (!b.count(1))
        return false;
    if (b.family != Family::Rvx3220 && normalised(b.args.at(0)) == QLatin1String("bar")) {
        *out = BarInput;
        return true;
    }
    const int max = b.family == Family::Rvx3220 ? 6 : b.family == Family::Rvx5350 ? 2 : 4;
    const QString range =
        b.family == Family::Rvx3220 ? QStringLiteral("1-6") : QStringLiteral("1-%1 or bar").arg(max);
    return b.number(0, 1, max, out, range);
}

void pgm(CallBuilder &b)
{
    int in = 0;
    if (!input(b, &in))
        return;
    if (b.family == Family::Rvx3220)
        b.send([in](const Links &l) { l.rvx3220->SendCMDPGM(quint8(in)); });
    else
        b.send([in](const Links &l) { l.reporting()->SendCDMPGMCH(uint8_t(in)); });
}

void pvw(CallBuilder &b)
{
    int in = 0;
    if (!input(b, &in))
        return;
    if (b.family == Family::Rvx3220)
        b.send([in](const Links &l) { l.rvx3220->SendCMDPVW(quint8(in)); });
    else
        b.send([in](const Links &l) { l.reporting()->SendCMDPVWCH(uint8_t(in)); });
}

void cut(CallBuilder &b)
{
    if (!b.count(0))
        return;
    if (b.family == Family::Rvx3220)
        b.send([](const Links &l) { l.rvx3220->SendCMDCUT(); });
    else
        b.send([](const Links &l) { l.reporting()->SendCMDCUT(); });
}

void autoTransition(CallBuilder &b)
{
    // The RVX3220's AUTO key sends nothing: the unit has no such command to script.
    if (b.family == Family::Rvx3220)
        return b.lacks();
    if (b.count(0))
        b.send([](const Links &l) { l.reporting()->SendCMDAUTO(); });
}

void tbar(CallBuilder &b)
{
    int stroke = 0;
    int travel = 0;
    const int max = b.family == Family::Rvx3220 ? Travel3220Max : TravelMax;
    if (!b.count(2) || !b.number(0, 0, 1, &stroke) || !b.number(1, 0, max, &travel))
        return;
    if (b.family == Family::Rvx3220)
        b.send([=](const Links &l) { l.rvx3220->SwndCMDslider(quint8(stroke), quint8(travel)); });
    else
        b.send([=](const Links &l) { l.reporting()->SwndCMDslider(uint8_t(stroke), uint8_t(travel)); });
}

template <void (ReportingLink::*Method)()> void plain(CallBuilder &b)
{
    if (b.count(0))
        b.send([](const Links &l) { (l.reporting()->*Method)(); });
}

void transition(CallBuilder &b)
{
    // The effect keys by id: MIX, FADE, then the four wipe directions.
    static const QStringList effects = {"mix", "fade", "wipe-up", "wipe-down", "wipe-left", "wipe-right"};
    int index = 0;
    if (!b.count(1) || !b.choice(0, effects, &index))
        return;
    const int effect = index + 1;
    if (b.family == Family::Rvx3220)
        b.send([effect](const Links &l) { l.rvx3220->SendCMDTRANSITIONS(quint8(effect)); });
    else
        b.send([effect](const Links &l) { l.reporting()->SendCMDTRANSITIONS(uint8_t(effect)); });
}

void rate(CallBuilder &b)
{
    int key = 0;
    if (!b.count(1) || !b.number(0, 1, 3, &key))
        return;
    b.send([key](const Links &l) { l.reporting()->SendCMDRATE(uint8_t(key - 1)); });
}

void format(CallBuilder &b)
{
    int index = 0;
    if (!b.count(1) || !b.choice(0, formatNames(), &index))
        return;
    if (b.family == Family::Rvx3220)
        b.send([index](const Links &l) { l.rvx3220->SendCMDPGM_OUT(index); });
    else
        b.send([index](const Links &l) { l.reporting()->SendCMDF1(index); });
}

void audio(CallBuilder &b)
{
    int mode = 0;
    if (!b.count(1) || !b.choice(0, {"afv", "mix"}, &mode))
        return;
    if (b.family == Family::Rvx3220)
        b.send([mode](const Links &l) { mode ? l.rvx3220->SendCMDMIX() : l.rvx3220->SendCMDAFV(); });
    else
        b.send([mode](const Links &l) { mode ? l.reporting()->SendCMDMIX() : l.reporting()->SendCMDAFV(); });
}

template <int Channel> void source(CallBuilder &b)
{
    int index = 0;
    if (!b.count(1) || !b.choice(0, sourceNames(b.family), &index))
        return;
    switch (b.family) {
    case Family::Rvx3220:
        return b.send([index](const Links &l) {
            Channel == 1 ? l.rvx3220->SendCMDCH1(index) : l.rvx3220->SendCMDCH2(index);
        });
    case Family::Rvx5350:
        return b.send([index](const Links &l) {
            Channel == 1 ? l.series8000->SendCMDCH1_for5350(index) : l.series8000->SendCMDCH2_for5350(index);
        });
    default:
        return b.send([index](const Links &l) {
            Channel == 1 ? l.reporting()->SendCMDCH1(index) : l.reporting()->SendCMDCH2(index);
        });
    }
}

template <int Channel> void level(CallBuilder &b)
{
    int value = 0;
    if (b.family == Family::Rvx3220) {
        // The unit takes a channel's level together with the source the channel plays.
        int index = 0;
        if (!b.count(2) || !b.number(0, 0, LevelMax, &value) || !b.choice(1, sourceNames(b.family), &index))
            return;
        return b.send([=](const Links &l) {
            Channel == 1 ? l.rvx3220->SendCMDCH1_VOL(index, quint8(value))
                         : l.rvx3220->SendCMDCH2_VOL(index, quint8(value));
        });
    }
    if (b.family != Family::Rvx3210 && b.family != Family::Rvx3410)
        return b.lacks();
    if (!b.count(1) || !b.number(0, 0, LevelMax, &value))
        return;
    b.send([value](const Links &l) {
        Channel == 1 ? l.rvx3210->SendCMDCH1_VOL(uint8_t(value)) : l.rvx3210->SendCMDCH2_VOL(uint8_t(value));
    });
}

void levels(CallBuilder &b)
{
    int v[4] = {};
    if (!b.count(4))
        return;
    for (int i = 0; i < 4; ++i) {
        if (!b.number(i, 0, SliderMax, &v[i]))
            return;
    }
    b.send([v](const Links &l) {
        l.reporting()->SendCMDLeftSliderVOL(uint8_t(v[0]), uint8_t(v[1]), uint8_t(v[2]), uint8_t(v[3]));
    });
}

void pip(CallBuilder &b)
{
    bool on = false;
    if (!b.count(1) || !b.onOff(0, &on))
        return;
    if (b.family == Family::Rvx3220)
        b.send([on](const Links &l) { l.rvx3220->SendCMDPIP(on ? 1 : 0); });
    else
        b.send([on](const Links &l) { l.reporting()->SendCMDPIP(on ? 1 : 0); });
}

void pipBorder(CallBuilder &b)
{
    bool on = false;
    if (!b.count(1) || !b.onOff(0, &on))
        return;
    if (b.family == Family::Rvx3220)
        b.send([on](const Links &l) { l.rvx3220->SendCMDPIP_Border_Enable(on ? 1 : 0); });
    else
        b.send([on](const Links &l) { l.reporting()->SendCMDPIP_Border_Enable(on ? 1 : 0); });
}

void pipBorderColor(CallBuilder &b)
{
    int index = 0;
    if (!b.count(1) || !b.choice(0, names(BorderColors, 4), &index))
        return;
    if (b.family == Family::Rvx3220)
        b.send([index](const Links &l) { l.rvx3220->SendCMDPIP_Border_Color(quint8(index)); });
    else
        b.send([index](const Links &l) { l.reporting()->SendCMDPIP_Border_Color(uint8_t(index)); });
}

void pipBorderWidth(CallBuilder &b)
{
    int w = 0;
    if (!b.count(1) || !b.number(0, BorderWidthMin, BorderWidthMax, &w))
        return;
    if (b.family == Family::Rvx3220)
        b.send([w](const Links &l) { l.rvx3220->SendCMDPIP_Border_Width(quint8(w)); });
    else
        b.send([w](const Links &l) { l.reporting()->SendCMDPIP_Border_Width(uint8_t(w)); });
}

void pipSize(CallBuilder &b)
{
    int index = 0;
    if (!b.count(1) || !b.choice(0, names(PipSizes, 3), &index))
        return;
    if (b.family == Family::Rvx3220)
        b.send([index](const Links &l) { l.rvx3220->SendCMDPIP_Border_Size(quint8(index)); });
    else
        b.send([index](const Links &l) { l.reporting()->SendCMDPIP_Border_Size(uint8_t(index)); });
}

template <bool Horizontal> void pipPosition(CallBuilder &b)
{
    const bool is3220 = b.family == Family::Rvx3220;
    const int max = Horizontal ? (is3220 ? Pip3220HMax : PipHMax) : (is3220 ? Pip3220VMax : PipVMax);
    int p = 0;
    if (!b.count(1) || !b.number(0, 0, max, &p))
        return;
    if (is3220)
        b.send([p](const Links &l) {
            Horizontal ? l.rvx3220->SendCMDPIP_H_Position(quint16(p))
                       : l.rvx3220->SendCMDPIP_V_Position(quint16(p));
        });
    else
        b.send([p](const Links &l) {
            Horizontal ? l.reporting()->SendCMDPIP_H_Position(uint16_t(p))
                       : l.reporting()->SendCMDPIP_V_Position(uint16_t(p));
        });
}

void pop(CallBuilder &b)
{
    bool on = false;
    if (!b.count(1) || !b.onOff(0, &on))
        return;
    if (b.family == Family::Rvx3220)
        b.send([on](const Links &l) { l.rvx3220->SendCMDPOP(on ? 1 : 0); });
    else
        b.send([on](const Links &l) { l.series8000->SendCMDPOP(on ? 1 : 0); });
}

void popWindow(CallBuilder &b)
{
    int w = 0;
    if (b.count(1) && b.number(0, 1, 2, &w))
        b.send([w](const Links &l) { l.rvx3220->SendCMDPOP_Window(quint8(w)); });
}

void popBorder(CallBuilder &b)
{
    bool on = false;
    if (b.count(1) && b.onOff(0, &on))
        b.send([on](const Links &l) { l.rvx3220->SendCMDPOP_Border_Enable(on ? 1 : 0); });
}

void popBorderColor(CallBuilder &b)
{
    int index = 0;
    if (b.count(1) && b.choice(0, names(BorderColors, 4), &index))
        b.send([index](const Links &l) { l.rvx3220->SendCMDPOP_Border_Color(quint8(index)); });
}

void popBorderWidth(CallBuilder &b)
{
    int w = 0;
    if (b.count(1) && b.number(0, BorderWidthMin, BorderWidthMax, &w))
        b.send([w](const Links &l) { l.rvx3220->SendCMDPOP_Border_Width(quint8(w)); });
}

template <bool Horizontal> void popPosition(CallBuilder &b)
{
    int p = 0;
    if (b.count(1) && b.number(0, 0, Horizontal ? Pip3220HMax : Pip3220VMax, &p))
        b.send([p](const Links &l) {
            Horizontal ? l.rvx3220->SendCMDPOP_H_Position(quint16(p))
                       : l.rvx3220->SendCMDPOP_V_Position(quint16(p));
        });
}

void rec(CallBuilder &b)
{
    bool on = false;
    if (b.count(1) && b.onOff(0, &on))
        b.send([on](const Links &l) { l.reporting()->SendCMDREC(on ? 1 : 0); });
}

void stream(CallBuilder &b)
{
    bool on = false;
    if (b.count(1) && b.onOff(0, &on))
        b.send([on](const Links &l) { l.reporting()->SendCMDSTREAM(on ? 1 : 0); });
}

void menu(CallBuilder &b)
{
    int key = 0;
    int press = 0;
    if (!b.count(2) || !b.choice(0, {"up", "down", "enter"}, &key) ||
        !b.choice(1, {"release", "press"}, &press))
        return;
    const uint8_t code = key == 0 ? MenuUp : key == 1 ? MenuDown : MenuEnter;
    b.send([=](const Links &l) { l.rvx3210->SendCMDMenu(code, uint8_t(press)); });
}

void bar(CallBuilder &b)
{
    // The RVX5370's BAR key: the bars to both buses, programme first.
    bool on = false;
    if (b.count(1) && b.onOff(0, &on))
        b.send([on](const Links &l) {
            l.series8000->SendCMDPGMBAR(on ? 1 : 0);
            l.series8000->SendCMDPVWBAR(on ? 1 : 0);
        });
}

void reset(CallBuilder &b)
{
    if (b.count(0))
        b.send([](const Links &l) { l.series8000->SendCMDRESET(); });
}

void setAddress(CallBuilder &b)
{
    QByteArray ip;
    if (!b.count(1) || !b.address(0, &ip))
        return;
    const QString text = b.args.at(0);
    if (b.family == Family::Rvx3220)
        b.send([ip, text](const Links &l) {
            QByteArray bytes = ip;
            l.rvx3220->SendCMD_IP(bytes, text);
        });
    else
        b.send([ip, text](const Links &l) { l.reporting()->SendCMD_SetIP(ip, text); });
}

void hisAddress(CallBuilder &b)
{
    QByteArray ip;
    QByteArray mask;
    QByteArray gateway;
    if (!b.count(3) || !b.address(0, &ip) || !b.address(1, &mask) || !b.address(2, &gateway))
        return;
    const QStringList texts = b.args;
    b.send([=](const Links &l) { l.reporting()->SendCMD_Set_HIS_IP(ip, mask, gateway, texts); }, true);
}

void hisDns(CallBuilder &b)
{
    QByteArray dns;
    if (!b.count(1) || !b.address(0, &dns))
        return;
    const QString text = b.args.at(0);
    b.send([dns, text](const Links &l) { l.reporting()->SendCMD_Set_HIS_DNS(dns, text); }, true);
}

void url(CallBuilder &b)
{
    int slot = 0;
    if (!b.count(3) || !b.number(0, 0, UrlSlots - 1, &slot))
        return;
    const QByteArray name = b.args.at(1).toLatin1();
    const QByteArray address = b.args.at(2).toLatin1();
    // The unit stores Latin-1 text in fixed fields; what does not fit is refused, as the
    // network page refuses it.
    if (name.size() > UrlNameMax || b.args.at(1) != QString::fromLatin1(name))
        return b.fail(
            CommandCall::Verdict::BadUsage,
            QStringLiteral("url: the name must be Latin-1 text of at most %1 bytes").arg(UrlNameMax));
    if (address.isEmpty() || address.size() > UrlMax || b.args.at(2) != QString::fromLatin1(address))
        return b.fail(CommandCall::Verdict::BadUsage,
                      QStringLiteral("url: the URL must be Latin-1 text of 1 to %1 bytes").arg(UrlMax));
    b.send([=](const Links &l) { l.reporting()->SendCMD_Set_Url(slot, name, address); }, true);
}

// Every command some family's panel sends, in the order of the panels' rows.
const CommandDef Commands[] = {
    {"pgm", "INPUT", "put INPUT (1-4, bar; 1-2 on the RVX5350, 1-6 on the RVX3220) on the programme bus",
     Every, pgm},
    {"pvw", "INPUT", "put INPUT on the preview bus", Every, pvw},
    {"cut", "", "cut", Every, cut},
    {"auto", "", "auto transition", Reporting, autoTransition},
    {"tbar", "STROKE TRAVEL", "move the T-bar: stroke 0 or 1, travel 0-128 (0-126 on the RVX3220)", Every,
     tbar},
    {"transition", "EFFECT", "mix, fade, wipe-up, wipe-down, wipe-left or wipe-right", Every, transition},
    {"rate", "KEY", "transition rate key 1-3", Reporting, rate},
    {"ftb", "", "fade to black (toggles)", Reporting, plain<&ReportingLink::SendCMDFTB>},
    {"still", "", "still (toggles)", Reporting, plain<&ReportingLink::SendCMDSTILL>},
    {"format", "FORMAT", "output format: 1080p60, 1080p50, 1080i60, 1080i50, 1080p30, 1080p25, 1080p24",
     Every, format},
    {"audio", "MODE", "audio mode afv or mix", Every, audio},
    {"ch1-source", "SOURCE", "audio source of channel 1 (aux-in, in1-in4, mic-in1, mic-in2; see the manual)",
     Every, source<1>},
    {"ch2-source", "SOURCE", "audio source of channel 2", Every, source<2>},
    {"ch1-level", "LEVEL [SOURCE]", "level 0-100 of channel 1 (the RVX3220 also takes the channel's source)",
     F3210 | F3410 | F3220, level<1>},
    {"ch2-level", "LEVEL [SOURCE]", "level 0-100 of channel 2", F3210 | F3410 | F3220, level<2>},
    {"levels", "CH1 CH2 CH3 MASTER", "the audio faders, 0-127 each", F3210 | F3410 | F8000 | F5350, levels},
    {"pip", "on|off", "picture in picture", Every, pip},
    {"pip-size", "SIZE", "small, medium or large", Every, pipSize},
    {"pip-h", "PIXELS", "horizontal position, 0-1440 (0-960 on the RVX3220)", Every, pipPosition<true>},
    {"pip-v", "PIXELS", "vertical position, 0-810 (0-540 on the RVX3220)", Every, pipPosition<false>},
    {"pip-border", "on|off", "PIP border", Every, pipBorder},
    {"pip-border-color", "COLOR", "white, red, blue or green", Every, pipBorderColor},
    {"pip-border-width", "WIDTH", "PIP border width 2-7", Every, pipBorderWidth},
    {"pop", "on|off", "picture outside picture", F3220 | F8000 | F5350, pop},
    {"pop-window", "1|2", "the POP window the settings apply to", F3220, popWindow},
    {"pop-border", "on|off", "POP border", F3220, popBorder},
    {"pop-border-color", "COLOR", "white, red, blue or green", F3220, popBorderColor},
    {"pop-border-width", "WIDTH", "POP border width 2-7", F3220, popBorderWidth},
    {"pop-h", "PIXELS", "POP horizontal position 0-960", F3220, popPosition<true>},
    {"pop-v", "PIXELS", "POP vertical position 0-540", F3220, popPosition<false>},
    {"f2", "", "the F2 key", F3210 | F3410, plain<&ReportingLink::SendCMDF2>},
    {"f3", "", "the F3 key (audio mute on the 8000 series)", Reporting, plain<&ReportingLink::SendCMDF3>},
    {"f7", "", "the F7 key", F3210 | F3410, plain<&ReportingLink::SendCMDF7>},
    {"bar", "on|off", "colour bars to both buses", F8000, bar},
    {"rec", "on|off", "recording", F3410 | F8000 | F5350, rec},
    {"pause", "", "pause the recording", F3410 | F8000, plain<&ReportingLink::SendCMDPAUSE>},
    {"stream", "on|off", "streaming", F3410 | F8000 | F5350, stream},
    {"rotate", "", "the ROTATE key", F3410, plain<&ReportingLink::SendCMDROTATE>},
    {"menu", "KEY press|release", "menu key up, down or enter", F3410, menu},
    {"reset", "", "reset the unit's settings", F8000 | F5350, reset},
    {"set-address", "IPV4", "give the unit's main board a new address", Every, setAddress},
    {"his-address", "IPV4 MASK GATEWAY", "give the HIS board a new address", Reporting, hisAddress},
    {"his-dns", "IPV4", "the HIS board's DNS server", Reporting, hisDns},
    {"url", "SLOT NAME URL", "streaming URL slot 0-4 of the HIS board", Reporting, url},
};

const CommandDef *find(const QString &name)
{
    for (const CommandDef &s : Commands) {
        if (name == QLatin1String(s.name))
            return &s;
    }
    return nullptr;
}

QString joined(const QStringList &choices)
{
    return choices.join(QLatin1String(", "));
}

} // namespace

void CallBuilder::lacks()
{
    fail(CommandCall::Verdict::NotHere,
         QStringLiteral("the %1 has no '%2' command").arg(familyName(family), QLatin1String(def->name)));
}

bool CallBuilder::count(int n)
{
    return countBetween(n, n);
}

bool CallBuilder::countBetween(int lo, int hi)
{
    if (args.size() >= lo && args.size() <= hi)
        return true;
    fail(CommandCall::Verdict::BadUsage,
         QStringLiteral("usage: %1 %2").arg(QLatin1String(def->name), QLatin1String(def->args)).trimmed());
    return false;
}

bool CallBuilder::number(int i, int lo, int hi, int *out, const QString &rangeText)
{
    bool ok = false;
    const QString &arg = args.at(i);
    const int v = arg.toInt(&ok, 10);
    const QString range = rangeText.isEmpty() ? QStringLiteral("%1-%2").arg(lo).arg(hi) : rangeText;
    if (!ok) {
        fail(CommandCall::Verdict::BadUsage,
             QStringLiteral("%1: '%2' is not a number (%3)").arg(QLatin1String(def->name), arg, range));
        return false;
    }
    if (v < lo || v > hi) {
        fail(CommandCall::Verdict::NotHere,
             QStringLiteral("%1: %2 is out of range on the %3 (%4)")
                 .arg(QLatin1String(def->name), arg, familyName(family), range));
        return false;
    }
    *out = v;
    return true;
}

bool CallBuilder::choice(int i, const QStringList &choices, int *out)
{
    const int at = choices.indexOf(normalised(args.at(i)));
    if (at >= 0) {
        *out = at;
        return true;
    }
    fail(CommandCall::Verdict::NotHere,
         QStringLiteral("%1: the %2 takes %3, not '%4'")
             .arg(QLatin1String(def->name), familyName(family), joined(choices), args.at(i)));
    return false;
}

bool CallBuilder::onOff(int i, bool *out)
{
    int at = 0;
    if (!choice(i, {"off", "on"}, &at))
        return false;
    *out = at == 1;
    return true;
}

bool CallBuilder::address(int i, QByteArray *bytes)
{
    const QByteArray b = Protocol::addressBytes(args.at(i));
    if (b.size() == 4) {
        *bytes = b;
        return true;
    }
    fail(CommandCall::Verdict::BadUsage,
         QStringLiteral("%1: '%2' is no IPv4 address").arg(QLatin1String(def->name), args.at(i)));
    return false;
}

CommandCall CommandCall::check(const QString &name, const QStringList &args, Family family)
{
    const CommandDef *def = find(name);
    if (!def) {
        CommandCall unknown;
        unknown.m_message = QStringLiteral("unknown command '%1' (kovactl --help lists them)").arg(name);
        return unknown;
    }
    CallBuilder b{def, family, args, CommandCall()};
    if (!(def->families & (1u << int(family))))
        b.lacks();
    else
        def->handler(b);
    if (!b.done)
        b.fail(Verdict::BadUsage, QStringLiteral("%1: not understood").arg(name));
    return b.call;
}

CommandCall CommandCall::checkAnyFamily(const QString &name, const QStringList &args)
{
    CommandCall first;
    bool haveFirst = false;
    for (Family f : AllFamilies) {
        CommandCall c = check(name, args, f);
        if (c.m_verdict == Verdict::Ok || c.m_verdict == Verdict::Unknown)
            return c;
        const CommandDef *def = find(name);
        if (!haveFirst && (def->families & (1u << int(f)))) {
            first = c;
            haveFirst = true;
        }
    }
    // No family takes it: a malformed call, refused before anything is sent.
    first.m_verdict = Verdict::BadUsage;
    return first;
}

void CommandCall::run(const Links &links) const
{
    if (m_verdict == Verdict::Ok && m_action)
        m_action(links);
}

QStringList CommandCall::listing()
{
    QStringList out;
    for (const CommandDef &s : Commands) {
        QStringList fams;
        for (Family f : AllFamilies) {
            if (s.families & (1u << int(f)))
                fams << familyName(f);
        }
        const QString head =
            QStringLiteral("%1 %2").arg(QLatin1String(s.name), QLatin1String(s.args)).trimmed();
        out << QStringLiteral("%1  %2 [%3]")
                   .arg(head, -30)
                   .arg(QLatin1String(s.help), fams.join(QLatin1String(", ")));
    }
    return out;
}
