#include "noreplymark.h"

#include <QEvent>

namespace {
const char *const MarkSheet = "QLabel{background:#c81e1e;color:#ffffff;font-weight:bold;"
                              "border-radius:3px;padding:2px 8px;}";
constexpr int Top = 5;
} // namespace

NoReplyMark::NoReplyMark(QWidget *panel) : QLabel(QStringLiteral("NO REPLY"), panel)
{
    setObjectName(QStringLiteral("noReplyMark"));
    setStyleSheet(QString::fromLatin1(MarkSheet));
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setToolTip(tr("The unit did not answer the last request for its state within a second."));
    hide();
    panel->installEventFilter(this);
}

void NoReplyMark::setAnswering(bool answering)
{
    if (answering) {
        hide();
        return;
    }
    adjustSize();
    place();
    raise();
    show();
}

bool NoReplyMark::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == parent() && event->type() == QEvent::Resize)
        place();
    return QLabel::eventFilter(watched, event);
}

void NoReplyMark::place()
{
    if (QWidget *panel = parentWidget())
        move((panel->width() - width()) / 2, Top);
}
