#include "panelkeys.h"

#include <QAbstractButton>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTextEdit>
#include <QWidget>

namespace {

// X11 key codes of the digit row 1-9: with Shift most layouts report a symbol, not a digit.
constexpr quint32 X11Digit1 = 10, X11Digit9 = 18;

void nameShortcut(QAbstractButton *key, const QString &text)
{
    if (key)
        key->setToolTip(text);
}

bool isReturn(int key)
{
    return key == Qt::Key_Return || key == Qt::Key_Enter;
}

} // namespace

PanelKeys::PanelKeys(QWidget *panel, Keys keys) : QObject(panel), m_panel(panel), m_keys(std::move(keys))
{
    nameShortcut(m_keys.cut, tr("CUT (Space)"));
    nameShortcut(m_keys.autoKey, tr("AUTO (Return or Enter)"));
    if (m_keys.preview == m_keys.program) {
        // One row of inputs (the RVX5350): a digit puts that input on air, with Shift or not.
        for (int i = 0; i < m_keys.program.size(); ++i)
            nameShortcut(m_keys.program.at(i), tr("Input %1 on air (%1 or Shift+%1)").arg(i + 1));
    } else {
        for (int i = 0; i < m_keys.preview.size(); ++i)
            nameShortcut(m_keys.preview.at(i), tr("Preview input %1 (%1)").arg(i + 1));
        for (int i = 0; i < m_keys.program.size(); ++i)
            nameShortcut(m_keys.program.at(i), tr("Program input %1 (Shift+%1)").arg(i + 1));
    }
    m_panel->setFocusPolicy(Qt::StrongFocus);
    m_panel->installEventFilter(this);
}

void PanelKeys::clearDefaultButtons(QWidget *root)
{
    for (QPushButton *key : root->findChildren<QPushButton *>()) {
        key->setAutoDefault(false);
        key->setDefault(false);
    }
}

bool PanelKeys::typingField(const QWidget *w)
{
    if (!w)
        return false;
    if (auto *combo = qobject_cast<const QComboBox *>(w))
        return combo->isEditable();
    return qobject_cast<const QLineEdit *>(w) || qobject_cast<const QAbstractSpinBox *>(w) ||
           qobject_cast<const QTextEdit *>(w) || qobject_cast<const QPlainTextEdit *>(w);
}

bool PanelKeys::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::Show:
        if (watched == m_panel) {
            // Before the dialog picks its first auto-default key as the default one.
            clearDefaultButtons(m_panel);
            watchButtons();
            m_panel->setFocus(Qt::OtherFocusReason);
        }
        return false;
    case QEvent::MouseButtonPress:
        // On the panel itself this is a click on its background that no child took.
        takeFocusFromField();
        return false;
    case QEvent::KeyPress:
        return watched == m_panel && panelKey(static_cast<QKeyEvent *>(event));
    default:
        return false;
    }
}

bool PanelKeys::panelKey(QKeyEvent *press)
{
    // Esc would reject the dialog and hide the panel without its way back.
    if (press->key() == Qt::Key_Escape)
        return true;
    if (typingField(QApplication::focusWidget())) {
        // The field has committed its text already; the dialog must not click a key for it.
        return isReturn(press->key());
    }
    QAbstractButton *key = keyFor(press);
    if (!key)
        return isReturn(press->key());
    // A held key is one press.
    if (!press->isAutoRepeat())
        key->click();
    return true;
}

QAbstractButton *PanelKeys::keyFor(const QKeyEvent *press) const
{
    if (press->key() == Qt::Key_Space)
        return m_keys.cut;
    if (isReturn(press->key()))
        return m_keys.autoKey;
    const bool shift = press->modifiers() & Qt::ShiftModifier;
    int digit = 0;
    if (press->key() >= Qt::Key_1 && press->key() <= Qt::Key_9)
        digit = press->key() - Qt::Key_0;
    else if (shift && press->nativeScanCode() >= X11Digit1 && press->nativeScanCode() <= X11Digit9)
        digit = int(press->nativeScanCode() - X11Digit1) + 1;
    const QList<QAbstractButton *> &row = shift ? m_keys.program : m_keys.preview;
    return digit >= 1 && digit <= row.size() ? row.at(digit - 1) : nullptr;
}

void PanelKeys::watchButtons()
{
    // Keys take no focus of their own, so a click on one would leave a field focused.
    // Installing again on a later show only moves this filter to the front.
    for (QAbstractButton *key : m_panel->findChildren<QAbstractButton *>())
        key->installEventFilter(this);
}

void PanelKeys::takeFocusFromField()
{
    QWidget *focus = QApplication::focusWidget();
    // A key of a child dialog belongs to another window; its focus stays there.
    if (focus && focus != m_panel && m_panel->isAncestorOf(focus))
        m_panel->setFocus(Qt::MouseFocusReason);
}

PanelKeys *PanelKeys::of(const QWidget *panel)
{
    return panel ? panel->findChild<PanelKeys *>(QString(), Qt::FindDirectChildrenOnly) : nullptr;
}

void PanelKeys::nameKey(const QString &name, QAbstractButton *key)
{
    if (key)
        m_named.insert(name, key);
}

QAbstractButton *PanelKeys::key(const QString &name) const
{
    if (name == QLatin1String("cut"))
        return m_keys.cut;
    if (name == QLatin1String("auto"))
        return m_keys.autoKey;
    for (const auto &[prefix, row] : {std::pair{QLatin1String("pgm"), &m_keys.program},
                                      std::pair{QLatin1String("pvw"), &m_keys.preview}}) {
        bool ok = false;
        const int place = name.mid(prefix.size()).toInt(&ok);
        // A key named otherwise ("pgm-bar") is one of the named keys.
        if (!name.startsWith(prefix) || !ok)
            continue;
        // One row of inputs is the programme row only.
        if (row == &m_keys.preview && m_keys.preview == m_keys.program)
            return nullptr;
        return place >= 1 && place <= row->size() ? row->at(place - 1) : nullptr;
    }
    return m_named.value(name);
}

QStringList PanelKeys::keyNames() const
{
    QStringList names;
    if (m_keys.cut)
        names << QStringLiteral("cut");
    if (m_keys.autoKey)
        names << QStringLiteral("auto");
    for (int i = 1; i <= m_keys.program.size(); ++i)
        names << QStringLiteral("pgm%1").arg(i);
    if (m_keys.preview != m_keys.program) {
        for (int i = 1; i <= m_keys.preview.size(); ++i)
            names << QStringLiteral("pvw%1").arg(i);
    }
    return names + m_named.keys();
}
