#include "tests/desk/wayland/support/InstalledCompositors.hpp"

#include "tests/desk/wayland/support/HyprlandProcess.hpp"
#ifdef VANTREL_KWIN
#include "tests/desk/wayland/support/KwinProcess.hpp"
#endif
#include "tests/desk/wayland/support/LabwcProcess.hpp"
#include "tests/desk/wayland/support/SwayControl.hpp"
#include "tests/desk/wayland/support/SwayProcess.hpp"
#include "tests/desk/wayland/support/WayfireProcess.hpp"

namespace vantrel::desk {

namespace {

/// A command that makes personsTrace(): the directory is in the compositor's environment.
constexpr auto leaveTrace = "touch $XDG_RUNTIME_DIR/persons";

}  // namespace

std::vector<CompositorKind> installedCompositors() {
    using Outputs = std::vector<PrivateOutput>;
    std::vector<CompositorKind> kinds{
        {.name = "sway",
         .start =
             [](const Outputs& outputs) {
                 return std::make_unique<SwayProcess>(SwayOptions{
                     .outputs = outputs, .configuration = "seat * pointer_constraint enable\n", .files = {}});
             },
         .reload =
             [](CompositorProcess& compositor) {
                 SwayControl(static_cast<SwayProcess&>(compositor).controlSocket()).run("reload");
             },
         .startWithHyperDTaken =
             [](const Outputs& outputs) {
                 return std::make_unique<SwayProcess>(SwayOptions{
                     .outputs = outputs,
                     .configuration = std::string("bindsym Ctrl+Mod1+Shift+Mod4+d exec ") + leaveTrace + "\n",
                     .files = {}});
             }},
        {.name = "labwc",
         .start =
             [](const Outputs& outputs) {
                 return std::make_unique<LabwcProcess>(
                     LabwcOptions{.outputs = outputs, .keyboard = {}, .autostart = {}});
             },
         .reload = [](CompositorProcess& compositor) { static_cast<LabwcProcess&>(compositor).reconfigure({}); },
         .bindsHotKeys = false}};
    std::erase_if(kinds, [](const CompositorKind& kind) { return !isInPath(kind.name); });
#ifdef VANTREL_HYPRLAND
    kinds.push_back(
        {.name = "hyprland",
         .start =
             [](const Outputs& outputs) {
                 return std::make_unique<HyprlandProcess>(HyprlandOptions{.outputs = outputs, .configuration = {}});
             },
         .reload = [](CompositorProcess& compositor) { static_cast<HyprlandProcess&>(compositor).reload(); },
         .startWithHyperDTaken =
             [](const Outputs& outputs) {
                 return std::make_unique<HyprlandProcess>(HyprlandOptions{
                     .outputs = outputs,
                     .configuration = std::string("hl.bind(\"CTRL + ALT + SHIFT + SUPER + D\", hl.dsp.exec_cmd(\"") +
                                      leaveTrace + "\"))\n"});
             },
         .isServedByProtocols = false,
         .tellsWithButtonHeld = true,
         .tellsWholePoints = true,
         .centresAfterUnplug = true});
#endif
#ifdef VANTREL_KWIN
    kinds.push_back(
        {.name = "kwin",
         .start = [](const Outputs& outputs) { return std::make_unique<KwinProcess>(KwinOptions{.outputs = outputs}); },
         .reload = [](CompositorProcess& /*compositor*/) {},
         .isServedByProtocols = false,
         .keepsPointerOnItsDisplay = false,
         .givesPictures = false,
         .tellsWithButtonHeld = true,
         .keepsWholePoints = KwinProcess::keepsWholePoints(),
         .isAwaitedWhenGone = true});
#endif
#ifdef VANTREL_WAYFIRE
    kinds.push_back(
        {.name = "wayfire",
         .start =
             [](const Outputs& outputs) {
                 return std::make_unique<WayfireProcess>(WayfireOptions{.outputs = outputs, .configuration = {}});
             },
         .reload = [](CompositorProcess& compositor) { static_cast<WayfireProcess&>(compositor).reload(); },
         .startWithHyperDTaken =
             [](const Outputs& outputs) {
                 return std::make_unique<WayfireProcess>(
                     WayfireOptions{.outputs = outputs,
                                    .configuration = std::string("[command]\n"
                                                                 "binding_mine = <ctrl> <alt> <shift> <super> KEY_D\n"
                                                                 "command_mine = ") +
                                                     leaveTrace + "\n"});
             },
         .tellsWithButtonHeld = true});
#endif
    return kinds;
}

std::vector<CompositorKind> compositorsWithHotKeys() {
    auto kinds = installedCompositors();
    std::erase_if(kinds, [](const CompositorKind& kind) { return !kind.bindsHotKeys; });
    return kinds;
}

std::vector<CompositorKind> compositorsWithBindings() {
    auto kinds = installedCompositors();
    std::erase_if(kinds, [](const CompositorKind& kind) { return !kind.startWithHyperDTaken; });
    return kinds;
}

std::vector<CompositorKind> compositorsWithPictures() {
    auto kinds = installedCompositors();
    std::erase_if(kinds, [](const CompositorKind& kind) { return !kind.givesPictures; });
    return kinds;
}

std::vector<CompositorKind> compositorsWithProtocols() {
    auto kinds = installedCompositors();
    std::erase_if(kinds, [](const CompositorKind& kind) { return !kind.isServedByProtocols; });
    return kinds;
}

}  // namespace vantrel::desk
