#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>

namespace vantrel {

/// What the primary shortcut does.
enum class VantrelMode {
    automatic,  ///< to the next display
    manual,     ///< to the next saved point
};

/// How the pointer gets to its target.
enum class AnimationStyle {
    none,   ///< at once
    glide,  ///< in a short eased movement
};

/// In the order in which lists show them.
inline constexpr std::array allModes{VantrelMode::automatic, VantrelMode::manual};
inline constexpr std::array allAnimationStyles{AnimationStyle::none, AnimationStyle::glide};

/// The text under which the setting is stored.
constexpr std::string_view rawValue(VantrelMode mode) {
    return mode == VantrelMode::manual ? "manual" : "automatic";
}
constexpr std::string_view rawValue(AnimationStyle style) {
    return style == AnimationStyle::none ? "none" : "glide";
}

/// The setting among all of its kind that is stored under the text; none unless it matches exactly, with case.
template <typename Enumeration, std::size_t count>
constexpr std::optional<Enumeration> fromRawValue(const std::array<Enumeration, count>& all, std::string_view text) {
    for (const Enumeration value : all) {
        if (rawValue(value) == text) {
            return value;
        }
    }
    return std::nullopt;
}

/// The phrase that menus and lists show for the setting.
constexpr std::string_view title(VantrelMode mode) {
    return mode == VantrelMode::manual ? "Manual: saved points" : "Automatic: displays";
}
constexpr std::string_view title(AnimationStyle style) {
    return style == AnimationStyle::none ? "Instant" : "Glide";
}

}  // namespace vantrel
