#include "rvx3410log.h"

Q_LOGGING_CATEGORY(lcRvx3410, "kova.panel.rvx3410", QtInfoMsg)
