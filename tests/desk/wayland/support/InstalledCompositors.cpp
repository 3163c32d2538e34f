#include "tests/desk/wayland/support/InstalledCompositors.hpp"

#include "tests/desk/wayland/support/LabwcProcess.hpp"
#include "tests/desk/wayland/support/SwayProcess.hpp"

namespace vantrel::desk {

std::vector<CompositorKind> installedCompositors() {
    using Outputs = std::vector<PrivateOutput>;
    std::vector<CompositorKind> kinds{
        {"sway",
         [](const Outputs& outputs) {
             return std::make_unique<SwayProcess>(SwayOptions{.outputs = outputs, .configuration = {}, .files = {}});
         }},
        {"labwc", [](const Outputs& outputs) {
             return std::make_unique<LabwcProcess>(LabwcOptions{.outputs = outputs, .keyboard = {}, .autostart = {}});
         }}};
    std::erase_if(kinds, [](const CompositorKind& kind) { return !isInPath(kind.name); });
    return kinds;
}

}  // namespace vantrel::desk
