#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace vantrel::desktop {

/// What is known of a panel's way with items; it cannot be asked over the bus.
struct PanelProgram {
    bool drawsLabel = false;  ///< false also when in doubt: better a text on the screen than none at all
    /// Shows a label only when it is told of another one, and listens only after it has read the rest.
    bool missesFirstLabel = false;
    bool isQt = false;
    bool opensRefusedMenu = false;  ///< opens the menu itself when the item refuses to be activated
};

/// What is known of the program that has the name, as the kernel gives it (at most 15 characters).
PanelProgram panelProgram(std::string_view processName);

/// The name of the process; empty when it cannot be read.
std::string processName(std::uint32_t process);

}  // namespace vantrel::desktop
