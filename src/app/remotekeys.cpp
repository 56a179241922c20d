#include "remotekeys.h"

#include "RVX3210/below_widget.h"
#include "RVX3210/middle_widget.h"
#include "RVX3210/qslider_right.h"
#include "RVX3210/rvx3210ui.h"
#include "RVX3210/upper_widget.h"
#include "RVX3220/rvx3220ui.h"
#include "RVX3410/rvx3410ui.h"
#include "RVX3410/rvx_3410_middle_widget.h"
#include "RVX3410/rvx_3410_upper_widget.h"
#include "common/panelkeys.h"

#include <QAbstractButton>
#include <QButtonGroup>
#include <QSlider>

namespace {

// The transition keys of the RVX3210 family by their ids: MIX, FADE, then the wipes.
const char *const Transitions3210[] = {"mix", "fade", "wipe-up", "wipe-down", "wipe-left", "wipe-right"};

void nameRows3210(PanelKeys *keys, Rvx3210PanelFrame *frame, Upper_Widget *upper, Middle_widget *middle)
{
    keys->setFader(frame->tbar()->slider());
    keys->nameKey(QStringLiteral("ftb"), upper->btnFTB());
    keys->nameKey(QStringLiteral("f1"), upper->btnF1());
    keys->nameKey(QStringLiteral("f2"), upper->btnF2());
    keys->nameKey(QStringLiteral("f3"), upper->btnF3());
    keys->nameKey(QStringLiteral("f7"), upper->btnF7());
    keys->nameKey(QStringLiteral("ds"), upper->btnRead());
    keys->nameKey(QStringLiteral("afv"), middle->btnAFV());
    keys->nameKey(QStringLiteral("audio-mix"), middle->btnMIX());
    keys->nameKey(QStringLiteral("pip"), middle->btnPIP());
    keys->nameKey(QStringLiteral("still"), middle->btnSTILL());
    for (int id = 1; id <= 6; ++id)
        keys->nameKey(QLatin1String(Transitions3210[id - 1]), middle->transitions()->button(id));
    const QList<QAbstractButton *> rates = frame->lowerRow()->rateGroup()->buttons();
    for (int i = 0; i < rates.size(); ++i)
        keys->nameKey(QStringLiteral("rate%1").arg(i + 1), rates.at(i));
}

// Keys of the settings and format strips embedded in a panel are theirs, not the front panel's.
bool inSubPanel(const QWidget *key, const QWidget *panel)
{
    for (const QWidget *w = key->parentWidget(); w && w != panel; w = w->parentWidget()) {
        if (w->objectName() == QLatin1String("setWidget") || w->objectName() == QLatin1String("f1Widget") ||
            w->inherits("Resobody") || w->inherits("PIP_Body"))
            return true;
    }
    return false;
}

// The Designer-built panels name their keys "btn_<name>": the remote uses <name>, with '-'
// for '_', and a few keys also under the name every panel uses for what they do.
void name8000(PanelKeys *keys, QWidget *panel, PanelKind kind)
{
    for (QAbstractButton *key : panel->findChildren<QAbstractButton *>()) {
        const QString object = key->objectName();
        if (!object.startsWith(QLatin1String("btn_")) || inSubPanel(key, panel))
            continue;
        QString name = object.mid(4).replace(QLatin1Char('_'), QLatin1Char('-'));
        if (name == QLatin1String("mix"))
            name = QStringLiteral("audio-mix"); // the RVX5310's audio MIX beside AFV
        else if (name == QLatin1String("mix-t"))
            name = QStringLiteral("mix");
        else if (name == QLatin1String("rtmp"))
            keys->nameKey(QStringLiteral("stream"), key);
        else if (name.startsWith(QLatin1String("in")) && kind == PanelKind::Rvx5350)
            continue; // the RVX5350's inputs are its programme row
        keys->nameKey(name, key);
    }
    if (kind == PanelKind::Rvx5310) {
        // F1 streams and F2 is the POP key on this panel.
        keys->nameKey(QStringLiteral("stream"), keys->key(QStringLiteral("f1")));
        keys->nameKey(QStringLiteral("pop"), keys->key(QStringLiteral("f2")));
    }
    keys->setFader(panel->findChild<QSlider *>(QStringLiteral("slider_video")));
}

} // namespace

void nameRemoteKeys(PanelKind kind, QWidget *panel)
{
    PanelKeys *keys = PanelKeys::of(panel);
    if (!keys)
        return;
    switch (kind) {
    case PanelKind::Rvx3210: {
        auto *p = static_cast<RVX3210UI *>(panel);
        nameRows3210(keys, p, p->upperRow(), p->middleRow());
        return;
    }
    case PanelKind::Rvx3410: {
        auto *p = static_cast<RVX3410UI *>(panel);
        RVX_3410_Upper_Widget *upper = p->upperRow();
        nameRows3210(keys, p, upper, p->middleRow());
        keys->nameKey(QStringLiteral("mute"), upper->btnF3());
        const std::pair<const char *, QAbstractButton *> named[] = {
            {"f4", upper->btnF4()},
            {"rec", upper->btnF4()},
            {"f5", upper->btnF5()},
            {"pause", upper->btnF5()},
            {"f6", upper->btnF6()},
            {"stream", upper->btnF6()},
            {"f8", upper->btnF8()},
            {"rotate", upper->btnF8()},
            {"menu-up", p->middleRow()->btnMenuUp()},
            {"menu", p->middleRow()->btnMenu()},
            {"menu-down", p->middleRow()->btnMenuDown()}};
        for (const auto &[name, key] : named)
            keys->nameKey(QLatin1String(name), key);
        return;
    }
    case PanelKind::Rvx3220: {
        auto *p = static_cast<RVX3220UI *>(panel);
        keys->setFader(p->tbar());
        keys->nameKey(QStringLiteral("pip"), p->pipButton());
        keys->nameKey(QStringLiteral("pop"), p->popButton());
        return;
    }
    case PanelKind::Rvx5310:
    case PanelKind::Rvx5370:
    case PanelKind::Rvx5350:
        return name8000(keys, panel, kind);
    case PanelKind::Rvx5120:
        return;
    }
}
