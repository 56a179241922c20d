#pragma once

// Keeps Qt's pixmap cache from holding the GUI thread for tens of milliseconds every 30 s.
//
// The cache remembers the name of every drawing it was handed until its 30 s flush, including
// drawings it dropped long ago. The style draws a styled key's face into the cache under a name
// that holds the key's palette, and every restyle gives the key a new palette, so a panel
// restyling hundreds of keys a second leaves some ten thousand dead names behind, and the flush
// that frees them at once took 40-70 ms. Sweeping once a second frees them a few hundred at a
// time. Idempotent; call it when a panel is made.
namespace PixmapCacheSweep {

constexpr int IntervalMs = 1000;

void install();

} // namespace PixmapCacheSweep
