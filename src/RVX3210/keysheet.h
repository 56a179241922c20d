#pragma once

#include <QString>
#include <QWidget>

// Gives a key a new style sheet only when it differs from the one it has: Qt repolishes on
// every assignment, and a state reply re-asserts some thirty sheets that mostly stay the same.
inline void setKeySheet(QWidget *key, const QString &sheet)
{
    if (key->styleSheet() != sheet)
        key->setStyleSheet(sheet);
}
