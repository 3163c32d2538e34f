#include "helpers/sound/EventSoundPreference.hpp"

#include "FuzzTarget.hpp"

using namespace vantrel;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view property = fuzz::text(data, size);
    const sound::EventSoundPreference settings = sound::eventSoundPreference(property);
    fuzz::require(settings.themeName.empty() || property.find(settings.themeName) != std::string_view::npos,
                  "the theme's name stands in the property");
    return 0;
}
