#pragma once

#include <QPushButton>
#include <QString>

// A key that switches something on and off and shows it: it holds its state and the two
// sheets it is lit and unlit with, so no flag has to be kept beside it. The lamp can be shown
// apart from the state where the panel wants that: a blink's beat, or a neighbour's press
// putting out this key's lamp while the key itself stays on.
class LampKey : public QPushButton
{
    Q_OBJECT
public:
    explicit LampKey(QWidget *parent = nullptr);

    // The lit and unlit sheets; the key shows the one its state asks for.
    void setSheets(const QString &lit, const QString &unlit);
    void setSheets(const char *lit, const char *unlit);

    bool isLit() const { return m_lit; }
    // The state, and the lamp with it.
    void setLit(bool lit);
    // Flips the state and the lamp; returns the new state.
    bool toggle();
    // The state alone; the lamp stays as it is (a blinking key's lamp follows its beat).
    void setLitUnshown(bool lit);
    // The lamp alone; the state stays as it is.
    void showLamp(bool lit);

private:
    QString m_litSheet;
    QString m_unlitSheet;
    bool m_lit = false;
};
