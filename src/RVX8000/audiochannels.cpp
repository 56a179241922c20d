#include "audiochannels.h"

#include "SwitcherData/protocol.h"
#include "SwitcherData/unitcontrol.h"
#include "SwitcherData/unitstate.h"
#include "lampkeys.h"

#include <QLabel>
#include <QSignalBlocker>
#include <QSlider>

using namespace Protocol;

AudioChannels::Sources AudioChannels::mainList(double levelScale)
{
    Sources sources;
    sources.count = AudioSourceCount;
    sources.name = [](int index) { return QString::fromLatin1(AudioSources[index].name); };
    sources.levelScale = levelScale;
    return sources;
}

AudioChannels::Sources AudioChannels::list5350()
{
    Sources sources;
    sources.count = AudioSource5350Count;
    sources.name = [](int index) { return QString::fromLatin1(AudioSources5350[index].name); };
    sources.levelScale = 1.27;
    return sources;
}

AudioChannels::AudioChannels(QWidget *panel, UnitControl *link, Channel ch1, Channel ch2, Sources sources)
    : QObject(panel), m_panel(panel), m_link(link), m_channels{ch1, ch2}, m_sources(std::move(sources))
{
    show(0, 0);
    show(1, 0);
}

void AudioChannels::show(int channel, int index)
{
    m_source[channel] = index;
    m_channels[channel].name->setText(m_sources.name(index));
}

void AudioChannels::press(int channel)
{
    LampKeys::flash(m_panel, m_channels[channel].key, KeyWaitMs, [this, channel] {
        show(channel, (m_source[channel] + 1) % m_sources.count);
        m_link->source(channel + 1, m_source[channel]);
    });
}

void AudioChannels::showLevels()
{
    for (const Channel &channel : m_channels) {
        if (channel.levelText)
            channel.levelText->setText(QStringLiteral("%1").arg(channel.level->value()));
    }
}

void AudioChannels::sendLevels()
{
    showLevels();
    const double scale = m_sources.levelScale;
    m_link->levels(int(m_channels[0].level->value() * scale), int(m_channels[1].level->value() * scale), 0,
                   100);
}

void AudioChannels::showReport(const UnitState &s)
{
    // What the unit reports is shown, never sent back: the sliders keep quiet meanwhile.
    const QSignalBlocker quiet1(m_channels[0].level);
    const QSignalBlocker quiet2(m_channels[1].level);
    const UnitState::Field fields[2][2] = {{UnitState::Ch1Source, UnitState::Ch1Level},
                                           {UnitState::Ch2Source, UnitState::Ch2Level}};
    const int indexes[2] = {s.ch1SourceIndex(), s.ch2SourceIndex()};
    for (int channel = 0; channel < 2; ++channel) {
        if (s.has(fields[channel][0]) && indexes[channel] >= 0)
            show(channel, indexes[channel]);
        if (s.has(fields[channel][1])) {
            m_channels[channel].level->setValue(s.value(fields[channel][1]));
            showLevels();
        }
    }
}
