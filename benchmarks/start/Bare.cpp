// The share of a start that is nobody's choice: a GApplication that connects to the X server and takes the same keys,
// and does nothing else. Arguments: "first" to take the keys before the bus is connected or "startup" to take them when
// GApplication says so, then the keycode and the modifier mask of each hot key.
#include <gio/gio.h>
#include <xcb/xcb.h>

#include <array>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <span>
#include <vector>

namespace {

struct Keys {
    std::span<char*> numbers;
};

std::uint16_t numberFrom(const char* text) {
    return static_cast<std::uint16_t>(std::atoi(text));
}

void takeKeys(const Keys& keys) {
    xcb_connection_t* connection = xcb_connect(nullptr, nullptr);
    if (xcb_connection_has_error(connection) != 0) {
        std::exit(1);
    }
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    constexpr std::array<std::uint16_t, 4> locks{0, XCB_MOD_MASK_LOCK, XCB_MOD_MASK_2,
                                                 XCB_MOD_MASK_LOCK | XCB_MOD_MASK_2};
    for (std::size_t index = 0; index + 1 < keys.numbers.size(); index += 2) {
        std::vector<xcb_void_cookie_t> cookies;
        for (const std::uint16_t lock : locks) {
            cookies.push_back(xcb_grab_key_checked(
                connection, 0, root, static_cast<std::uint16_t>(numberFrom(keys.numbers[index + 1]) | lock),
                static_cast<std::uint8_t>(numberFrom(keys.numbers[index])), XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
        }
        for (const xcb_void_cookie_t cookie : cookies) {
            const std::unique_ptr<xcb_generic_error_t, decltype(&std::free)> error{
                xcb_request_check(connection, cookie), &std::free};
            if (error) {
                std::exit(1);
            }
        }
    }
}

}  // namespace

int main(int count, char** arguments) {
    if (count < 4) {
        return 2;
    }
    Keys keys{std::span(arguments + 2, static_cast<std::size_t>(count - 2))};
    GApplication* application = g_application_new("org.vantrel.Bare", G_APPLICATION_HANDLES_OPEN);
    if (std::strcmp(arguments[1], "first") == 0) {
        takeKeys(keys);
    } else {
        const auto takeAtStartup = +[](GApplication*, gpointer data) { takeKeys(*static_cast<Keys*>(data)); };
        g_signal_connect(application, "startup", G_CALLBACK(takeAtStartup), &keys);
    }
    const auto doNothing = +[](GApplication*, gpointer) {};
    g_signal_connect(application, "activate", G_CALLBACK(doNothing), nullptr);
    g_application_hold(application);
    const int status = g_application_run(application, 1, arguments);
    g_object_unref(application);
    return status;
}
