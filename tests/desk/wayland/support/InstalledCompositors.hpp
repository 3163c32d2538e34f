#pragma once

#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "tests/desk/wayland/support/CompositorProcess.hpp"

namespace vantrel::desk {

/// A kind of compositor, for tests of what holds in all that have the protocols.
struct CompositorKind {
    std::string name;
    std::function<std::unique_ptr<CompositorProcess>(const std::vector<PrivateOutput>& outputs)> start;
    /// Has one of this kind read its configuration again; a client finds it done after two rounds of asking.
    std::function<void(CompositorProcess& compositor)> reload;
};

inline std::ostream& operator<<(std::ostream& out, const CompositorKind& kind) {
    return out << kind.name;
}

/// Those that are installed; a release of Debian may lack some.
std::vector<CompositorKind> installedCompositors();

}  // namespace vantrel::desk
