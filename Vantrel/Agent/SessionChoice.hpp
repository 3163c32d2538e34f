#pragma once

#include <memory>
#include <string>
#include <vector>

#include "Vantrel/Platform/DisplaySession.hpp"

namespace vantrel {

/// Connects to the display server that serves this session: the Wayland compositor that WAYLAND_DISPLAY names, and
/// where that is not set or nobody listens there any more, the X server that DISPLAY names. Null, with one clear line
/// in `error`, when there is none that lets its pointer be moved.
std::unique_ptr<DisplaySession> chooseDisplaySession(std::string& error);

/// The same after the former session of that windowing system was interrupted: waits ten seconds for it to come back.
std::unique_ptr<DisplaySession> awaitDisplaySession(const std::string& windowingSystem, std::string& error);

/// Hands the URLs to the agent of the Wayland session that the environment names, without asking the compositor
/// anything: where a person's own binding starts the program, each press waits for that. False when that session has no
/// agent that answers, and in other sessions.
bool handOverUnconnected(const std::vector<std::string>& urls);

}  // namespace vantrel
