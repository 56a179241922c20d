#pragma once

#include <cstdint>

// Child type of the unit opened last; set by the search window before each panel opens.
extern uint8_t GLOBAL_DEV_CHILD_TYPE;
