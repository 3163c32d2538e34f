#include "Vantrel/Backends/Common/DisplayList.hpp"

#include <algorithm>

namespace vantrel::backend {

CGError DisplayList::CGGetActiveDisplayList(std::span<CGDirectDisplayID> activeDisplays, std::uint32_t& displayCount) {
    refresh_();
    displayCount = static_cast<std::uint32_t>(layout_.displays.size());
    if (!activeDisplays.empty()) {
        displayCount = std::min(displayCount, static_cast<std::uint32_t>(activeDisplays.size()));
        std::transform(layout_.displays.begin(), layout_.displays.begin() + displayCount, activeDisplays.begin(),
                       [](const ActiveDisplay& display) { return display.id; });
    }
    return 0;
}

CGRect DisplayList::CGDisplayBounds(CGDirectDisplayID display) {
    const auto found = std::ranges::find(layout_.displays, display, &ActiveDisplay::id);
    return found == layout_.displays.end() ? CGRect{} : found->bounds;
}

}  // namespace vantrel::backend
