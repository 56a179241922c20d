#pragma once

#include <QLabel>

// A red "NO REPLY" mark in the middle of a panel's title strip, shown while the unit has not
// answered a request for its state. It floats over the panel, so no panel's layout changes.
class NoReplyMark : public QLabel
{
    Q_OBJECT
public:
    explicit NoReplyMark(QWidget *panel);

    void setAnswering(bool answering);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void place();
};
