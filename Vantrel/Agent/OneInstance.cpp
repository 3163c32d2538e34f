#include "Vantrel/Agent/OneInstance.hpp"

namespace vantrel {

StartOutcome becomeAgentOrHandOver(x11::X11Platform& display, const std::vector<std::string>& urls) {
    if (display.claimDisplay()) {
        return StartOutcome::isTheAgent;
    }
    if (display.sendToAgent(urls)) {
        return StartOutcome::handedOver;
    }
    // An agent that ended meanwhile has left its place.
    return display.claimDisplay() ? StartOutcome::isTheAgent : StartOutcome::noAnswer;
}

}  // namespace vantrel
