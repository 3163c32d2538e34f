#include "tests/desk/support/Keyboard.hpp"

#include <xcb/xtest.h>
#include <xkbcommon/xkbcommon-x11.h>

#include <algorithm>
#include <stdexcept>

#include "tests/desk/support/ChildProcess.hpp"

namespace vantrel::desk {

namespace {

using Context = std::unique_ptr<xkb_context, decltype(&xkb_context_unref)>;
using Keymap = std::unique_ptr<xkb_keymap, decltype(&xkb_keymap_unref)>;

}  // namespace

Chord hyper(std::string_view key) {
    return {keys::control, keys::option, keys::shift, keys::command, key};
}

Chord controlOptionCommand(std::string_view key) {
    return {keys::control, keys::option, keys::command, key};
}

Keyboard::~Keyboard() {
    if (xcb_connection_has_error(connection_.get()) == 0) {
        letGo();
    }
}

xcb_keycode_t Keyboard::keycode(std::string_view name) {
    xkb_x11_setup_xkb_extension(connection_.get(), XKB_X11_MIN_MAJOR_XKB_VERSION, XKB_X11_MIN_MINOR_XKB_VERSION,
                                XKB_X11_SETUP_XKB_EXTENSION_NO_FLAGS, nullptr, nullptr, nullptr, nullptr);
    const Context context(xkb_context_new(XKB_CONTEXT_NO_DEFAULT_INCLUDES), &xkb_context_unref);
    const auto device = xkb_x11_get_core_keyboard_device_id(connection_.get());
    const Keymap keymap(
        xkb_x11_keymap_new_from_device(context.get(), connection_.get(), device, XKB_KEYMAP_COMPILE_NO_FLAGS),
        &xkb_keymap_unref);
    if (!keymap) {
        throw std::runtime_error("the server's keymap cannot be read");
    }
    const auto keycode = xkb_keymap_key_by_name(keymap.get(), std::string(name).c_str());
    if (keycode == XKB_KEYCODE_INVALID) {
        throw std::runtime_error("the keyboard has no key " + std::string(name));
    }
    return static_cast<xcb_keycode_t>(keycode);
}

void Keyboard::send(std::uint8_t type, xcb_keycode_t keycode) {
    xcb_test_fake_input(connection_.get(), type, keycode, XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
    connection_.synchronise();
}

void Keyboard::press(std::string_view name) {
    held_.push_back({.name = std::string(name), .keycode = keycode(name)});
    send(XCB_KEY_PRESS, held_.back().keycode);
}

void Keyboard::release(std::string_view name) {
    const auto found = std::find_if(held_.begin(), held_.end(), [&](const HeldKey& key) { return key.name == name; });
    if (found == held_.end()) {
        throw std::invalid_argument("the key is not held: " + std::string(name));
    }
    const auto keycode = found->keycode;
    held_.erase(found);
    send(XCB_KEY_RELEASE, keycode);
}

void Keyboard::hold(const Chord& chord) {
    for (const auto& name : chord) {
        press(name);
    }
}

void Keyboard::letGo() {
    while (!held_.empty()) {
        const auto keycode = held_.back().keycode;
        held_.pop_back();
        send(XCB_KEY_RELEASE, keycode);
    }
}

void Keyboard::type(const Chord& chord) {
    hold(chord);
    for (auto name = chord.rbegin(); name != chord.rend(); ++name) {
        release(*name);
    }
}

void setKeyboardMap(const std::string& displayName, const std::string& layout, const std::string& option) {
    auto environment = Environment::minimal();
    environment.set("DISPLAY", displayName);
    std::vector<std::string> arguments = {"setxkbmap", "-rules", "evdev",   "-model", "pc105",
                                          "-layout",   layout,   "-option", ""};
    if (!option.empty()) {
        arguments.insert(arguments.end(), {"-option", option});
    }
    runProgram(arguments, environment);
}

}  // namespace vantrel::desk
