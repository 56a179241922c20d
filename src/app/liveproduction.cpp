#include "liveproduction.h"

#include "RVX3220/busrow.h"
#include "RVX3220/pgm.h"
#include "RVX3220/pvw.h"
#include "RVX3220/rvx3220ui.h"
#include "SwitcherData/reportinglink.h"
#include "SwitcherData/unitlink.h"
#include "common/noreplymark.h"
#include "common/panelkeys.h"
#include "live/tsltally.h"
#include "panelremote.h"
#include "remotekeys.h"

#include <QAbstractSlider>
#include <QEvent>
#include <QHostAddress>
#include <QLoggingCategory>
#include <QWidget>

Q_LOGGING_CATEGORY(lcLive, "kova.live")

namespace {
QVariant fieldValue(const UnitState &s, UnitState::Field f)
{
    switch (f) {
    case UnitState::Transition:
        switch (s.transition()) {
        case 1:
            return QStringLiteral("mix");
        case 2:
            return QStringLiteral("fade");
        case 4:
            return QStringLiteral("wipe");
        default:
            return s.transition();
        }
    case UnitState::Serial:
        return QString::fromLatin1(s.serial().toHex());
    default:
        return s.value(f);
    }
}
} // namespace

LiveProduction::LiveProduction(const LiveOptions &options, QObject *parent)
    : QObject(parent), m_options(options)
{
    m_follow.setInterval(m_options.followMs);
    connect(&m_follow, &QTimer::timeout, this, [this] {
        // A family that cannot be asked for its state is not polled.
        if (!m_link || !m_link->readState())
            m_follow.stop();
    });
}

LiveProduction::~LiveProduction()
{
    if (m_osc)
        m_osc->setTarget(nullptr);
}

bool LiveProduction::isActive() const
{
    return m_options.oscPort != 0 || !m_options.tslTargets.isEmpty() || m_options.followMs > 0;
}

bool LiveProduction::start(QString *error)
{
    if (m_options.oscPort) {
        m_osc = new OscRemote(this);
        if (!m_osc->listen(QHostAddress(m_options.oscBind), m_options.oscPort, error))
            return false;
        m_osc->setWholeState(wholeState());
        qCInfo(lcLive) << "OSC remote on" << m_options.oscBind << m_options.oscPort;
    }
    if (!m_options.tslTargets.isEmpty()) {
        QList<TslTarget> targets;
        for (const QString &text : m_options.tslTargets) {
            if (const std::optional<TslTarget> t = TslTarget::fromText(text))
                targets << *t;
        }
        m_tally = new TslTally(this);
        m_tally->setTargets(targets);
    }
    return true;
}

void LiveProduction::panelOpened(QWidget *panel, UnitLink *link, PanelKind kind, uint8_t childType)
{
    if (!isActive() || !panel || !link)
        return;
    panelGone();
    nameRemoteKeys(kind, panel);
    m_panel = panel;
    m_link = link;
    m_state = UnitState();
    m_answering = true;
    m_remote = std::make_unique<PanelRemote>(panel, link, UnitModels::modelName(childType));
    const PanelKeys *keys = PanelKeys::of(panel);
    m_hasPreview = keys && keys->key(QStringLiteral("pvw1"));
    panel->installEventFilter(this);
    // Hidden first where a panel is left; gone at once where a panel is simply deleted.
    m_connections << connect(panel, &QObject::destroyed, this, &LiveProduction::panelGone);

    if (auto *reporting = qobject_cast<ReportingLink *>(link)) {
        m_connections << connect(reporting, &ReportingLink::stateReported, this, &LiveProduction::showState);
        m_connections << connect(reporting->watch(), &LinkWatch::answeringChanged, this,
                                 &LiveProduction::setAnswering);
        m_mark = new NoReplyMark(panel);
        m_answering = reporting->watch()->isAnswering();
        m_mark->setAnswering(m_answering);
    }
    if (kind == PanelKind::Rvx3220) {
        // Its unit reports nothing: tally and subscribers follow the buses the panel shows.
        auto *p = static_cast<RVX3220UI *>(panel);
        m_connections << connect(p->pgm(), &BusRow::litChanged, this,
                                 [this](quint8 input) { showBuses(input, m_shownPvw); });
        m_connections << connect(p->pvw(), &BusRow::litChanged, this,
                                 [this](quint8 input) { showBuses(m_shownPgm, input); });
        m_shownPgm = p->pgm()->litInput();
        m_shownPvw = p->pvw()->litInput();
    }
    if (keys && keys->fader())
        m_connections << connect(keys->fader(), &QAbstractSlider::valueChanged, this,
                                 &LiveProduction::publishFader);
    if (m_osc) {
        m_osc->setTarget(m_remote.get());
        m_osc->setWholeState(wholeState());
        m_osc->publish(wholeState());
    }
    if (m_tally)
        m_tally->setInputs(m_remote->inputLabels());
    updateTally();
    if (m_options.followMs > 0)
        m_follow.start();
}

