#include "Vantrel/Controller/AppDelegate.hpp"

#include "Vantrel/Controller/StoredKeys.hpp"
#include "Vantrel/Platform/FatalError.hpp"

#include <charconv>
#include <limits>
#include <system_error>
#include <utility>

namespace vantrel {

namespace {

constexpr std::int64_t largestHotKeyNumber = std::numeric_limits<std::uint32_t>::max();

/// A hot key that names no key at all is a damaged store: to guess one would bind a key that nobody chose.
std::uint32_t hotKeyNumber(std::int64_t stored, std::string_view key) {
    if (stored < 0 || stored > largestHotKeyNumber) {
        fatalError("The stored value " + std::to_string(stored) + " of '" + std::string(key) +
                   "' is not an unsigned 32-bit number");
    }
    return static_cast<std::uint32_t>(stored);
}

/// The number that the text spells: an optional sign, then decimal digits and nothing else. None beyond 32 bits, and
/// after a minus for anything but zero.
std::optional<std::uint32_t> displayIdentifier(std::string_view text) {
    const bool isNegative = text.starts_with('-');
    if (isNegative || text.starts_with('+')) {
        text.remove_prefix(1);
    }
    std::uint32_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    const bool isNumber = error == std::errc() && end == text.data() + text.size();
    return isNumber && (!isNegative || value == 0) ? std::optional(value) : std::nullopt;
}

}  // namespace

void AppDelegate::loadSettings() {
    loadSingleValues();
    loadSavedPoints();
    loadRememberedPositions();
}

void AppDelegate::loadSingleValues() {
    if (const auto text = defaults.stringForKey(modeKey)) {
        mode = fromRawValue(allModes, *text).value_or(mode);
    }
    if (const auto text = defaults.stringForKey(animationKey)) {
        animationStyle = fromRawValue(allAnimationStyles, *text).value_or(animationStyle);
    }
    if (defaults.objectForKey(soundEnabledKey)) {
        soundEnabled = defaults.boolForKey(soundEnabledKey);
    }
    loadPrimaryShortcut();
}

void AppDelegate::loadPrimaryShortcut() {
    if (!defaults.objectForKey(primaryHotKeyCodeKey) || !defaults.objectForKey(primaryHotKeyModifiersKey)) {
        return;
    }
    const std::uint32_t keyCode = hotKeyNumber(defaults.integerForKey(primaryHotKeyCodeKey), primaryHotKeyCodeKey);
    const std::uint32_t modifiers =
        hotKeyNumber(defaults.integerForKey(primaryHotKeyModifiersKey), primaryHotKeyModifiersKey);
    // A key without modifiers would take that key away from every other program.
    if (modifiers != 0) {
        primaryShortcut = KeyboardShortcut{keyCode, modifiers};
    }
}

void AppDelegate::loadSavedPoints() {
    const auto data = defaults.dataForKey(savedPointsKey);
    if (!data) {
        return;
    }
    if (auto points = decoder.decodeSavedPoints(*data)) {
        savedPoints = std::move(*points);
    }
}

void AppDelegate::loadRememberedPositions() {
    const auto data = defaults.dataForKey(rememberedPositionsKey);
    if (!data) {
        return;
    }
    if (auto positions = decodeRememberedPositions(*data)) {
        rememberedPositions = std::move(*positions);
    }
}

std::optional<RememberedPositions> AppDelegate::decodeRememberedPositions(std::string_view json) const {
    const auto members = decoder.decodePositions(json);
    if (!members) {
        return std::nullopt;
    }
    RememberedPositions positions;
    for (const auto& [name, point] : *members) {
        const auto identifier = displayIdentifier(name);
        if (!identifier) {
            continue;
        }
        if (!positions.emplace(*identifier, point).second) {
            fatalError("Duplicate values for key: '" + std::to_string(*identifier) + "'");
        }
    }
    return positions;
}

void AppDelegate::saveSavedPoints() {
    if (auto json = encoder.encode(savedPoints)) {
        defaults.setObject(DefaultsData{std::move(*json)}, savedPointsKey);
    }
}

void AppDelegate::saveRememberedPositions() {
    if (auto json = encoder.encode(rememberedPositions)) {
        defaults.setObject(DefaultsData{std::move(*json)}, rememberedPositionsKey);
    }
}

void AppDelegate::storeMode(VantrelMode newMode) {
    mode = newMode;
    defaults.setObject(std::string(rawValue(newMode)), modeKey);
}

void AppDelegate::storeAnimationStyle(AnimationStyle style) {
    animationStyle = style;
    defaults.setObject(std::string(rawValue(style)), animationKey);
}

void AppDelegate::storeSoundEnabled(bool enabled) {
    soundEnabled = enabled;
    defaults.setBool(enabled, soundEnabledKey);
}

void AppDelegate::storePrimaryShortcut() {
    // Together, so that a crash cannot leave one shortcut's key with another's modifiers.
    defaults.setObjects({{primaryHotKeyCodeKey, std::int64_t{primaryShortcut.keyCode}},
                         {primaryHotKeyModifiersKey, std::int64_t{primaryShortcut.modifiers}}});
}

}  // namespace vantrel
