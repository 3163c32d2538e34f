#pragma once

#include <glib.h>

namespace vantrel::desktop {

// What the main loop serves first, in one place. The display server's events stand at G_PRIORITY_HIGH. A key press read
// from them leaves a task in the main queue, which stands before everything else, so that the pointer moves on the very
// next turn. The bus, the menu and delayed work keep GLib's default.

/// Tasks of the main queue.
inline constexpr int mainQueuePriority = G_PRIORITY_HIGH - 10;
/// Requests to end: with the display server's events, so that no flood of messages holds up a logout.
inline constexpr int terminationPriority = G_PRIORITY_HIGH;
/// Timers: after key presses, before a flood of messages.
inline constexpr int timerPriority = G_PRIORITY_HIGH + 10;
/// Opened URLs, one in a turn: after all that a person waits for, before idle work.
inline constexpr int urlPriority = G_PRIORITY_HIGH_IDLE;

}  // namespace vantrel::desktop
