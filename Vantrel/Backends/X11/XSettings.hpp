#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <variant>

namespace vantrel::x11 {

using XSettingValue = std::variant<std::uint32_t, std::string_view>;
using XSettingHandler = std::function<void(std::string_view name, const XSettingValue& value)>;

/// Reads the property in which a desktop's settings manager publishes settings (XSETTINGS protocol). Hands on its
/// numbers and texts, up to the first thing that does not conform; the texts are parts of the property.
void readXSettings(std::string_view property, const XSettingHandler& handler);

/// The property as it is now: a few blocking round trips. Empty when there is no settings manager.
std::string publishedXSettings(xcb_connection_t* connection, int screen);

}  // namespace vantrel::x11
