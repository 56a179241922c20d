#include "unitcommands.h"

#include "protocol.h"
#include "unitcontrol.h"

namespace {

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

struct CommandDef;

// A UnitControl that checks and sends nothing, to ask whether a family takes a call.
class Rehearsal final : public UnitControl
{
public:
    using UnitControl::UnitControl;

protected:
    void perform(const Call &) override {}
};

} // namespace

struct CallBuilder
{
    const CommandDef *def;
    const FamilyTraits &traits;
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
    bool address(int i);
    void send(std::function<bool(UnitControl &)> action, bool his = false)
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
    UnitAction action;
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

QStringList sourceNames(const FamilyTraits &traits)
{
    QStringList out;
    for (int i = 0; i < traits.sourceCount; ++i)
        out << cliName(traits.sourceName(i));
    return out;
}

// Inputs of the buses: 1 to the family's count, and the bars where the family has them.
bool input(CallBuilder &b, int *out)
{
    if (!b.count(1))
        return false;
    if (b.traits.barInput && normalised(b.args.at(0)) == QLatin1String("bar")) {
        *out = Protocol::BarInput;
        return true;
    }
    const int max = b.traits.inputs;
    const QString range =
        b.traits.barInput ? QStringLiteral("1-%1 or bar").arg(max) : QStringLiteral("1-%1").arg(max);
    return b.number(0, 1, max, out, range);
}

void pgm(CallBuilder &b)
{
    int in = 0;
    if (input(b, &in))
        b.send([in](UnitControl &u) { return u.programme(in); });
}

void pvw(CallBuilder &b)
{
    int in = 0;
    if (input(b, &in))
        b.send([in](UnitControl &u) { return u.preview(in); });
}

// A key with no argument.
template <bool (UnitControl::*Press)()> void plain(CallBuilder &b)
{
    if (b.count(0))
        b.send([](UnitControl &u) { return (u.*Press)(); });
}

// A key that switches on or off.
template <bool (UnitControl::*Set)(bool)> void onOff(CallBuilder &b)
{
    bool on = false;
    if (b.count(1) && b.onOff(0, &on))
        b.send([on](UnitControl &u) { return (u.*Set)(on); });
}

// A list position or a number in a range.
template <bool (UnitControl::*Set)(int)> void chosen(CallBuilder &b, const QStringList &choices)
{
    int index = 0;
    if (b.count(1) && b.choice(0, choices, &index))
        b.send([index](UnitControl &u) { return (u.*Set)(index); });
}

template <bool (UnitControl::*Set)(int)> void ranged(CallBuilder &b, int lo, int hi)
{
    int v = 0;
    if (b.count(1) && b.number(0, lo, hi, &v))
        b.send([v](UnitControl &u) { return (u.*Set)(v); });
}

void tbar(CallBuilder &b)
{
    int stroke = 0;
    int travel = 0;
    if (b.count(2) && b.number(0, 0, 1, &stroke) &&
        b.number(1, b.traits.travel[stroke].lo, b.traits.travel[stroke].hi, &travel))
        b.send([=](UnitControl &u) { return u.fader(stroke, travel); });
}

void transition(CallBuilder &b)
{
    // The effect keys by id: MIX, FADE, then the four wipe directions.
    static const QStringList effects = {"mix", "fade", "wipe-up", "wipe-down", "wipe-left", "wipe-right"};
    int index = 0;
    if (b.count(1) && b.choice(0, effects, &index))
        b.send([index](UnitControl &u) { return u.transition(UnitControl::Effect(index + 1)); });
}

void rate(CallBuilder &b)
{
    ranged<&UnitControl::rate>(b, 1, Protocol::RateKeys);
}

void format(CallBuilder &b)
{
    chosen<&UnitControl::format>(b, formatNames());
}

void audio(CallBuilder &b)
{
    int mode = 0;
    if (b.count(1) && b.choice(0, {"afv", "mix"}, &mode))
        b.send([mode](UnitControl &u) { return u.audioMode(mode == 1); });
}

template <int Channel> void source(CallBuilder &b)
{
    int index = 0;
    if (b.count(1) && b.choice(0, sourceNames(b.traits), &index))
        b.send([index](UnitControl &u) { return u.source(Channel, index); });
}

template <int Channel> void level(CallBuilder &b)
{
    int value = 0;
    int index = -1;
    // Where the unit takes a channel's level together with the source the channel plays, the
    // source is the second argument.
    const int n = b.traits.levelTakesSource ? 2 : 1;
    if (!b.count(n) || !b.number(0, 0, Protocol::LevelMax, &value) ||
        (n == 2 && !b.choice(1, sourceNames(b.traits), &index)))
        return;
    b.send([=](UnitControl &u) { return u.level(Channel, value, index); });
}

void levels(CallBuilder &b)
{
    // The panels send the third level as 0, and the master as their master fader gives it.
    const Range ranges[4] = {
        {0, Protocol::AudioLevelMax}, {0, Protocol::AudioLevelMax}, {0, 0}, b.traits.levelsMaster};
    int v[4] = {};
    if (!b.count(4))
        return;
    for (int i = 0; i < 4; ++i) {
        if (!b.number(i, ranges[i].lo, ranges[i].hi, &v[i]))
            return;
    }
    b.send([v](UnitControl &u) { return u.levels(v[0], v[1], v[2], v[3]); });
}

void pipSize(CallBuilder &b)
{
    chosen<&UnitControl::pipSize>(b, names(PipSizes, 3));
}

void pipBorderColor(CallBuilder &b)
{
    chosen<&UnitControl::pipBorderColor>(b, names(BorderColors, 4));
}

void pipBorderWidth(CallBuilder &b)
{
    ranged<&UnitControl::pipBorderWidth>(b, Protocol::PipBorderWidthMin, Protocol::PipBorderWidthMax);
}

template <bool Horizontal, bool Pop> void position(CallBuilder &b)
{
    const FamilyTraits &t = b.traits;
    const Range range = Pop ? (Horizontal ? t.popH : t.popV) : (Horizontal ? t.pipH : t.pipV);
    int p = 0;
    if (b.count(1) && b.number(0, range.lo, range.hi, &p))
        b.send([p](UnitControl &u) {
            return Pop ? u.popPosition(Horizontal, p) : u.pipPosition(Horizontal, p);
        });
}

void popWindow(CallBuilder &b)
{
    ranged<&UnitControl::popWindow>(b, 1, Protocol::PopWindows);
}

void popBorderColor(CallBuilder &b)
{
    chosen<&UnitControl::popBorderColor>(b, names(BorderColors, 4));
}

void popBorderWidth(CallBuilder &b)
{
    ranged<&UnitControl::popBorderWidth>(b, Protocol::PipBorderWidthMin, Protocol::PipBorderWidthMax);
}

void menu(CallBuilder &b)
{
    int key = 0;
    int press = 0;
    if (!b.count(2) || !b.choice(0, {"up", "down", "enter"}, &key) ||
        !b.choice(1, {"release", "press"}, &press))
        return;
    if (UnitControl::MenuKey(key) == UnitControl::MenuKey::Enter && press == 0)
        return b.fail(CommandCall::Verdict::NotHere, QStringLiteral("menu: the menu key sends no release"));
    b.send([=](UnitControl &u) { return u.menu(UnitControl::MenuKey(key), press == 1); });
}

void setAddress(CallBuilder &b)
{
    if (!b.count(1) || !b.address(0))
        return;
    const QString ip = b.args.at(0);
    if (!b.traits.zeroAddress && Protocol::addressBytes(ip) == QByteArray(4, '\0'))
        return b.fail(
            CommandCall::Verdict::NotHere,
            QStringLiteral("set-address: the %1 takes no 0.0.0.0").arg(QLatin1String(b.traits.name)));
    b.send([ip](UnitControl &u) { return u.setAddress(ip); });
}

void hisAddress(CallBuilder &b)
{
    if (b.count(3) && b.address(0) && b.address(1) && b.address(2)) {
        const QStringList a = b.args;
        b.send([a](UnitControl &u) { return u.hisAddress(a.at(0), a.at(1), a.at(2)); }, true);
    }
}

void hisDns(CallBuilder &b)
{
    if (b.count(1) && b.address(0)) {
        const QString dns = b.args.at(0);
        b.send([dns](UnitControl &u) { return u.hisDns(dns); }, true);
    }
}

void readHis(CallBuilder &b)
{
    if (b.count(0))
        b.send([](UnitControl &u) { return u.readHis(); }, true);
}

void readUrl(CallBuilder &b)
{
    int slot = 0;
    if (b.count(1) && b.number(0, 0, Protocol::UrlSlots - 1, &slot))
        b.send([slot](UnitControl &u) { return u.readUrl(slot); }, true);
}

void url(CallBuilder &b)
{
    using Protocol::UrlMax;
    using Protocol::UrlNameMax;
    int slot = 0;
    if (!b.count(3) || !b.number(0, 0, Protocol::UrlSlots - 1, &slot))
        return;
    const QByteArray name = b.args.at(1).toLatin1();
    const QByteArray address = b.args.at(2).toLatin1();
    // The unit stores Latin-1 text in fixed fields; what does not fit is refused, as the
    // network page refuses it.
    if (name.size() > UrlNameMax || b.args.at(1) != QString::fromLatin1(name))
        return b.fail(
            CommandCall::Verdict::BadUsage,
            QStringLiteral("url: the name must be Latin-1 text of at most %1 bytes").arg(UrlNameMax));
    if (address.size() > UrlMax || b.args.at(2) != QString::fromLatin1(address))
        return b.fail(CommandCall::Verdict::BadUsage,
                      QStringLiteral("url: the URL must be Latin-1 text of at most %1 bytes").arg(UrlMax));
    b.send([=](UnitControl &u) { return u.url(slot, name, address); }, true);
}

// Every command some family's panel sends, in the order of the panels' rows.
const CommandDef Commands[] = {
    {"read-state", "", "ask the unit for its state (the DS key; 'state' shows the answer)",
     UnitAction::ReadState, plain<&UnitControl::readState>},
    {"pgm", "INPUT",
     "put INPUT (1-4 and bar; 1-4 on the RVX5370, 1-2 on the RVX5350, 1-6 on the RVX3220) on the programme "
     "bus",
     UnitAction::Programme, pgm},
    {"pvw", "INPUT", "put INPUT on the preview bus", UnitAction::Preview, pvw},
    {"cut", "", "cut", UnitAction::Cut, plain<&UnitControl::cut>},
    {"auto", "", "auto transition", UnitAction::Auto, plain<&UnitControl::autoTransition>},
    {"tbar", "STROKE TRAVEL",
     "move the T-bar: stroke 0 or 1, travel 0-128 (on the RVX3220 0-125 in stroke 0, 0-126 in stroke 1)",
     UnitAction::Fader, tbar},
    {"transition", "EFFECT", "mix, fade, wipe-up, wipe-down, wipe-left or wipe-right", UnitAction::Transition,
     transition},
    {"rate", "KEY", "transition rate key 1-3", UnitAction::Rate, rate},
    {"ftb", "", "fade to black (toggles)", UnitAction::Ftb, plain<&UnitControl::ftb>},
    {"still", "", "still (toggles)", UnitAction::Still, plain<&UnitControl::still>},
    {"format", "FORMAT", "output format: 1080p60, 1080p50, 1080i60, 1080i50, 1080p30, 1080p25, 1080p24",
     UnitAction::Format, format},
    {"audio", "MODE", "audio mode afv or mix", UnitAction::AudioMode, audio},
    {"ch1-source", "SOURCE", "audio source of channel 1 (aux-in, in1-in4, mic-in1, mic-in2; see the manual)",
     UnitAction::Source, source<1>},
    {"ch2-source", "SOURCE", "audio source of channel 2", UnitAction::Source, source<2>},
    {"ch1-level", "LEVEL [SOURCE]", "level 0-100 of channel 1 (the RVX3220 also takes the channel's source)",
     UnitAction::Level, level<1>},
    {"ch2-level", "LEVEL [SOURCE]", "level 0-100 of channel 2", UnitAction::Level, level<2>},
    {"levels", "CH1 CH2 CH3 MASTER",
     "the audio faders: CH1 and CH2 0-127, CH3 0, MASTER 0-127 (100 on the 8000 series)", UnitAction::Levels,
     levels},
    {"pip", "on|off", "picture in picture", UnitAction::Pip, onOff<&UnitControl::pip>},
    {"pip-size", "SIZE", "small, medium or large", UnitAction::PipSize, pipSize},
    {"pip-h", "PIXELS", "horizontal position, 0-1440", UnitAction::PipPosition, position<true, false>},
    {"pip-v", "PIXELS", "vertical position, 0-810", UnitAction::PipPosition, position<false, false>},
    {"pip-border", "on|off", "PIP border", UnitAction::PipBorder, onOff<&UnitControl::pipBorder>},
    {"pip-border-color", "COLOR", "white, red, blue or green", UnitAction::PipBorderColor, pipBorderColor},
    {"pip-border-width", "WIDTH", "PIP border width 2-7", UnitAction::PipBorderWidth, pipBorderWidth},
    {"pop", "on|off", "picture outside picture", UnitAction::Pop, onOff<&UnitControl::pop>},
    {"pop-window", "1|2", "the POP window the settings apply to", UnitAction::PopWindow, popWindow},
    {"pop-border", "on|off", "POP border", UnitAction::PopBorder, onOff<&UnitControl::popBorder>},
    {"pop-border-color", "COLOR", "white, red, blue or green", UnitAction::PopBorderColor, popBorderColor},
    {"pop-border-width", "WIDTH", "POP border width 2-7", UnitAction::PopBorderWidth, popBorderWidth},
    {"pop-h", "PIXELS", "POP horizontal position 0-960", UnitAction::PopPosition, position<true, true>},
    {"pop-v", "PIXELS", "POP vertical position 0-540", UnitAction::PopPosition, position<false, true>},
    {"f2", "", "the F2 key", UnitAction::F2, plain<&UnitControl::f2>},
    {"f3", "", "the F3 key (audio mute on the 8000 series)", UnitAction::Mute, plain<&UnitControl::mute>},
    {"f7", "", "the F7 key", UnitAction::F7, plain<&UnitControl::f7>},
    {"bar", "on|off", "colour bars to both buses", UnitAction::Bar, onOff<&UnitControl::bar>},
    {"rec", "on|off", "recording", UnitAction::Rec, onOff<&UnitControl::rec>},
    {"pause", "", "pause the recording", UnitAction::Pause, plain<&UnitControl::pause>},
    {"stream", "on|off", "streaming", UnitAction::Stream, onOff<&UnitControl::stream>},
    {"rotate", "", "the ROTATE key", UnitAction::Rotate, plain<&UnitControl::rotate>},
    {"menu", "KEY press|release", "menu key up or down, press or release; enter, press only",
     UnitAction::Menu, menu},
    {"reset", "", "reset the unit's settings", UnitAction::Reset, plain<&UnitControl::reset>},
    {"set-address", "IPV4", "give the unit's main board a new address (not 0.0.0.0 on the RVX3220)",
     UnitAction::SetAddress, setAddress},
    {"his-address", "IPV4 MASK GATEWAY", "give the HIS board a new address", UnitAction::HisAddress,
     hisAddress},
    {"his-dns", "IPV4", "the HIS board's DNS server", UnitAction::HisDns, hisDns},
    {"his-read", "", "ask the HIS board for its addresses (the network page's read key)", UnitAction::ReadHis,
     readHis},
    {"url-read", "SLOT", "ask the HIS board for streaming URL slot 0-4", UnitAction::ReadUrl, readUrl},
    {"url", "SLOT NAME URL", "streaming URL slot 0-4 of the HIS board (name and URL may be empty)",
     UnitAction::Url, url},
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
    fail(CommandCall::Verdict::NotHere, QStringLiteral("the %1 has no '%2' command")
                                            .arg(QLatin1String(traits.name), QLatin1String(def->name)));
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
                 .arg(QLatin1String(def->name), arg, QLatin1String(traits.name), range));
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
             .arg(QLatin1String(def->name), QLatin1String(traits.name), joined(choices), args.at(i)));
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

