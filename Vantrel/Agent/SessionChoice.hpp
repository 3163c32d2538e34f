#pragma once

#include <memory>
#include <string>

#include "Vantrel/Platform/DisplaySession.hpp"

namespace vantrel {

/// Connects to the display server that serves this session: the Wayland compositor that WAYLAND_DISPLAY names, and
/// where that is not set or nobody listens there any more, the X server that DISPLAY names. Null, with one clear line
/// in `error`, when there is none that lets its pointer be moved.
std::unique_ptr<DisplaySession> chooseDisplaySession(std::string& error);

/// The same after the former session of that windowing system was interrupted: waits ten seconds for it to come back.
std::unique_ptr<DisplaySession> awaitDisplaySession(const std::string& windowingSystem, std::string& error);

}  // namespace vantrel
