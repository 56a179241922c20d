#pragma once

#include "SwitcherData/unitmodel.h"

#include <QByteArray>
#include <QJsonValue>
#include <QString>
#include <QVector>
#include <cstdint>

// A unit's state record read into named fields, as the family's panel reads it.
struct StateField
{
    QString name;
    QJsonValue value; // a number, a name, or true/false for keys that are lit or not
};

// Fields of the record the state reply carried (a record that stops short gives only the
// fields it holds); `serial` is the 8000 series' serial piece, empty when the reply had none.
QVector<StateField> decodeState(Family family, const QByteArray &record, const QByteArray &serial);

// "on"/"off" for true/false, the number or the name otherwise.
QString fieldText(const QJsonValue &value);
