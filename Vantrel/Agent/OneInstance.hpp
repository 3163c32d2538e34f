#pragma once

#include <string>
#include <vector>

#include "Vantrel/Backends/X11/X11Platform.hpp"

namespace vantrel {

/// What a start of the program has come to.
enum class StartOutcome {
    isTheAgent,  ///< this process is now the display's agent
    handedOver,  ///< the display has an agent, which has taken the URLs
    noAnswer,    ///< the display has an agent, which does not answer
};

/// Makes this process the display's agent, or gives the URLs to the agent that it has; without URLs that agent is told
/// that the person started the program again.
StartOutcome becomeAgentOrHandOver(x11::X11Platform& display, const std::vector<std::string>& urls);

}  // namespace vantrel
