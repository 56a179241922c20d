#include "unitcontrol.h"

#include "protocol.h"

namespace {
bool within(int v, int lo, int hi)
{
    return v >= lo && v <= hi;
}
} // namespace

bool UnitControl::run(bool valid, const Call &call)
{
    if (!valid || !can(call.action))
        return false;
    perform(call);
    return true;
}

bool UnitControl::validInput(int input) const
{
    return within(input, 1, m_traits->inputs) || (m_traits->barInput && input == Protocol::BarInput);
}

bool UnitControl::readState()
{
    return run(true, {UnitAction::ReadState});
}
bool UnitControl::programme(int input)
{
    return run(validInput(input), {UnitAction::Programme, input});
}
bool UnitControl::preview(int input)
{
    return run(validInput(input), {UnitAction::Preview, input});
}
bool UnitControl::cut()
{
    return run(true, {UnitAction::Cut});
}
bool UnitControl::autoTransition()
{
    return run(true, {UnitAction::Auto});
}
bool UnitControl::fader(int stroke, int travel)
{
    return run(within(stroke, 0, 1) && m_traits->travel[qBound(0, stroke, 1)].has(travel),
               {UnitAction::Fader, stroke, travel});
}
bool UnitControl::transition(Effect effect)
{
    return run(within(int(effect), int(Effect::Mix), int(Effect::WipeRight)),
               {UnitAction::Transition, int(effect)});
}
bool UnitControl::rate(int key)
{
    return run(within(key, 1, Protocol::RateKeys), {UnitAction::Rate, key});
}
bool UnitControl::ftb()
{
    return run(true, {UnitAction::Ftb});
}
bool UnitControl::still()
{
    return run(true, {UnitAction::Still});
}
bool UnitControl::format(int index)
{
    return run(within(index, 0, Protocol::OutputFormatCount - 1), {UnitAction::Format, index});
}
bool UnitControl::audioMode(bool mix)
{
    return run(true, {UnitAction::AudioMode, mix ? 1 : 0});
}
bool UnitControl::source(int channel, int index)
{
    return run(within(channel, 1, 2) && within(index, 0, m_traits->sourceCount - 1),
               {UnitAction::Source, channel, index});
}
bool UnitControl::level(int channel, int percent, int sourceIndex)
{
    const bool sourceOk = !m_traits->levelTakesSource || within(sourceIndex, 0, m_traits->sourceCount - 1);
    return run(within(channel, 1, 2) && within(percent, 0, Protocol::LevelMax) && sourceOk,
               {UnitAction::Level, channel, percent, sourceIndex});
}
bool UnitControl::levels(int ch1, int ch2, int ch3, int master)
{
    const int m = Protocol::AudioLevelMax;
    return run(within(ch1, 0, m) && within(ch2, 0, m) && ch3 == 0 && m_traits->levelsMaster.has(master),
               {UnitAction::Levels, ch1, ch2, ch3, master});
}
bool UnitControl::pip(bool on)
{
    return run(true, {UnitAction::Pip, on ? 1 : 0});
}
bool UnitControl::pipSize(int index)
{
    return run(within(index, 0, Protocol::PipSizeCount - 1), {UnitAction::PipSize, index});
}
bool UnitControl::pipPosition(bool horizontal, int pixels)
{
    return run((horizontal ? m_traits->pipH : m_traits->pipV).has(pixels),
               {UnitAction::PipPosition, horizontal ? 1 : 0, pixels});
}
bool UnitControl::pipBorder(bool on)
{
    return run(true, {UnitAction::PipBorder, on ? 1 : 0});
}
bool UnitControl::pipBorderColor(int index)
{
    return run(within(index, 0, Protocol::PipBorderColorCount - 1), {UnitAction::PipBorderColor, index});
}
bool UnitControl::pipBorderWidth(int width)
{
    return run(within(width, Protocol::PipBorderWidthMin, Protocol::PipBorderWidthMax),
               {UnitAction::PipBorderWidth, width});
}
bool UnitControl::pop(bool on)
{
    return run(true, {UnitAction::Pop, on ? 1 : 0});
}
bool UnitControl::popWindow(int window)
{
    return run(within(window, 1, Protocol::PopWindows), {UnitAction::PopWindow, window});
}
bool UnitControl::popBorder(bool on)
{
    return run(true, {UnitAction::PopBorder, on ? 1 : 0});
}
bool UnitControl::popBorderColor(int index)
{
    return run(within(index, 0, Protocol::PipBorderColorCount - 1), {UnitAction::PopBorderColor, index});
}
bool UnitControl::popBorderWidth(int width)
{
    return run(within(width, Protocol::PipBorderWidthMin, Protocol::PipBorderWidthMax),
               {UnitAction::PopBorderWidth, width});
}
bool UnitControl::popPosition(bool horizontal, int pixels)
{
    return run((horizontal ? m_traits->popH : m_traits->popV).has(pixels),
               {UnitAction::PopPosition, horizontal ? 1 : 0, pixels});
}
bool UnitControl::f2()
{
    return run(true, {UnitAction::F2});
}
bool UnitControl::mute()
{
    return run(true, {UnitAction::Mute});
}
bool UnitControl::f7()
{
    return run(true, {UnitAction::F7});
}
bool UnitControl::bar(bool on)
{
    return run(true, {UnitAction::Bar, on ? 1 : 0});
}
bool UnitControl::rec(bool on)
{
    return run(true, {UnitAction::Rec, on ? 1 : 0});
}
bool UnitControl::pause()
{
    return run(true, {UnitAction::Pause});
}
bool UnitControl::stream(bool on)
{
    return run(true, {UnitAction::Stream, on ? 1 : 0});
}
bool UnitControl::rotate()
{
    return run(true, {UnitAction::Rotate});
}
bool UnitControl::menu(MenuKey key, bool press)
{
    static constexpr uint8_t Codes[] = {Protocol::MenuUp, Protocol::MenuDown, Protocol::MenuEnter};
    // The unit acts on the menu key's press alone, so the panel sends no release of it.
    const bool sent = within(int(key), 0, 2) && (press || key != MenuKey::Enter);
    return run(sent, {UnitAction::Menu, Codes[qBound(0, int(key), 2)], press ? 1 : 0});
}
bool UnitControl::reset()
{
    return run(true, {UnitAction::Reset});
}

