#pragma once

#include <QObject>
#include <QString>
#include <cstdint>
#include <functional>

class QLabel;
class QPushButton;
class QSlider;
class QWidget;
class UnitControl;
class UnitState;

// CH1 and CH2 on the 8000-series panels: a channel's key steps its source round the unit's
// list (lit for the wait, then shown on its label and sent), and the two level sliders go out
// together in one frame. The unit's state report sets both without sending anything back.
class AudioChannels : public QObject
{
    Q_OBJECT
public:
    struct Channel
    {
        QPushButton *key = nullptr;
        QLabel *name = nullptr;
        QSlider *level = nullptr;
        // Where a panel writes the level out as a number; null elsewhere.
        QLabel *levelText = nullptr;
    };
    // Where the units differ: their source lists and level range. A source goes to the unit
    // as its list position, which the unit's family turns into its code.
    struct Sources
    {
        int count = 0;
        std::function<QString(int index)> name;
        // The unit's level for slider value 1.
        double levelScale = 1.0;
    };

    static constexpr int KeyWaitMs = 200;

    // The source list most of the family shares.
    static Sources mainList(double levelScale);
    // The RVX5350's own list; its levels run to 127 against sliders to 100.
    static Sources list5350();

    AudioChannels(QWidget *panel, UnitControl *link, Channel ch1, Channel ch2, Sources sources);

    // Steps channel 0 (CH1) or 1 (CH2) to its next source.
    void press(int channel);
    void show(int channel, int index);
    int source(int channel) const { return m_source[channel]; }
    // Sends both levels as the sliders stand.
    void sendLevels();
    // The sources and levels of the unit's state, its sources read in its family's list.
    void showReport(const UnitState &s);

private:
    void showLevels();

    QWidget *m_panel;
    UnitControl *m_link;
    Channel m_channels[2];
    Sources m_sources;
    int m_source[2] = {0, 0};
};
