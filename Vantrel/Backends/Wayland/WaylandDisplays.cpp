#include "Vantrel/Backends/Wayland/WaylandDisplays.hpp"

#include <algorithm>

namespace vantrel::wayland {

CGError WaylandDisplays::CGGetActiveDisplayList(std::span<CGDirectDisplayID> activeDisplays,
                                                std::uint32_t& displayCount) {
    screen_.refreshLayout();
    const auto& displays = screen_.layout().displays;
    if (activeDisplays.empty()) {
        displayCount = static_cast<std::uint32_t>(displays.size());
        return 0;
    }
    const std::size_t count = std::min(displays.size(), activeDisplays.size());
    for (std::size_t index = 0; index < count; ++index) {
        activeDisplays[index] = displays[index].id;
    }
    displayCount = static_cast<std::uint32_t>(count);
    return 0;
}

CGRect WaylandDisplays::CGDisplayBounds(CGDirectDisplayID display) {
    const auto& displays = screen_.layout().displays;
    const auto found =
        std::find_if(displays.begin(), displays.end(),
                     [display](const backend::ActiveDisplay& candidate) { return candidate.id == display; });
    return found == displays.end() ? CGRect{} : found->bounds;
}

}  // namespace vantrel::wayland