bool UnitControl::setAddress(const QString &ip)
{
    Call c{UnitAction::SetAddress};
    c.bytes[0] = Protocol::addressBytes(ip);
    c.texts = QStringList{ip};
    const bool zero = c.bytes[0] == QByteArray(4, '\0');
    return run(c.bytes[0].size() == 4 && (!zero || m_traits->zeroAddress), c);
}

bool UnitControl::hisAddress(const QString &ip, const QString &mask, const QString &gateway)
{
    Call c{UnitAction::HisAddress};
    c.texts = QStringList{ip, mask, gateway};
    bool ok = true;
    for (int i = 0; i < 3; ++i) {
        c.bytes[i] = Protocol::addressBytes(c.texts.at(i));
        ok = ok && c.bytes[i].size() == 4;
    }
    return run(ok, c);
}

bool UnitControl::hisDns(const QString &dns)
{
    Call c{UnitAction::HisDns};
    c.bytes[0] = Protocol::addressBytes(dns);
    c.texts = QStringList{dns};
    return run(c.bytes[0].size() == 4, c);
}

bool UnitControl::readHis()
{
    return run(true, {UnitAction::ReadHis});
}

bool UnitControl::readUrl(int slot)
{
    return run(within(slot, 0, Protocol::UrlSlots - 1), {UnitAction::ReadUrl, slot});
}

bool UnitControl::url(int slot, const QByteArray &name, const QByteArray &url)
{
    Call c{UnitAction::Url, slot};
    c.bytes[0] = name;
    c.bytes[1] = url;
    const bool ok = within(slot, 0, Protocol::UrlSlots - 1) && name.size() <= Protocol::UrlNameMax &&
                    url.size() <= Protocol::UrlMax;
    return run(ok, c);
}
