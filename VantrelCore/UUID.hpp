#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vantrel {

/// A universally unique identifier (RFC 4122): 128 bits, with the standard text form of 36 characters.
struct UUID {
    std::array<std::uint8_t, 16> bytes{};

    /// Reads the form 8-4-4-4-12 in upper or lower case; none for any other text.
    static std::optional<UUID> fromString(std::string_view text);

    /// The form 8-4-4-4-12 in upper case.
    [[nodiscard]] std::string uuidString() const;

    bool operator==(const UUID&) const = default;
};

}  // namespace vantrel
