#pragma once

#include <QObject>

class QPushButton;
class RVX5ALL_workdata;

// The inset keys of the RVX5370 and RVX5350 panels: PIP, KEY (the RVX5370 only) and POP. One
// inset at a time is lit; pressing the lit one turns it off. PIP and POP tell the unit, KEY
// only lights.
class InsetKeys : public QObject
{
    Q_OBJECT
public:
    enum class Inset
    {
        None,
        Pip,
        Key,
        Pop
    };

    // `key` may be null.
    InsetKeys(QPushButton *pip, QPushButton *key, QPushButton *pop, RVX5ALL_workdata *link, QObject *parent);

    Inset inset() const { return m_inset; }
    // The unit's PIP byte: on lights PIP; off ends PIP but leaves another inset lit.
    void showPip(bool on);

signals:
    void insetChanged(InsetKeys::Inset inset);

private:
    void press(Inset inset);
    void show(Inset inset);

    QPushButton *m_pip;
    QPushButton *m_key;
    QPushButton *m_pop;
    RVX5ALL_workdata *m_link;
    Inset m_inset = Inset::None;
};
