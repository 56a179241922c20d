#pragma once

#include <QObject>
#include <cstdint>

class QPushButton;
class UnitControl;

// The audio mode keys of the 8000-series panels: AFV (the audio follows the video, so the
// CH1/CH2 source keys are disabled) or MIX (the sources are picked by hand). The RVX5370 and
// RVX5350 have one key whose text names the mode and a press switches to the other; the
// RVX5310 has a key for each mode, lit while its mode is on.
class AudioModeKey : public QObject
{
    Q_OBJECT
public:
    static constexpr uint8_t Afv = 0;
    static constexpr uint8_t Mix = 1;

    AudioModeKey(QPushButton *key, QPushButton *ch1, QPushButton *ch2, UnitControl *link, QObject *parent);
    AudioModeKey(QPushButton *afv, QPushButton *mix, QPushButton *ch1, QPushButton *ch2, UnitControl *link,
                 QObject *parent);

    // The unit's mode byte; other values change nothing. Nothing is sent.
    void show(uint8_t mode);
    bool mixMode() const { return m_mix; }

private:
    void press();
    void choose(uint8_t mode);

    QPushButton *m_key;
    // Null on the one-key panels.
    QPushButton *m_mixKey = nullptr;
    QPushButton *m_ch1;
    QPushButton *m_ch2;
    UnitControl *m_link;
    bool m_mix = true;
};
