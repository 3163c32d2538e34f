#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "VantrelCore/UUID.hpp"
#include "VantrelCore/VantrelPoint.hpp"

namespace vantrel {

/// A pointer position that the user saved. The position is absolute: a jump goes to it whatever the layout is by then.
struct SavedPoint {
    UUID id;
    std::string name;  ///< UTF-8, shown in menus, status texts and the settings table
    VantrelPoint point;
    std::optional<std::uint32_t> displayID;  ///< the display it was saved on, for information only

    bool operator==(const SavedPoint&) const = default;
};

}  // namespace vantrel
