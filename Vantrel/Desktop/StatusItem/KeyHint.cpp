#include "Vantrel/Desktop/StatusItem/KeyHint.hpp"

namespace vantrel::desktop {

GVariant* keyHint(const std::string& keyEquivalent, KeyHintStyle style) {
    const std::string key = style == KeyHintStyle::x11Names && keyEquivalent == "," ? "comma" : keyEquivalent;
    GVariantBuilder keys;
    g_variant_builder_init(&keys, G_VARIANT_TYPE("as"));
    g_variant_builder_add(&keys, "s", "Control");
    g_variant_builder_add(&keys, "s", key.c_str());
    GVariantBuilder hints;
    g_variant_builder_init(&hints, G_VARIANT_TYPE("aas"));
    g_variant_builder_add_value(&hints, g_variant_builder_end(&keys));
    return g_variant_builder_end(&hints);
}

}  // namespace vantrel::desktop
