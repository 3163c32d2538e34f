#pragma once

#include <string>
#include <string_view>

namespace vantrel::sound {

/// What the person has set about the desktop's event sounds.
struct EventSoundPreference {
    bool areEnabled = true;
    std::string themeName;  ///< empty for the library's own choice

    bool operator==(const EventSoundPreference&) const = default;
};

/// Reads the property in which a desktop's settings manager publishes settings (XSETTINGS protocol). Gives what stands
/// before the first thing that does not conform; an absent setting keeps its default.
EventSoundPreference eventSoundPreference(std::string_view xsettings);

/// The settings of the desktop that DISPLAY names; the defaults when there is no display or no settings manager.
EventSoundPreference currentEventSoundPreference();

}  // namespace vantrel::sound
