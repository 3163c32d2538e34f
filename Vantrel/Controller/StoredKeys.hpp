#pragma once

#include <string_view>

namespace vantrel {

// What the settings are stored under. The names are in people's stores and must not change.
inline constexpr std::string_view modeKey = "mode";
inline constexpr std::string_view animationKey = "animation";
inline constexpr std::string_view soundEnabledKey = "soundEnabled";
inline constexpr std::string_view primaryHotKeyCodeKey = "primaryHotKeyCode";
inline constexpr std::string_view primaryHotKeyModifiersKey = "primaryHotKeyModifiers";
inline constexpr std::string_view savedPointsKey = "savedPoints";
inline constexpr std::string_view rememberedPositionsKey = "rememberedPositions";

}  // namespace vantrel