void LiveProduction::panelGone()
{
    m_follow.stop();
    for (const QMetaObject::Connection &c : qAsConst(m_connections))
        disconnect(c);
    m_connections.clear();
    if (m_panel)
        m_panel->removeEventFilter(this);
    delete m_mark;
    if (m_osc)
        m_osc->setTarget(nullptr);
    m_remote.reset();
    m_shownPgm = m_shownPvw = 0;
    m_panel = nullptr;
    m_link = nullptr;
    m_state = UnitState();
    if (m_osc) {
        m_osc->setWholeState(wholeState());
        m_osc->publish({{QStringLiteral("link"), 0}});
    }
    updateTally();
}

bool LiveProduction::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_panel && (event->type() == QEvent::Hide || event->type() == QEvent::Close))
        panelGone();
    return QObject::eventFilter(watched, event);
}

void LiveProduction::showState(const UnitState &state)
{
    const UnitState::FieldSet changed = state.changedFrom(m_state);
    m_state = state;
    if (m_osc) {
        m_osc->setWholeState(wholeState());
        if (changed.any())
            m_osc->publish(fields(state, changed));
        m_osc->stateArrived();
    }
    updateTally();
}

void LiveProduction::setAnswering(bool answering)
{
    m_answering = answering;
    if (m_mark)
        m_mark->setAnswering(answering);
    if (m_osc) {
        m_osc->setWholeState(wholeState());
        m_osc->publish({{QStringLiteral("link"), answering ? 1 : 0}});
    }
    updateTally();
}

void LiveProduction::showBuses(int pgm, int pvw)
{
    OscFields changed;
    if (pgm != m_shownPgm)
        changed.append({QStringLiteral("pgm"), pgm});
    if (pvw != m_shownPvw)
        changed.append({QStringLiteral("pvw"), pvw});
    m_shownPgm = pgm;
    m_shownPvw = pvw;
    if (m_osc && !changed.isEmpty())
        m_osc->publish(changed);
    updateTally();
}

void LiveProduction::publishFader()
{
    if (m_osc && m_remote)
        m_osc->publish({{QStringLiteral("fader"), m_remote->faderPosition()}});
}

void LiveProduction::updateTally()
{
    if (!m_tally)
        return;
    const bool live = m_panel && m_answering;
    const int pgm = m_state.has(UnitState::Pgm) ? m_state.pgm() : m_shownPgm;
    const int pvw = m_state.has(UnitState::Pvw) ? m_state.pvw() : m_shownPvw;
    m_tally->setTally(live ? pgm : 0, live && m_hasPreview ? pvw : 0);
    m_tally->setLive(live);
}

OscFields LiveProduction::fields(const UnitState &state, UnitState::FieldSet which) const
{
    OscFields out;
    for (int f = 0; f < UnitState::FieldCount; ++f) {
        const auto field = UnitState::Field(f);
        if (which.test(size_t(f)) && state.has(field))
            out.append({QLatin1String(UnitState::fieldName(field)), fieldValue(state, field)});
    }
    return out;
}

OscFields LiveProduction::wholeState() const
{
    OscFields out;
    out.append({QStringLiteral("model"), m_remote ? m_remote->modelName() : QString()});
    out.append({QStringLiteral("unit"), m_remote ? m_remote->unitAddress() : QString()});
    out.append({QStringLiteral("link"), m_panel && m_answering ? 1 : 0});
    if (m_remote && m_remote->faderPosition() >= 0)
        out.append({QStringLiteral("fader"), m_remote->faderPosition()});
    if (m_shownPgm || m_shownPvw)
        out.append({{QStringLiteral("pgm"), m_shownPgm}, {QStringLiteral("pvw"), m_shownPvw}});
    return out + fields(m_state, m_state.fields());
}
