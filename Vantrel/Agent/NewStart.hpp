#pragma once

#include <optional>
#include <string>

namespace vantrel {

/// Replaces this process by a new start of its program, which waits for the session of that windowing system where it
/// is not there yet. What supervises the process, as systemd does, sees it go on. Returns only if that fails: the
/// reason is in errno.
void startAnew(const std::string& windowingSystem);

/// The windowing system that such a start waits for; none at an ordinary start. To be asked once, before other threads
/// run.
std::optional<std::string> awaitedWindowingSystem();

}  // namespace vantrel
