// The floor on Hyprland: a program of a few lines that takes one key by xx-hotkey-v1, and at each press asks Hyprland's
// socket where the pointer is and has it put where it last was on the other side of a line (x = 0). It stores nothing
// and knows no errors. Argument: the socket.
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#include <wayland-client.h>
#include <xx-hotkey-v1.h>

#include <array>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>

namespace {

struct Place {
    int x = 0;
    int y = 0;
};

xx_hotkey_manager_v1* manager = nullptr;
sockaddr_un address{};
std::array<Place, 2> remembered{{{-200, 250}, {}}};

std::string ask(const std::string& request) {
    const int connection = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    std::array<char, 256> answer{};
    if (connect(connection, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0 &&
        send(connection, request.data(), request.size(), 0) > 0) {
        recv(connection, answer.data(), answer.size() - 1, 0);
    }
    close(connection);
    return answer.data();
}

template <typename... Arguments>
void none(void*, Arguments...) {}

void global(void*, wl_registry* registry, std::uint32_t name, const char* interface, std::uint32_t) {
    if (std::strcmp(interface, xx_hotkey_manager_v1_interface.name) == 0) {
        manager =
            static_cast<xx_hotkey_manager_v1*>(wl_registry_bind(registry, name, &xx_hotkey_manager_v1_interface, 1));
    }
}

void pressed(void*, xx_hotkey_v1*, std::uint32_t, std::uint32_t) {
    Place place;
    std::sscanf(ask("/cursorpos").c_str(), "%d, %d", &place.x, &place.y);
    const std::size_t side = place.x < 0 ? 0 : 1;
    remembered[side] = place;
    const Place& target = remembered[1 - side];
    ask("/eval hl.dispatch(hl.dsp.cursor.move({x=" + std::to_string(target.x) + ",y=" + std::to_string(target.y) +
        "}))");
}

constexpr wl_registry_listener registryListener{.global = global, .global_remove = none};
constexpr xx_hotkey_v1_listener keyListener{
    .bound = none, .denied = none, .revoked = none, .triggered = pressed, .released = none};

}  // namespace

int main(int count, char** arguments) {
    wl_display* const display = wl_display_connect(nullptr);
    if (count != 2 || display == nullptr) {
        return 1;
    }
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, arguments[1], sizeof address.sun_path - 1);
    wl_registry_add_listener(wl_display_get_registry(display), &registryListener, nullptr);
    wl_display_roundtrip(display);
    if (manager == nullptr) {
        return 1;
    }
    xx_hotkey_manager_v1_set_app_id(manager, "floor");
    xx_hotkey_v1* const key = xx_hotkey_manager_v1_create_hotkey(manager);
    xx_hotkey_v1_add_listener(key, &keyListener, nullptr);
    xx_hotkey_v1_set_description(key, "Measures");
    xx_hotkey_v1_set_key_trigger(key, 'd',
                                 XX_HOTKEY_MANAGER_V1_MODIFIERS_SHIFT | XX_HOTKEY_MANAGER_V1_MODIFIERS_CTRL |
                                     XX_HOTKEY_MANAGER_V1_MODIFIERS_ALT | XX_HOTKEY_MANAGER_V1_MODIFIERS_SUPER);
    xx_hotkey_v1_commit(key);
    while (wl_display_dispatch(display) >= 0) {
    }
    return 0;
}
