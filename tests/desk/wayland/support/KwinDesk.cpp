#include "tests/desk/wayland/support/KwinDesk.hpp"

namespace vantrel::desk {

KwinOptions KwinDesk::twoDisplays() {
    return {.outputs = twoOutputs()};
}

KwinDesk::KwinDesk(const KwinOptions& options)
    : WaylandDesk(std::make_unique<KwinProcess>(options), options.keyboardLayouts) {
    environment().set("XDG_CURRENT_DESKTOP", "KDE");
}

}  // namespace vantrel::desk
