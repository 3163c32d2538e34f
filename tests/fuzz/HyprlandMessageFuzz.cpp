// What a program in Hyprland's place might answer and tell over its sockets.
#include <cmath>
#include <string>

#include "FuzzTarget.hpp"
#include "Vantrel/Backends/Hyprland/HyprlandCommands.hpp"

using namespace vantrel;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text = fuzz::text(data, size);
    if (const auto place = hyprland::positionIn(text)) {
        fuzz::require(place->x == std::trunc(place->x) && place->y == std::trunc(place->y), "a place has whole points");
    }
    for (const auto& combination : hyprland::bindingsIn(text).ours) {
        const std::string command = hyprland::unbindCommand(hyprland::Language::keywords, combination, 40);
        fuzz::require(command.starts_with("/keyword unbind ") && command.find(';') == std::string::npos,
                      "what a binding says becomes no other command");
    }
    hyprland::pressedIn(text);
    return 0;
}
