#include "helpers/sound/EventSoundPreference.hpp"

#include <xcb/xcb.h>

#include <cstdint>
#include <memory>

#include "Vantrel/Backends/X11/XSettings.hpp"

namespace vantrel::sound {

namespace {

struct Disconnector {
    void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
};
using Connection = std::unique_ptr<xcb_connection_t, Disconnector>;

}  // namespace

EventSoundPreference eventSoundPreference(std::string_view xsettings) {
    const x11::XSettings settings = x11::readXSettings(xsettings);
    EventSoundPreference preference;
    if (const auto* const number = x11::valueIn<std::uint32_t>(settings, "Net/EnableEventSounds")) {
        preference.areEnabled = *number != 0;
    }
    if (const auto* const text = x11::valueIn<std::string_view>(settings, "Net/SoundThemeName")) {
        preference.themeName = *text;
    }
    return preference;
}

EventSoundPreference currentEventSoundPreference() {
    int screen = 0;
    const Connection connection(xcb_connect(nullptr, &screen));
    if (xcb_connection_has_error(connection.get()) != 0) {
        return {};
    }
    return eventSoundPreference(x11::publishedXSettings(connection.get(), screen));
}

}  // namespace vantrel::sound
