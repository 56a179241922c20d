#pragma once

#include <QObject>

class QPushButton;
class QTimer;

// A key that blinks while its function is on (FTB, STILL): once a second it lights and grows by
// a pixel for 200 ms, then goes back. Stopping the blink leaves the lamp to the panel.
class KeyBlink : public QObject
{
    Q_OBJECT
public:
    static constexpr int PeriodMs = 1000;
    static constexpr int LitMs = 200;

    KeyBlink(QPushButton *key, const char *litSheet);

    // The key's press: flips `on`; the key is lit and blinks while on, and stops when off.
    bool toggle(bool &on);
    // The unit's report: on starts the blink; off is shown and remembered, but a blink already
    // running goes on until the key is pressed.
    void showReported(bool &on, bool reported);

    void start();
    void stop();
    bool isActive() const;

private:
    void tick();

    QPushButton *m_key;
    const char *m_litSheet;
    QTimer *m_timer;
};
