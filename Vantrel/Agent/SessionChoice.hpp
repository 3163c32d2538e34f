#pragma once

#include <memory>
#include <string>

#include "Vantrel/Platform/DisplaySession.hpp"

namespace vantrel {

/// Connects to the display server that serves this session. Null, with one clear line in `error`, when there is none
/// that moves the pointer. X11 is the only kind so far; a further one is chosen here.
std::unique_ptr<DisplaySession> chooseDisplaySession(std::string& error);

}  // namespace vantrel
