#pragma once

#include <memory>
#include <string>

#include "Vantrel/Backends/X11/X11Platform.hpp"

namespace vantrel {

/// Connects to the display server that serves this session. Null, with one clear line in `error`, when there is none
/// that moves the pointer. X11 is the only kind so far; a further one is chosen here.
std::unique_ptr<x11::X11Platform> chooseDisplayPlatform(std::string& error);

}  // namespace vantrel
