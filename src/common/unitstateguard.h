#pragma once

// Marks the time a unit's state record is being shown on a panel. The controls' change
// signals still send their commands then, as an operator's change would; but a warning about
// missing operator input must not open: a modal box raised by network data would stall a
// live panel until someone clicks it, and a stream of such replies would stack them.
class UnitStateGuard
{
public:
    UnitStateGuard() { ++s_depth; }
    ~UnitStateGuard() { --s_depth; }
    UnitStateGuard(const UnitStateGuard &) = delete;
    UnitStateGuard &operator=(const UnitStateGuard &) = delete;

    // True while a state record is being applied: operator warnings stay closed.
    static bool active() { return s_depth > 0; }

private:
    static inline int s_depth = 0;
};
