#include "tests/desk/wayland/support/KeyboardMap.hpp"

#include <cstdlib>
#include <filesystem>
#include <stdexcept>

#include "tests/desk/support/TemporaryDirectory.hpp"

namespace vantrel::desk {

namespace {

struct FreeContext {
    void operator()(xkb_context* context) const { xkb_context_unref(context); }
};

struct FreeText {
    void operator()(char* text) const { std::free(text); }
};

}  // namespace

KeyboardMap::KeyboardMap(const std::string& layouts, const std::string& options) {
    const std::unique_ptr<xkb_context, FreeContext> context(xkb_context_new(XKB_CONTEXT_NO_DEFAULT_INCLUDES));
    const TemporaryDirectory data("xkb");
    if (options.empty()) {
        xkb_context_include_path_append_default(context.get());
    } else {
        // The system's data with ours, as if that were in the person's own folder. One folder has all of it, because
        // libxkbcommon 1.5 leaks the names of files that it does not find in the first of several.
        constexpr auto into =
            std::filesystem::copy_options::recursive | std::filesystem::copy_options::overwrite_existing;
        std::filesystem::copy("/usr/share/X11/xkb", data.path(), into);
        std::filesystem::copy(VANTREL_XKB_DATA, data.path(), into);
        xkb_context_include_path_append(context.get(), data.path().c_str());
    }
    const xkb_rule_names names{
        .rules = "evdev", .model = "pc105", .layout = layouts.c_str(), .variant = "", .options = options.c_str()};
    keymap_.reset(xkb_keymap_new_from_names(context.get(), &names, XKB_KEYMAP_COMPILE_NO_FLAGS));
    if (!keymap_) {
        throw std::runtime_error("no keymap for " + layouts);
    }
}

xkb_keycode_t KeyboardMap::keycode(std::string_view name) const {
    const xkb_keycode_t keycode = xkb_keymap_key_by_name(keymap_.get(), std::string(name).c_str());
    if (keycode == XKB_KEYCODE_INVALID) {
        throw std::runtime_error("no such key: " + std::string(name));
    }
    return keycode;
}

std::string KeyboardMap::text() const {
    const std::unique_ptr<char, FreeText> text(xkb_keymap_get_as_string(keymap_.get(), XKB_KEYMAP_FORMAT_TEXT_V1));
    return text.get();
}

}  // namespace vantrel::desk
