#pragma once

#include <cmath>
#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "tests/desk/wayland/support/CompositorProcess.hpp"
#include "tests/desk/wayland/support/SeatClient.hpp"

namespace vantrel::desk {

/// A kind of compositor, for tests of what holds in all that have the protocols.
struct CompositorKind {
    std::string name;
    std::function<std::unique_ptr<CompositorProcess>(const std::vector<PrivateOutput>& outputs)> start;
    /// Has one of this kind read its configuration again; a client finds it done after two rounds of asking.
    std::function<void(CompositorProcess& compositor)> reload;
    bool bindsHotKeys = true;  ///< whether programs can bind keys
    /// Starts one in which the person has bound Hyper + D to what makes personsTrace(); none where hot keys are no
    /// bindings of the compositor's, and the person's keyboard has no map of its own.
    std::function<std::unique_ptr<CompositorProcess>(const std::vector<PrivateOutput>& outputs)> startWithHyperDTaken =
        nullptr;
    /// Whether it can be served by the protocols alone. Hyprland does not turn a virtual pointer's places on a display
    /// that is turned; KWin has none.
    bool isServedByProtocols = true;
    bool keepsPointerOnItsDisplay = true;  ///< when displays are moved
    bool givesPictures = true;             ///< of its displays, to those who look at messages
    /// Whether it tells where the pointer is also while a button is held.
    bool tellsWithButtonHeld = false;
    bool tellsWholePoints = false;    ///< without the fraction
    bool keepsWholePoints = false;    ///< puts the pointer on such alone
    bool isAwaitedWhenGone = false;   ///< because the session goes on, with another of its kind
    bool centresAfterUnplug = false;  ///< puts the pointer into the middle of the display that is left

    /// Where the pointer is after it was sent there.
    [[nodiscard]] LayoutPoint kept(LayoutPoint place) const {
        return keepsWholePoints ? LayoutPoint{.x = std::floor(place.x + 0.5), .y = std::floor(place.y + 0.5)} : place;
    }

    /// Where the agent finds a pointer that rests there.
    [[nodiscard]] LayoutPoint told(LayoutPoint place) const {
        return tellsWholePoints ? LayoutPoint{.x = std::floor(place.x), .y = std::floor(place.y)} : place;
    }
};

inline std::ostream& operator<<(std::ostream& out, const CompositorKind& kind) {
    return out << kind.name;
}

/// Those that are installed; a release of Debian may lack some.
std::vector<CompositorKind> installedCompositors();

/// Those of them in which programs can bind keys.
std::vector<CompositorKind> compositorsWithHotKeys();

/// Those of these in which people bind keys in the compositor's configuration.
std::vector<CompositorKind> compositorsWithBindings();

/// Those of them whose displays can be looked at.
std::vector<CompositorKind> compositorsWithPictures();

/// The file that a person's own binding makes.
inline std::filesystem::path personsTrace(const CompositorProcess& compositor) {
    return compositor.runtimeDirectory() / "persons";
}

/// Those of them that can be served by the protocols alone.
std::vector<CompositorKind> compositorsWithProtocols();

}  // namespace vantrel::desk
