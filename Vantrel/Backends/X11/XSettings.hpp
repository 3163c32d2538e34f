#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <variant>

namespace vantrel::x11 {

/// Numbers and texts by name; the texts, and the names, are parts of the property that they were read from.
using XSettings = std::map<std::string_view, std::variant<std::uint32_t, std::string_view>>;

/// Reads the property in which a desktop's settings manager publishes settings (XSETTINGS protocol), up to the first
/// thing that does not conform.
XSettings readXSettings(std::string_view property);

/// The setting of that name; null when there is none, or one of another kind.
template <typename Value>
const Value* valueIn(const XSettings& settings, std::string_view name) {
    const auto found = settings.find(name);
    return found == settings.end() ? nullptr : std::get_if<Value>(&found->second);
}

/// The property as it is now: a few blocking round trips. Empty when there is no settings manager.
std::string publishedXSettings(xcb_connection_t* connection, int screen);

}  // namespace vantrel::x11
