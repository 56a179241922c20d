#pragma once

#include "SwitcherData/rvx5all_workdata.h"
#include "SwitcherData/unitstate.h"
#include "audiochannels.h"
#include "audiomodekey.h"
#include "common/keysheet.h"
#include "common/unitbinding.h"
#include "frontpanel8000.h"
#include "insetkeys.h"
#include "keyblink.h"
#include "lampkeys.h"
#include "report8000.h"

#include <QSlider>
#include <initializer_list>

class QWidget;

// The frame of the RVX5310, RVX5370 and RVX5350 panels (a dialog or a plain widget, `Base`):
// the link, set to the panel's family; the binding that asks for the unit's state; the front
// (buses, CUT, AUTO, T-bar, transitions), the inset keys, the audio mode and the two channels;
// the keys all three have where they have them (DS, mute, REC and PAUSE, streaming, FTB, STILL)
// with their presses; and the part of the unit's report all three show. A panel hands its keys
// over once its form is built and keeps only what is its own.
template <class Base> class Panel8000 : public Base, public UnitBinding<Panel8000<Base>>
{
public:
    static constexpr int ReadWaitMs = 400;

    // A panel's keys; null where it has none.
    struct Keys
    {
        FrontPanel8000::Keys front;
        FrontPanel8000::Hooks hooks;
        LampKey *pip = nullptr;
        LampKey *key = nullptr;
        LampKey *pop = nullptr;
        InsetKeys::Pop popRule = InsetKeys::Pop::Exclusive;
        // One AFV key that switches the mode, or AFV and MIX each (`mix` set).
        QPushButton *afv = nullptr;
        QPushButton *mix = nullptr;
        AudioChannels::Channel ch1;
        AudioChannels::Channel ch2;
        AudioChannels::Sources sources;
        QPushButton *ds = nullptr;
        LampKey *mute = nullptr;
        LampKey *rec = nullptr;
        LampKey *pause = nullptr;
        LampKey *stream = nullptr;
        LampKey *ftb = nullptr;
        LampKey *still = nullptr;
        // STILL blinks while on, as FTB does, where the panel has no FTB.
        bool stillBlinks = false;
    };

    RVX5ALL_workdata *link() const { return m_link; }
    FrontPanel8000 *front() const { return m_front; }
    bool ftbBlinking() const { return m_ftbBlink && m_ftbBlink->isActive(); }
    bool stillBlinking() const { return m_stillBlink && m_stillBlink->isActive(); }

    // Binds the unit's boards as the search found them, then asks for the unit's state.
    void bindUnit(const UnitAddress &unit, const UnitAddress &his)
    {
        m_link->bindBoards(unit, his);
        unitBound(unit);
        m_link->readState();
    }

    // The unit's state report, decoded once by the link.
    virtual void showUnitState(const UnitState &s) = 0;

    // The keys: plain members, not slots, so the form's name-based hookup does not connect a
    // key a second time beside the typed connections.
    void on_btn_ds_clicked()
    {
        LampKeys::flash(this, m_keys.ds, ReadWaitMs, [this] { m_link->readState(); });
    }
    void on_btn_mute_clicked()
    {
        m_keys.mute->toggle();
        m_link->mute();
    }
    void on_btn_rec_clicked()
    {
        // Where there is PAUSE, stopping the recording puts its lamp out.
        m_link->rec(m_keys.pause ? LampKeys::toggleRecord(m_keys.rec, m_keys.pause) : m_keys.rec->toggle());
    }
    void on_btn_pause_clicked()
    {
        m_keys.pause->toggle();
        m_link->pause();
    }
    void on_btn_ftb_clicked()
    {
        m_ftbBlink->toggle();
        m_link->ftb();
    }
    void on_btn_still_clicked()
    {
        if (m_stillBlink)
            m_stillBlink->toggle();
        else
            m_keys.still->toggle();
        m_link->still();
    }
    void on_btn_ch1_clicked() { m_audio->press(0); }
    void on_btn_ch2_clicked() { m_audio->press(1); }
    void set_audio_vol() { m_audio->sendLevels(); }
    // The streaming key: RTMP, or F1 on the RVX5310.
    void pressStream() { m_link->stream(m_keys.stream->toggle()); }

protected:
    Panel8000(QWidget *parent, Family family) : Base(parent)
    {
        m_link = new RVX5ALL_workdata(this);
        m_link->setFamily(family);
    }

    // Wires the keys the panel has, once its form is built.
    void initFrame(const Keys &keys)
    {
        m_keys = keys;
        using P = Panel8000<Base>;
        const std::pair<QPushButton *, void (P::*)()> presses[] = {
            {keys.ds, &P::on_btn_ds_clicked},       {keys.mute, &P::on_btn_mute_clicked},
            {keys.rec, &P::on_btn_rec_clicked},     {keys.pause, &P::on_btn_pause_clicked},
            {keys.stream, &P::pressStream},         {keys.ftb, &P::on_btn_ftb_clicked},
            {keys.still, &P::on_btn_still_clicked}, {keys.ch1.key, &P::on_btn_ch1_clicked},
            {keys.ch2.key, &P::on_btn_ch2_clicked}};
        for (const auto &[key, press] : presses) {
            if (key)
                LampKeys::wire(this, {{key, press}});
        }
        for (LampKey *key : {keys.mute, keys.rec, keys.pause, keys.stream, keys.ftb, keys.still}) {
            if (key)
                LampKeys::toggles({key}, KeySheet::GradientRed);
        }
        if (keys.ftb)
            m_ftbBlink = new KeyBlink(keys.ftb);
        if (keys.still && keys.stillBlinks)
            m_stillBlink = new KeyBlink(keys.still);

        for (QSlider *level : {keys.ch1.level, keys.ch2.level})
            QObject::connect(level, &QSlider::valueChanged, this, &P::set_audio_vol);
        m_audioMode = keys.mix
                          ? new AudioModeKey(keys.afv, keys.mix, keys.ch1.key, keys.ch2.key, m_link, this)
                          : new AudioModeKey(keys.afv, keys.ch1.key, keys.ch2.key, m_link, this);
        m_audio = new AudioChannels(this, m_link, keys.ch1, keys.ch2, keys.sources);

        m_front = new FrontPanel8000(this, m_link, keys.front, keys.hooks);
        m_insets = new InsetKeys(keys.pip, keys.key, keys.pop, keys.popRule, m_link, this);
        QObject::connect(m_insets, &InsetKeys::overlayChanged, m_front, &FrontPanel8000::setOverlay);
        QObject::connect(m_link, &ReportingLink::stateReported, this,
                         [this](const UnitState &s) { showUnitState(s); });
    }

    // The panel's parts that show the unit's address.
    virtual void unitBound(const UnitAddress &unit) { Q_UNUSED(unit) }

    // What all three show of the unit's report: the buses, the transition and the wipe, the
    // audio, PIP, FTB, STILL and mute. Nothing is sent back.
    void showSharedState(const UnitState &s)
    {
        showSharedReport(s, m_front, m_audioMode, m_audio, m_insets);
        if (m_ftbBlink && s.has(UnitState::Ftb))
            m_ftbBlink->showReported(s.ftb());
        if (m_keys.still && s.has(UnitState::Still)) {
            if (m_stillBlink)
                m_stillBlink->showReported(s.still());
            else
                m_keys.still->setLit(s.still());
        }
        if (m_keys.mute && s.has(UnitState::Mute))
            m_keys.mute->setLit(s.mute());
    }

    InsetKeys *insets() const { return m_insets; }

private:
    RVX5ALL_workdata *m_link = nullptr;
    Keys m_keys;
    FrontPanel8000 *m_front = nullptr;
    InsetKeys *m_insets = nullptr;
    AudioModeKey *m_audioMode = nullptr;
    AudioChannels *m_audio = nullptr;
    KeyBlink *m_ftbBlink = nullptr;
    KeyBlink *m_stillBlink = nullptr;
};
