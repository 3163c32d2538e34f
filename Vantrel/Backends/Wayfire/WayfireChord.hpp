#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vantrel::wayfire {

/// A key with modifiers as wayfire's configuration and plugins have them: "<ctrl> <alt> KEY_D".
struct Chord {
    std::uint32_t modifiers = 0;  ///< Carbon's four
    std::string key;              ///< the name that the kernel's headers have (linux/input-event-codes.h)

    bool operator==(const Chord&) const = default;
};

/// The name of a key by the kernel's number; none for keys that are no part of a shortcut.
std::optional<std::string> keyName(std::uint32_t evdevCode);

std::string textOf(const Chord& chord);

/// The chords that a configuration binds, in whatever section: all values of that form, "|" between several.
std::vector<Chord> chordsInConfiguration(std::string_view text);

}  // namespace vantrel::wayfire
