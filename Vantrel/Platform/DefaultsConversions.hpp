#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "Vantrel/Platform/UserDefaults.hpp"

namespace vantrel {

// How a stored value reads as another type. Every implementation of UserDefaults converts with these; the whole table
// stands in docs/design/store.md, "Store conversions". None depends on the locale.

/// A string as it is, a boolean as "0" or "1", a number as its shortest decimal text; none for data.
std::optional<std::string> stringFromDefaultsValue(const DefaultsValue& value);

/// A boolean or number by being other than zero (NaN counts as zero). A string after white space, one sign and zeros by
/// its first character: Y, y, T, t or 1 to 9 is true. Everything else is false.
bool boolFromDefaultsValue(const DefaultsValue& value);

/// A number without its fraction, a boolean as 0 or 1, a string by the decimal digits it begins with, after white space
/// and one sign. Values beyond 64 bits become the nearest that fits; NaN, data and all else is 0.
std::int64_t integerFromDefaultsValue(const DefaultsValue& value);

/// Data as it is; none for every other type.
std::optional<std::string> dataFromDefaultsValue(const DefaultsValue& value);

}  // namespace vantrel
