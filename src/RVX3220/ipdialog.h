#pragma once

#include <QDialog>

class QKeyEvent;
class QLineEdit;
class QPushButton;
class UnitLink;

// Gives the unit a new IPv4 address. Later commands follow it to the new address.
class IPDialog : public QDialog
{
    Q_OBJECT
public:
    IPDialog(QWidget *parent, UnitLink *link);

    QLineEdit *addressEdit() const { return m_edit; }
    QPushButton *okButton() const { return m_ok; }
    QPushButton *closeButton() const { return m_close; }

public slots:
    void on_btnip_clicked();

protected:
    // Return and keypad Enter press "ok"; Esc closes the dialog.
    void keyPressEvent(QKeyEvent *event) override;

private:
    UnitLink *m_link;
    QLineEdit *m_edit;
    QPushButton *m_close;
    QPushButton *m_ok;
};
