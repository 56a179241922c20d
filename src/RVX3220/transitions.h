#pragma once

#include <QWidget>
#include <cstdint>

class QButtonGroup;
class RVX3220_workdata;

// Effect keys: MIX, FADE and the four wipe directions, one lit at a time.
class Transitions : public QWidget
{
    Q_OBJECT
public:
    Transitions(QWidget *parent, RVX3220_workdata *link);

    QButtonGroup *buttonGroup() const { return m_group; }

public slots:
    void on_btnGrp_clicked(quint8 id);

private:
    RVX3220_workdata *m_link;
    QButtonGroup *m_group;
};
