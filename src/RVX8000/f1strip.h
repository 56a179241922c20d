#pragma once

#include <QString>
#include <QWidget>

class QLabel;
class QPushButton;

// The RVX5370's F1 strip: six keys that flash when pressed (they tell the unit nothing) and
// the unit's address.
class F1Strip : public QWidget
{
    Q_OBJECT
public:
    static constexpr int KeyWaitMs = 200;

    explicit F1Strip(QWidget *parent = nullptr);

    void getDevIP(QString ip);
    QLabel *addressLabel() const { return m_ip; }

private:
    QLabel *m_ip = nullptr;
};
