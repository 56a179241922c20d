#include "elidedlabel.h"

#include <QResizeEvent>

ElidedLabel::ElidedLabel(QWidget *parent) : QLabel(parent)
{
    setWordWrap(false);
}

void ElidedLabel::setFullText(const QString &text)
{
    m_full = text;
    elide();
}

QSize ElidedLabel::minimumSizeHint() const
{
    // The height of one line; the width is whatever the layout can spare.
    return {0, QLabel::minimumSizeHint().height()};
}

void ElidedLabel::resizeEvent(QResizeEvent *event)
{
    QLabel::resizeEvent(event);
    if (event->size().width() != event->oldSize().width())
        elide();
}

void ElidedLabel::elide()
{
    // Until it is given a text the label keeps the one its form set.
    if (m_full.isNull())
        return;
    const int room = contentsRect().width() - 2 * margin() - (indent() > 0 ? indent() : 0);
    const QString shown = fontMetrics().elidedText(m_full, Qt::ElideMiddle, qMax(0, room));
    setText(shown);
    setToolTip(shown == m_full ? QString() : m_full);
}
