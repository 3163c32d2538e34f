#pragma once

#include <string>

namespace vantrel::desktop {

/// Where a panel finds the item's drawing by name.
struct ItemIconLocation {
    std::string name;       ///< empty when the drawing is not installed beside the program
    std::string themePath;  ///< the folder of icon themes to search first; empty when the desktop's own serve
};

ItemIconLocation itemIconLocation();

}  // namespace vantrel::desktop
