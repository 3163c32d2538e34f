#include "tests/fakes/FakeDisplays.hpp"

#include <algorithm>

namespace vantrel::fake {

CGError FakeDisplays::CGGetActiveDisplayList(std::span<CGDirectDisplayID> activeDisplays, std::uint32_t& displayCount) {
    journal_.push_back("CGGetActiveDisplayList(" + std::to_string(activeDisplays.size()) + ")");
    const std::size_t count = activeDisplays.empty() ? layout.size() : std::min(layout.size(), activeDisplays.size());
    displayCount = static_cast<std::uint32_t>(count);
    if (activeDisplays.empty()) {
        if (afterCount) {
            afterCount();
        }
        return countStatus;
    }
    for (std::size_t index = 0; index < count; ++index) {
        activeDisplays[index] = layout[index].id;
    }
    displayCount = listedCount.value_or(displayCount);
    return listStatus;
}

CGRect FakeDisplays::CGDisplayBounds(CGDirectDisplayID display) {
    journal_.push_back("CGDisplayBounds(" + std::to_string(display) + ")");
    const auto found = std::find_if(layout.begin(), layout.end(),
                                    [display](const Display& candidate) { return candidate.id == display; });
    return found == layout.end() ? CGRect{} : found->bounds;
}

}  // namespace vantrel::fake
