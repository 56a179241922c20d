#pragma once

#include <QLoggingCategory>

// What the hub does, for the journal: units found and lost, commands refused, the broker.
Q_DECLARE_LOGGING_CATEGORY(lcHub)
