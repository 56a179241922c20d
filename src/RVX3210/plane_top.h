#pragma once

#include <QWidget>

class QLabel;
class QPushButton;
class UnitControl;

// Title strip of the frameless RVX3210-family panels: logo, model name, close, minimise and
// maximise keys; dragging the strip moves the panel.
class Plane_Top : public QWidget
{
    Q_OBJECT
public:
    Plane_Top(QWidget *parent, UnitControl *link);

    void setDev_Child_Type(int code);

    QLabel *modelName() const { return m_name; }
    QPushButton *closeButton() const { return m_btnClose; }
    QPushButton *minButton() const { return m_btnMin; }
    QPushButton *maxButton() const { return m_btnMax; }

signals:
    void on_signals_setWinmax(bool max);
    void on_signals_setWinmin();
    void setWinmaxSignals();
    void setWinminSignals();

public slots:
    void on_btnclicked_max();
    void on_btnclicked_min();
    void on_btnclicked_max_for5310() {}
    void on_btnclicked_min_for5310() {}

private:
    void initPlan1();

    UnitControl *m_link = nullptr;
    QLabel *m_logo = nullptr;
    QLabel *m_name = nullptr;
    QPushButton *m_btnClose = nullptr;
    QPushButton *m_btnMin = nullptr;
    QPushButton *m_btnMax = nullptr;
    bool m_max = false;
};
