#pragma once

#include <QObject>

class LampKey;
class QTimer;

// A key that blinks while its function is on (FTB, STILL): once a second it lights and grows by
// a pixel for 200 ms, then goes back. Stopping the blink leaves the lamp to the panel.
class KeyBlink : public QObject
{
    Q_OBJECT
public:
    static constexpr int PeriodMs = 1000;
    static constexpr int LitMs = 200;

    explicit KeyBlink(LampKey *key);

    // The key's press: the key flips; it is lit and blinks while on, and stops when off.
    bool toggle();
    // The unit's report: on starts the blink, the lamp left to its beat; off is shown and
    // kept, but a blink already running goes on until the key is pressed.
    void showReported(bool reported);

    void start();
    void stop();
    bool isActive() const;

private:
    void tick();

    LampKey *m_key;
    QTimer *m_timer;
};
