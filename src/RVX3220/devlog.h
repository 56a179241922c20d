#pragma once

#include <QWidget>

class QLabel;
class QPushButton;
class RVX3220_workdata;

// Title strip of the panel: logo and close key; dragging it moves the frameless window.
class Devlog : public QWidget
{
    Q_OBJECT
public:
    // Built like the panel's other parts, with the link; the strip itself sends nothing.
    Devlog(QWidget *parent, RVX3220_workdata *link);

    QPushButton *closeButton() const { return m_close; }
    RVX3220_workdata *link() const { return m_link; }

private:
    RVX3220_workdata *m_link;
    QLabel *m_logo;
    QPushButton *m_close;
};