bool CallBuilder::address(int i)
{
    if (Protocol::addressBytes(args.at(i)).size() == 4)
        return true;
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
    CallBuilder b{def, familyTraits(family), args, CommandCall()};
    if (!b.traits.actions.has(def->action))
        b.lacks();
    else
        def->handler(b);
    if (!b.done)
        b.fail(Verdict::BadUsage, QStringLiteral("%1: not understood").arg(name));
    // The family's UnitControl has the last word: a call it would refuse is refused here.
    Rehearsal rehearsal(family);
    if (b.call.m_verdict == Verdict::Ok && !b.call.m_action(rehearsal)) {
        b.call.m_verdict = Verdict::NotHere;
        b.call.m_message =
            QStringLiteral("%1: the %2's panel sends no such frame").arg(name, QLatin1String(b.traits.name));
        b.call.m_action = nullptr;
    }
    return b.call;
}

CommandCall CommandCall::checkLine(const QString &line, Family family)
{
    QStringList words = line.simplified().split(QLatin1Char(' '), Qt::SkipEmptyParts);
    if (words.isEmpty()) {
        CommandCall empty;
        empty.m_verdict = Verdict::BadUsage;
        empty.m_message = QStringLiteral("no command given");
        return empty;
    }
    const QString name = words.takeFirst();
    return check(name, words, family);
}

