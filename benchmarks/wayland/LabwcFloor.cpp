// The floor on labwc: a program of a few lines that waits for a knock at its socket, and at each reads the pointer and
// has a virtual pointer put it where it last was on the other side of a line (x = 0), in a layout of a display of 640 x
// 480 at (0, 0) and one of 400 x 300 at (-400, 100). It stores nothing and knows no errors.
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>
#include <wlr-virtual-pointer-unstable-v1.h>

#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "benchmarks/wayland/FloorPointer.hpp"

namespace {

using Place = vantrel::bench::FloorPointer::Place;

constexpr Place corner{-400, 0};
constexpr Place size{1040, 480};
constexpr double steps = 1024;  // of a point

zwlr_virtual_pointer_manager_v1* manager = nullptr;

void bind(wl_registry* registry, std::uint32_t name, const char* interface) {
    if (std::strcmp(interface, zwlr_virtual_pointer_manager_v1_interface.name) == 0) {
        manager = static_cast<zwlr_virtual_pointer_manager_v1*>(
            wl_registry_bind(registry, name, &zwlr_virtual_pointer_manager_v1_interface, 2));
    }
}

/// One step further than asked: labwc cuts fractions down.
std::uint32_t stepsTo(double distance) {
    return static_cast<std::uint32_t>(std::lround(distance * steps)) + 1;
}

/// Beside the compositor's own socket, for whoever the compositor starts.
int listenForKnocks() {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::snprintf(address.sun_path, sizeof address.sun_path, "%s/floor", std::getenv("XDG_RUNTIME_DIR"));
    const int listener = socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    const bool isBound = bind(listener, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
    return isBound && chmod(address.sun_path, 0666) == 0 ? listener : -1;
}

}  // namespace

int main() {
    vantrel::bench::FloorPointer pointer(&bind);
    const int knocks = listenForKnocks();
    if (manager == nullptr || knocks < 0) {
        return 1;
    }
    zwlr_virtual_pointer_v1* const mouse = zwlr_virtual_pointer_manager_v1_create_virtual_pointer(manager, nullptr);
    wl_display_flush(pointer.display());
    const auto stir = [&] {
        zwlr_virtual_pointer_v1_motion(mouse, 0, 0, 0);
        zwlr_virtual_pointer_v1_frame(mouse);
        wl_display_flush(pointer.display());
    };
    std::array<Place, 2> remembered{{{-200, 250}, {}}};
    char knock = 0;
    while (recv(knocks, &knock, 1, 0) > 0) {
        const Place place = pointer.read(stir);
        const std::size_t side = place.x < 0 ? 0 : 1;
        remembered[side] = place;
        const Place& target = remembered[1 - side];
        zwlr_virtual_pointer_v1_motion_absolute(mouse, 0, stepsTo(target.x - corner.x), stepsTo(target.y - corner.y),
                                                static_cast<std::uint32_t>(size.x * steps),
                                                static_cast<std::uint32_t>(size.y * steps));
        zwlr_virtual_pointer_v1_frame(mouse);
        wl_display_flush(pointer.display());
        // What lies beneath is to be told, too.
        wl_display_roundtrip(pointer.display());
        stir();
    }
    return 0;
}
