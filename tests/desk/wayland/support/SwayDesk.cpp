#include "tests/desk/wayland/support/SwayDesk.hpp"

namespace vantrel::desk {

SwayOptions SwayDesk::twoDisplays(const std::string& configuration) {
    return {.outputs = twoOutputs(), .configuration = configuration, .files = {}};
}

SwayDesk::SwayDesk(const SwayOptions& options, const std::string& keyboardLayouts, const std::string& keyboardOptions)
    : WaylandDesk(std::make_unique<SwayProcess>(options), keyboardLayouts, keyboardOptions),
      control_(sway().controlSocket()) {
    environment().set("SWAYSOCK", sway().controlSocket().native());
}

}  // namespace vantrel::desk
