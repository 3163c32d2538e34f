#pragma once

#include <cstdint>

/// X's keysyms of the keys that a menu obeys.
namespace vantrel::overlay::keysyms {

inline constexpr std::uint32_t space = 0x0020;
inline constexpr std::uint32_t enter = 0xFF0D;
inline constexpr std::uint32_t escape = 0xFF1B;
inline constexpr std::uint32_t home = 0xFF50;
inline constexpr std::uint32_t up = 0xFF52;
inline constexpr std::uint32_t down = 0xFF54;
inline constexpr std::uint32_t end = 0xFF57;
inline constexpr std::uint32_t keypadEnter = 0xFF8D;

}  // namespace vantrel::overlay::keysyms
