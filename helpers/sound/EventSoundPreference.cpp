#include "helpers/sound/EventSoundPreference.hpp"

#include <xcb/xcb.h>

#include <cstdint>
#include <memory>

#include "Vantrel/Backends/X11/XSettings.hpp"

namespace vantrel::desktop {

namespace {

struct Disconnector {
    void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
};
using Connection = std::unique_ptr<xcb_connection_t, Disconnector>;

}  // namespace

EventSoundPreference eventSoundPreference(std::string_view xsettings) {
    EventSoundPreference settings;
    x11::readXSettings(xsettings, [&settings](std::string_view name, const x11::XSettingValue& value) {
        const auto* const number = std::get_if<std::uint32_t>(&value);
        const auto* const text = std::get_if<std::string_view>(&value);
        if (number != nullptr && name == "Net/EnableEventSounds") {
            settings.areEnabled = *number != 0;
        } else if (text != nullptr && name == "Net/SoundThemeName") {
            settings.themeName = *text;
        }
    });
    return settings;
}

EventSoundPreference currentEventSoundPreference() {
    int screen = 0;
    const Connection connection(xcb_connect(nullptr, &screen));
    if (xcb_connection_has_error(connection.get()) != 0) {
        return {};
    }
    return eventSoundPreference(x11::publishedXSettings(connection.get(), screen));
}

}  // namespace vantrel::desktop
