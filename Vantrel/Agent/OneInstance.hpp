#pragma once

#include <string>
#include <vector>

#include "Vantrel/Platform/DisplaySession.hpp"

namespace vantrel {

/// What a start of the program has come to.
enum class StartOutcome {
    isTheAgent,  ///< this process is now the session's agent
    handedOver,  ///< the session has an agent, which has taken the URLs
    noAnswer,    ///< the session has an agent, which does not answer
};

/// Makes this process the session's agent, or gives the URLs to the agent that it has; without URLs that agent is told
/// that the person started the program again.
StartOutcome becomeAgentOrHandOver(DisplaySession& session, const std::vector<std::string>& urls);

}  // namespace vantrel
