#pragma once

#include <QWidget>

class QHBoxLayout;
class QLabel;
class QPushButton;

// Title strip of the frameless 8000-series panels: logo, title, minimise and close. Dragging
// it moves the panel it heads; the close key ends the application, not only the panel.
class Top : public QWidget
{
    Q_OBJECT
public:
    explicit Top(QWidget *parent = nullptr);

    QPushButton *minKey() const { return m_min; }
    QPushButton *closeKey() const { return m_close; }
    QLabel *titleLabel() const { return m_title; }

    // Minimises the panel the strip heads (nothing when it heads none).
    void on_btnclicked_min();

private:
    // The strip's frame: one row, and the drag of the panel.
    void initPlan1();
    // What sits in the row: logo, title, a stretch, the two window keys.
    void initPlan2();

    QHBoxLayout *m_row = nullptr;
    QLabel *m_logo = nullptr;
    QLabel *m_title = nullptr;
    QPushButton *m_min = nullptr;
    QPushButton *m_close = nullptr;
};

// The bare logo strip the RVX5370 and RVX5350 panels show over their PIP preview.
class PIP_Title : public QWidget
{
    Q_OBJECT
public:
    explicit PIP_Title(QWidget *parent = nullptr);

    QLabel *logo() const { return m_logo; }

private:
    void init();

    QLabel *m_logo = nullptr;
};
