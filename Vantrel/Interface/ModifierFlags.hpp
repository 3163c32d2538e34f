#pragma once

#include <array>
#include <cstdint>

#include "Vantrel/Interface/KeyEvent.hpp"
#include "Vantrel/Interface/KeyboardShortcut.hpp"

namespace vantrel {

/// One of the four modifiers, as key events have it and as shortcuts do.
struct ModifierFlag {
    std::uint32_t flag;      ///< in KeyEvent::modifierFlags
    std::uint32_t modifier;  ///< in KeyboardShortcut::modifiers
};

inline constexpr auto modifierFlags = std::to_array<ModifierFlag>({
    {KeyEvent::commandFlag, KeyboardShortcut::command},
    {KeyEvent::shiftFlag, KeyboardShortcut::shift},
    {KeyEvent::optionFlag, KeyboardShortcut::option},
    {KeyEvent::controlFlag, KeyboardShortcut::control},
});

}  // namespace vantrel
