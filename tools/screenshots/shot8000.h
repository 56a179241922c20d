#pragma once

// What the 8000-series screenshot programs share (they are run in the lab, see each file's
// head): the search window opening the first unit listed, keys clicked by name, a state read
// waited for and pictures saved.
#include "SwitcherData/rvx5all_workdata.h"
#include "app/showsearch.h"
#include "common/highdpi.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QListWidget>
#include <QLoggingCategory>
#include <QSignalSpy>
#include <QTest>
#include <functional>

namespace Shot8000 {

inline void click(QWidget *panel, const char *key)
{
    panel->findChild<QAbstractButton *>(QLatin1String(key))->click();
}

// DS, then the unit's report: the shots show what the unit reports back, not only what was
// pressed.
inline void readState(QWidget *panel, RVX5ALL_workdata *link)
{
    QSignalSpy state(link, &RVX5ALL_workdata::on_signals_3210Data);
    click(panel, "btn_ds");
    if (!state.wait(3000) && state.isEmpty())
        qWarning("the unit did not report its state");
}

// The panel's picture as `name` in `out`, after `settleMs` for the last changes to be drawn.
inline bool save(QWidget *panel, const QDir &out, const char *name, int settleMs = 300)
{
    if (settleMs > 0)
        QTest::qWait(settleMs);
    return panel->grab().save(out.filePath(QString::fromLatin1(name)));
}

// The program: opens the first unit the search lists as a `Panel` and hands it to `pictures`
// with the folder named on the command line (default: here). Exits 1 when no panel opened or
// a picture was not written. `setUp` sees the search window before anything opens.
template <class Panel>
int run(int argc, char **argv, const char *model, const std::function<bool(Panel *, const QDir &)> &pictures,
        const std::function<void(showsearch *)> &setUp = nullptr)
{
    enableHighDpi();
    QApplication app(argc, argv);
    QLoggingCategory::setFilterRules(QStringLiteral("*.debug=false"));
    const QDir out(argc > 1 ? QString::fromLocal8Bit(argv[1]) : QStringLiteral("."));
    showsearch window;
    if (setUp)
        setUp(&window);
    window.show();
    QListWidget *list = window.deviceList();
    if (!QTest::qWaitFor([list] { return list->count() > 0; }, 10000)) {
        qCritical("no unit listed");
        return 1;
    }
    list->setCurrentItem(list->item(0));
    emit list->itemDoubleClicked(list->item(0));
    Panel *panel = nullptr;
    for (QWidget *w : QApplication::topLevelWidgets())
        if (auto *p = qobject_cast<Panel *>(w))
            panel = p;
    if (!panel) {
        qCritical("no %s panel opened", model);
        return 1;
    }
    const bool ok = pictures(panel, out);
    delete panel;
    return ok ? 0 : 1;
}

} // namespace Shot8000