QString CommandCall::runLine(UnitControl &unit, const QString &line, bool hisKnown)
{
    const CommandCall call = checkLine(line, unit.traits().family);
    if (call.verdict() != Verdict::Ok)
        return call.message();
    if (call.needsHisBoard() && !hisKnown)
        return QStringLiteral("the unit's HIS board has not answered the search");
    if (!call.run(unit))
        return QStringLiteral("the %1 refused it").arg(QLatin1String(unit.traits().name));
    return QString();
}

CommandCall CommandCall::checkAnyFamily(const QString &name, const QStringList &args)
{
    CommandCall first;
    bool haveFirst = false;
    for (Family f : AllFamilies) {
        CommandCall c = check(name, args, f);
        if (c.m_verdict == Verdict::Ok || c.m_verdict == Verdict::Unknown)
            return c;
        if (!haveFirst && familyTraits(f).actions.has(find(name)->action)) {
            first = c;
            haveFirst = true;
        }
    }
    // No family takes it: a malformed call, refused before anything is sent.
    first.m_verdict = Verdict::BadUsage;
    return first;
}

bool CommandCall::run(UnitControl &unit) const
{
    return m_verdict == Verdict::Ok && m_action && m_action(unit);
}

QStringList CommandCall::listing()
{
    QStringList out;
    for (const CommandDef &s : Commands) {
        QStringList fams;
        for (Family f : AllFamilies) {
            if (familyTraits(f).actions.has(s.action))
                fams << QLatin1String(familyTraits(f).name);
        }
        const QString head =
            QStringLiteral("%1 %2").arg(QLatin1String(s.name), QLatin1String(s.args)).trimmed();
        out << QStringLiteral("%1  %2 [%3]")
                   .arg(head, -30)
                   .arg(QLatin1String(s.help), fams.join(QLatin1String(", ")));
    }
    return out;
}
