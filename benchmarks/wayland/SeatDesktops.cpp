#include <algorithm>
#include <utility>

#include "benchmarks/wayland/SeatJumpDesk.hpp"
#include "tests/desk/wayland/support/SwayDesk.hpp"
#ifdef VANTREL_KWIN
#include "tests/desk/wayland/support/KwinDesk.hpp"
#endif
#ifdef VANTREL_HYPRLAND
#include "tests/desk/wayland/support/HyprlandDesk.hpp"
#endif
#ifdef VANTREL_LABWC
#include "benchmarks/wayland/LabwcJumpDesk.hpp"
#endif

namespace vantrel::bench {

using namespace desk;

namespace {

std::unique_ptr<JumpDesk> startIn(std::unique_ptr<WaylandDesk> session, Carrier carrier,
                                  std::vector<std::string> floor) {
    auto desk = std::make_unique<SeatJumpDesk>(std::move(session));
    if (carrier == Carrier::vantrel) {
        desk->startAgent();
    } else {
        ChildProcessOptions options;
        options.arguments = std::move(floor);
        options.environment = desk->session().environment();
        desk->startCarrier(options);
    }
    return desk;
}

}  // namespace

std::vector<JumpDesktop> seatDesktops() {
    std::vector<JumpDesktop> found{{.name = "sway", .start = [](Carrier carrier) {
                                        return startIn(std::make_unique<SwayDesk>(), carrier,
                                                       {VANTREL_BENCH_SWAY_FLOOR, "-400", "0", "-200", "250"});
                                    }}};
    std::erase_if(found, [](const JumpDesktop& desktop) { return !isInPath(desktop.name); });
#ifdef VANTREL_KWIN
    found.push_back({.name = "KWin", .start = [](Carrier carrier) {
                         auto session = std::make_unique<KwinDesk>();
                         session->kwin().allow(VANTREL_BENCH_KWIN_FLOOR);
                         return startIn(std::move(session), carrier, {VANTREL_BENCH_KWIN_FLOOR});
                     }});
#endif
#ifdef VANTREL_HYPRLAND
    found.push_back({.name = "Hyprland", .start = [](Carrier carrier) {
                         auto session = std::make_unique<HyprlandDesk>();
                         const std::string socket = session->hyprland().instance() / ".socket.sock";
                         return startIn(std::move(session), carrier, {VANTREL_BENCH_HYPRLAND_FLOOR, socket});
                     }});
#endif
#ifdef VANTREL_LABWC
    found.push_back({.name = "labwc", .start = [](Carrier carrier) -> std::unique_ptr<JumpDesk> {
                         return std::make_unique<LabwcJumpDesk>(carrier);
                     }});
#endif
    return found;
}

}  // namespace vantrel::bench
