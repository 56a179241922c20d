#pragma once

#include <QWidget>
#include <cstdint>

class QButtonGroup;
class UnitControl;

// Effect keys: MIX, FADE and the four wipe directions, one lit at a time.
class Transitions : public QWidget
{
    Q_OBJECT
public:
    Transitions(QWidget *parent, UnitControl *link);

    QButtonGroup *buttonGroup() const { return m_group; }

public slots:
    void on_btnGrp_clicked(quint8 id);

private:
    UnitControl *m_link;
    QButtonGroup *m_group;
};
