#pragma once

#include "styles8000.h"

#include <QSize>
#include <QString>
#include <QWidget>
#include <initializer_list>

// How the 8000-series panels dress their windows and place their sub-widgets.
namespace PanelSetup8000 {

// A frameless panel window with its title and sheet. `styledBackground`: a plain widget paints
// the sheet's background only when asked to.
inline void dressWindow(QWidget *panel, const char *title, const char *sheet, bool styledBackground)
{
    panel->setWindowTitle(QString::fromLatin1(title));
    panel->setWindowFlags(Qt::Dialog | Qt::FramelessWindowHint);
    if (styledBackground)
        panel->setAttribute(Qt::WA_StyledBackground);
    panel->setStyleSheet(QString::fromLatin1(sheet));
}

inline void style(std::initializer_list<QWidget *> widgets, const char *sheet)
{
    for (QWidget *widget : widgets)
        widget->setStyleSheet(QString::fromLatin1(sheet));
}

// A sub-widget in its place on the panel, named and titled, hidden until its key shows it.
inline void placeSub(QWidget *sub, const char *name, const char *title, QSize size)
{
    sub->setObjectName(QString::fromLatin1(name));
    sub->setWindowTitle(QString::fromLatin1(title));
    sub->setFixedSize(size);
    sub->hide();
}

// The PIP preview: a box of kind `Box` in the area that stands for the output picture.
template <class Box, class Link> Box *previewBox(QWidget *area, Link *link)
{
    area->setStyleSheet(QString::fromLatin1(Styles8000::PreviewArea));
    auto *box = new Box(link, area);
    box->setStyleSheet(QString::fromLatin1(Styles8000::PreviewBox));
    return box;
}

} // namespace PanelSetup8000
