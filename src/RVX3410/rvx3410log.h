#pragma once

#include <QLoggingCategory>

// Developer log of the RVX3410 panel ("kova.panel.rvx3410").
Q_DECLARE_LOGGING_CATEGORY(lcRvx3410)
