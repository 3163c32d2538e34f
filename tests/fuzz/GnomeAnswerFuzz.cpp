// What a program in GNOME Shell's place might answer. GDBus checks the types and nothing else.
#include "FuzzTarget.hpp"
#include "Vantrel/Backends/Gnome/DisplayConfiguration.hpp"
#include "Vantrel/Backends/Gnome/ExtensionState.hpp"
#include "Vantrel/Handles/GLibHandles.hpp"

using namespace vantrel;

namespace {

GVariantPointer answerOf(const char* type, const std::uint8_t* data, std::size_t size) {
    GVariant* const answer = g_variant_new_from_data(G_VARIANT_TYPE(type), data, size, FALSE, nullptr, nullptr);
    return GVariantPointer(g_variant_ref_sink(answer));
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const GVariantPointer displays = answerOf(gnome::displayStateType, data, size);
    const auto outputs = gnome::outputsOf(displays.get());
    fuzz::require(wayland::layoutOfOutputs(outputs).displays.size() <= outputs.size(), "each display is of an output");
    const GVariantPointer extension = answerOf("(a{sv})", data, size);
    const std::string line = gnome::whyExtensionIsMissing(extension.get(), true, std::string(fuzz::text(data, size)));
    fuzz::require(!line.empty() && line.find('\n') == std::string::npos, "the reason is one line");
    return 0;
}
