#pragma once

#include <QWidget>
#include <cstdint>

class QButtonGroup;
class QLabel;
class UnitControl;

// One bus of six input keys, lit one at a time. The program and preview buses differ only
// in their lamp colour and the command a key sends.
class BusRow : public QWidget
{
    Q_OBJECT
public:
    QButtonGroup *buttonGroup() const { return m_group; }
    // Lit input, 0 when none.
    quint8 litInput() const { return m_lit; }

    void initbtnStyle();
    // Lights input id (1..6; any other id leaves all unlit) and stores it. No command.
    void setStyle(quint8 id);

public slots:
    void on_btnGrp_clicked(quint8 id);

signals:
    // The lit input changed (0: none), by a key or by the panel's own bus swap.
    void litChanged(quint8 input);

protected:
    BusRow(QWidget *parent, UnitControl *link, const char *caption, const char *const *lit);
    virtual void sendInput(quint8 id) = 0;
    // Lights key id (1..6) through the bus's own per-key setter.
    virtual void lightInput(quint8 id) = 0;
    // Shows key id (1..6) lit; the others keep their look.
    void lightKey(int id);

    UnitControl *m_link;

private:
    const char *const *m_litPictures;
    QButtonGroup *m_group;
    QLabel *m_caption;
    quint8 m_lit = 0;
};
