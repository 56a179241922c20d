#pragma once

#include <QList>
#include <QMap>
#include <QObject>
#include <QStringList>

class QAbstractButton;
class QAbstractSlider;
class QKeyEvent;
class QWidget;

// The keyboard of a front panel as an operator on air uses it: Space is CUT, Return or keypad
// Enter AUTO, a digit picks that key of the preview row and Shift+digit that key of the
// program row. A shortcut clicks the key itself, so the datagrams, lamps and waits are the
// click's. While a text or number field has the focus the keys are the field's, and Return
// there only commits the field. Esc does nothing: a panel is left by its own return or close
// key. The panel takes the focus when it is shown, and back from a field when a key or the
// background is clicked, so a shortcut works at once.
class PanelKeys : public QObject
{
    Q_OBJECT
public:
    struct Keys
    {
        QAbstractButton *cut = nullptr;
        QAbstractButton *autoKey = nullptr;
        // Digit n clicks the n-th key of the row; a row may be left empty.
        QList<QAbstractButton *> preview;
        QList<QAbstractButton *> program;
    };

    // Watches `panel`, which owns the object, and names each key's shortcut in its tooltip.
    PanelKeys(QWidget *panel, Keys keys);

    // Makes no push button under `root` (child dialogs included) a default or auto-default
    // button, so Return in a field never clicks a key.
    static void clearDefaultButtons(QWidget *root);
    // Whether `w` keeps the keys it is typed: line edits, spin boxes, editable combo boxes
    // and text edits.
    static bool typingField(const QWidget *w);

    // The keys by the stable names a remote control presses them by: "cut", "auto", "pgm1"..
    // and "pvw1".. from the rows (a panel with one row of inputs has only "pgm"), and whatever
    // else the panel names. A name the panel does not have gives null.
    static PanelKeys *of(const QWidget *panel);
    void nameKey(const QString &name, QAbstractButton *key);
    QAbstractButton *key(const QString &name) const;
    QStringList keyNames() const;
    int inputCount() const { return int(m_keys.program.size()); }
    // The T-bar, where the panel has one.
    void setFader(QAbstractSlider *fader) { m_fader = fader; }
    QAbstractSlider *fader() const { return m_fader; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QAbstractButton *keyFor(const QKeyEvent *press) const;
    bool panelKey(QKeyEvent *press);
    void watchButtons();
    void takeFocusFromField();

    QWidget *m_panel;
    Keys m_keys;
    QMap<QString, QAbstractButton *> m_named;
    QAbstractSlider *m_fader = nullptr;
};
