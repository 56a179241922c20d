#pragma once

#include <QPoint>
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
    Devlog(QWidget *parent, RVX3220_workdata *model);

    QPushButton *closeButton() const { return m_close; }
    RVX3220_workdata *model() const { return m_model; }

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    RVX3220_workdata *m_model;
    QLabel *m_logo;
    QPushButton *m_close;
    bool m_dragging = false;
    QPoint m_lastGlobal;
};
