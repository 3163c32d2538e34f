// What a person may have written into sway's configuration. Included files are their own affair: they would make an
// input depend on the machine.
#include "FuzzTarget.hpp"
#include "Vantrel/Backends/Sway/SwayConfiguration.hpp"

using namespace vantrel;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text = fuzz::text(data, size);
    if (text.find("include") != std::string_view::npos) {
        return 0;
    }
    for (const auto& binding : sway::bindingsInConfiguration(text, "/nowhere/config")) {
        fuzz::require((binding.keycode == 0) != (binding.keysym == XKB_KEY_NoSymbol), "a binding is of one key");
        fuzz::require(!binding.mode.empty(), "a binding is of a mode");
    }
    return 0;
}
