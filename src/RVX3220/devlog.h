#pragma once

#include <QWidget>

class QLabel;
class QPushButton;
class UnitControl;

// Title strip of the panel: logo and close key; dragging it moves the frameless window.
class Devlog : public QWidget
{
    Q_OBJECT
public:
    // Built like the panel's other parts, with the link; the strip itself sends nothing.
    Devlog(QWidget *parent, UnitControl *link);

    QPushButton *closeButton() const { return m_close; }
    UnitControl *link() const { return m_link; }

private:
    UnitControl *m_link;
    QLabel *m_logo;
    QPushButton *m_close;
};
