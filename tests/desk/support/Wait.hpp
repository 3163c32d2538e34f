#pragma once

#include <chrono>
#include <functional>

namespace vantrel::desk {

using Duration = std::chrono::steady_clock::duration;

/// Generous, because it only ends tests that have failed anyway; a loaded machine must not reach it.
inline constexpr Duration generousDeadline = std::chrono::seconds(60);

/// Long enough for a wrong reaction to show; used only to see that nothing happens.
inline constexpr Duration quietTime = std::chrono::milliseconds(150);

/// Asks until the condition holds or the deadline passes. Returns whether it held.
bool waitUntil(const std::function<bool()>& condition, Duration deadline = generousDeadline);

}  // namespace vantrel::desk
