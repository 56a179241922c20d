#pragma once

#include "unitmodel.h"

class QObject;
class UnitLink;

// A new, unbound link object of the family's kind (the one its panel makes), set to the family.
UnitLink *createUnitLink(Family family, QObject *parent = nullptr);
