#include "Vantrel/Agent/OneInstance.hpp"

namespace vantrel {

StartOutcome becomeAgentOrHandOver(DisplaySession& session, const std::vector<std::string>& urls) {
    if (session.claim()) {
        return StartOutcome::isTheAgent;
    }
    if (session.handOver(urls)) {
        return StartOutcome::handedOver;
    }
    // An agent that ended meanwhile has left its place.
    return session.claim() ? StartOutcome::isTheAgent : StartOutcome::noAnswer;
}

}  // namespace vantrel
