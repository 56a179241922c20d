#pragma once

#include <QWidget>

class QLabel;
class QPushButton;

// Title strip of the frameless 8000-series panels: logo, title, minimise and close. Dragging
// it moves the panel; the close key ends the application, not only the panel.
class PanelTitleBar : public QWidget
{
    Q_OBJECT
public:
    explicit PanelTitleBar(QWidget *parent = nullptr);

    QPushButton *minKey() const { return m_min; }
    QPushButton *closeKey() const { return m_close; }

    void on_btnclicked_min();

private:
    QLabel *m_logo = nullptr;
    QLabel *m_title = nullptr;
    QPushButton *m_min = nullptr;
    QPushButton *m_close = nullptr;
};
