#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace vantrel::backend {

/// The XKB names ("AC03") of the keys that stand where the macOS virtual key code has its place; several where PC
/// keyboards have more than one such key, empty for a code that names no place on a PC keyboard. Names, unlike keycodes
/// and letters, are the same on every server and layout.
std::vector<std::string_view> xkbNamesForVirtualKey(std::uint32_t keyCode);

/// The macOS virtual key code of the place that an XKB key name stands for; none for keys without one, such as media
/// keys.
std::optional<std::uint32_t> virtualKeyForXkbName(std::string_view name);

}  // namespace vantrel::backend
