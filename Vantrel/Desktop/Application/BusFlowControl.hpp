#pragma once

#include <gio/gio.h>

namespace vantrel::desktop {

/// Keeps a flood of messages from filling the loop, for as long as the connection lives. GLib serves in one turn all
/// that is ready at one priority, and its bus thread makes a source of every message as fast as they come: thousands of
/// calls for the menu would be answered before the next key press. This has that thread read on only when the loop has
/// served what was read; so a turn has a few messages, and the rest waits outside the process.
void controlBusFlow(GDBusConnection* bus);

}  // namespace vantrel::desktop
