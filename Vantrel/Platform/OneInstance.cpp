#include "Vantrel/Platform/OneInstance.hpp"

namespace vantrel {

StartOutcome becomeAgentOrHandOver(x11::X11Platform& display, const std::vector<std::string>& urls) {
    // An agent that ends between the two steps leaves its place free.
    constexpr int attempts = 2;
    for (int attempt = 0; attempt < attempts; ++attempt) {
        if (display.claimDisplay()) {
            return StartOutcome::isTheAgent;
        }
        if (display.sendToAgent(urls)) {
            return StartOutcome::handedOver;
        }
    }
    return StartOutcome::noAnswer;
}

}  // namespace vantrel
