#include "rvx3210log.h"

Q_LOGGING_CATEGORY(lcRvx3210, "kova.panel.rvx3210", QtInfoMsg)
