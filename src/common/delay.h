#pragma once

// Waits `ms` milliseconds inside a panel action while the event loop keeps running, so a
// reply or a click is handled in the middle of the wait. The wait sleeps in a nested event
// loop instead of spinning a core.
void Delay_MSec(int ms);
