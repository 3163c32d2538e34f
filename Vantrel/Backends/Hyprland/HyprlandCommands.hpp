#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Vantrel/Backends/Common/HotKeyBinder.hpp"
#include "Vantrel/Backends/Wayland/KeyBindings.hpp"
#include "Vantrel/Backends/Wayland/OutputLayout.hpp"

namespace vantrel::hyprland {

// What Hyprland's sockets take and say. Whatever is no such text says nothing.

/// The language of requests: that of the configuration, which was one of keywords before it was Lua.
enum class Language { lua, keywords };

/// A request that only the one that understands Lua answers with "ok".
inline constexpr std::string_view languageQuestion = "/eval return true";
inline constexpr std::string_view agreement = "ok";

inline constexpr std::string_view positionQuestion = "/cursorpos";
/// What that is answered with: whole points of the layout, the fraction cut off.
std::optional<wayland::LayoutPoint> positionIn(std::string_view answer);

/// Moves the pointer to a point of the layout, which loses its fraction.
std::string moveCommand(Language language, wayland::LayoutPoint place);

/// Binds a key to an event that says of which combination it is.
std::string bindCommand(Language language, const backend::KeyCombination& combination, xkb_keycode_t keycode);
std::string unbindCommand(Language language, const backend::KeyCombination& combination, xkb_keycode_t keycode);

inline constexpr std::string_view bindingsQuestion = "j/binds";
struct Bindings {
    std::vector<wayland::ConfiguredBinding> configured;
    /// Left behind by an agent that was killed. Told only in the language of keywords: in Lua unbindCommand() takes
    /// them away, whoever bound them.
    std::vector<backend::KeyCombination> ours;
};
/// What that is answered with.
Bindings bindingsIn(std::string_view answer);

/// An event tells that the configuration was read anew: what was bound meanwhile is gone.
inline constexpr std::string_view reloadEvent = "configreloaded>>";
/// The combination of which an event tells that it was pressed.
std::optional<backend::KeyCombination> pressedIn(std::string_view event);

}  // namespace vantrel::hyprland
