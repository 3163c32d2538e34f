#include "Vantrel/Interface/SettingEnumerations.hpp"

namespace vantrel {

namespace {

template <typename Enumeration, std::size_t count>
std::optional<Enumeration> fromRawValue(const std::array<Enumeration, count>& cases, std::string_view text) {
    for (const Enumeration value : cases) {
        if (rawValue(value) == text) {
            return value;
        }
    }
    return std::nullopt;
}

}  // namespace

std::optional<VantrelMode> modeFromRawValue(std::string_view text) {
    return fromRawValue(allModes, text);
}

std::optional<AnimationStyle> animationStyleFromRawValue(std::string_view text) {
    return fromRawValue(allAnimationStyles, text);
}

std::string_view title(VantrelMode mode) {
    return mode == VantrelMode::manual ? "Manual: saved points" : "Automatic: displays";
}

std::string_view title(AnimationStyle style) {
    return style == AnimationStyle::none ? "Instant" : "Glide";
}

}  // namespace vantrel
