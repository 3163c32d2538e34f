#pragma once

#include <glib.h>

namespace vantrel {

/// Has the main loop do all that it can do at once.
inline void takeTurns() {
    while (g_main_context_iteration(nullptr, FALSE) != FALSE) {
    }
}

}  // namespace vantrel
