#pragma once

#include "SwitcherData/unitmodel.h"
#include "SwitcherData/unitstate.h"
#include "live/liveoptions.h"
#include "live/oscremote.h"

#include <QObject>
#include <QPointer>
#include <QTimer>
#include <memory>

class NoReplyMark;
class PanelRemote;
class TslTally;
class UnitLink;
class QWidget;

// KOVA in a live production: the OSC remote, the tally, the followed state and the link watch
// of the open panel, each as the options turn it on. With every option off it makes nothing:
// no socket, no timer, no mark, so the program sends and shows what it does without it.
class LiveProduction : public QObject
{
    Q_OBJECT
public:
    explicit LiveProduction(const LiveOptions &options, QObject *parent = nullptr);
    ~LiveProduction() override;

    // Opens what the options ask for; false, with the reason, when the OSC port cannot be had.
    bool start(QString *error);
    bool isActive() const;

    // A panel of `kind` was opened on `link` for the unit of that child type.
    void panelOpened(QWidget *panel, UnitLink *link, PanelKind kind, uint8_t childType);

    OscRemote *osc() const { return m_osc; }
    TslTally *tally() const { return m_tally; }

private:
    void panelGone();
    void showState(const UnitState &state);
    void setAnswering(bool answering);
    void publishFader();
    void showBuses(int pgm, int pvw);
    void updateTally();
    OscFields fields(const UnitState &state, UnitState::FieldSet which) const;
    OscFields wholeState() const;
    bool eventFilter(QObject *watched, QEvent *event) override;

    LiveOptions m_options;
    OscRemote *m_osc = nullptr;
    TslTally *m_tally = nullptr;
    QTimer m_follow;
    QPointer<QWidget> m_panel;
    QPointer<UnitLink> m_link;
    std::unique_ptr<PanelRemote> m_remote;
    QPointer<NoReplyMark> m_mark;
    QList<QMetaObject::Connection> m_connections;
    UnitState m_state;
    // A unit that reports no state (the RVX3220): the buses as its panel shows them.
    int m_shownPgm = 0;
    int m_shownPvw = 0;
    bool m_answering = true;
    bool m_hasPreview = false;
};
