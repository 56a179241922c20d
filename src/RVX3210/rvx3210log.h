#pragma once

#include <QLoggingCategory>

// Developer log of the RVX3210-family panels ("kova.panel.rvx3210").
Q_DECLARE_LOGGING_CATEGORY(lcRvx3210)
