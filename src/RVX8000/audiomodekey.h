#pragma once

#include <QObject>
#include <cstdint>

class QPushButton;
class RVX5ALL_workdata;

// The one AFV/MIX key of the RVX5370 and RVX5350 panels. Its text names the mode the audio is
// in: "AFV" (lit; the audio follows the video, so the CH1/CH2 source keys are disabled) or
// "MIX" (the sources are picked by hand). A press switches to the other mode.
class AudioModeKey : public QObject
{
    Q_OBJECT
public:
    static constexpr uint8_t Afv = 0;
    static constexpr uint8_t Mix = 1;

    AudioModeKey(QPushButton *key, QPushButton *ch1, QPushButton *ch2, RVX5ALL_workdata *link,
                 QObject *parent);

    // The unit's mode byte; other values change nothing. Nothing is sent.
    void show(uint8_t mode);
    bool mixMode() const { return m_mix; }

private:
    void press();

    QPushButton *m_key;
    QPushButton *m_ch1;
    QPushButton *m_ch2;
    RVX5ALL_workdata *m_link;
    bool m_mix = true;
};
