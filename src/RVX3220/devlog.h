#pragma once

#include <QPoint>
#include <QWidget>

class QLabel;
class QPushButton;

// Title strip of the panel: logo and close key; dragging it moves the frameless window.
class Devlog : public QWidget
{
    Q_OBJECT
public:
    explicit Devlog(QWidget *parent = nullptr);

    QPushButton *closeButton() const { return m_close; }

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    QLabel *m_logo;
    QPushButton *m_close;
    bool m_dragging = false;
    QPoint m_lastGlobal;
};
