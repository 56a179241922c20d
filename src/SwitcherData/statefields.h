#pragma once

#include "unitmodel.h"
#include "unitstate.h"

#include <QJsonObject>
#include <QJsonValue>
#include <QString>
#include <QVector>

// A unit's state as kovactl prints it: named fields in record order.
struct StateField
{
    QString name;
    QJsonValue value; // a number, a name, or true/false for keys that are lit or not
};

// The fields the state carries (a record that stopped short gives only the fields it held),
// the 8000 series' serial first.
QVector<StateField> stateFields(const UnitState &state);

// The same fields as one JSON object, name to value: what `kovactl state --json` prints under
// "state" and what a station publishes on MQTT.
QJsonObject stateJson(const UnitState &state);

// A bus input as the state names it: its number, or "bar" for the colour bars.
QJsonValue busValue(int input);

// "mix", "fade" or "wipe" for the unit's transition code; empty for any other.
QString transitionName(int code);

// "on"/"off" for true/false, the number or the name otherwise.
QString fieldText(const QJsonValue &value);
