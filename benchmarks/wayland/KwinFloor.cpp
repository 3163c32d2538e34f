// The floor on KWin: a program of a few lines that takes one key from KGlobalAccel, and at each press reads the pointer
// and sends it by fake_input where it last was on the other side of a line (x = 400), by the way points that KWin 6.3
// wants between a display of 400 x 300 at (0, 100) and one of 640 x 480 at (400, 0). It stores nothing and knows no
// errors. KWin keeps the key as long as the session lasts.
#include <fake-input.h>
#include <gio/gio.h>

#include <array>
#include <cstddef>
#include <cstring>

#include "benchmarks/wayland/FloorPointer.hpp"

namespace {

using Place = vantrel::bench::FloorPointer::Place;

constexpr double line = 400;
constexpr std::array<std::array<Place, 4>, 2> ways{
    {{{{200, 250}, {200, 250}, {200, 250}, {200, 250}}}, {{{720, 250}, {720, 250}, {720, 250}, {720, 240}}}}};

vantrel::bench::FloorPointer* pointer = nullptr;
org_kde_kwin_fake_input* input = nullptr;
std::array<Place, 2> remembered{{{200, 250}, {}}};

void bind(wl_registry* registry, std::uint32_t name, const char* interface) {
    if (std::strcmp(interface, org_kde_kwin_fake_input_interface.name) == 0) {
        input = static_cast<org_kde_kwin_fake_input*>(
            wl_registry_bind(registry, name, &org_kde_kwin_fake_input_interface, 3));
    }
}

void send(Place place) {
    org_kde_kwin_fake_input_pointer_motion_absolute(input, wl_fixed_from_double(place.x),
                                                    wl_fixed_from_double(place.y));
}

void stir() {
    org_kde_kwin_fake_input_pointer_motion(input, 0, 0);
    wl_display_flush(pointer->display());
}

void pressed(GDBusConnection*, const char*, const char*, const char*, const char*, GVariant*, gpointer) {
    const Place place = pointer->read([] { stir(); });
    const std::size_t side = place.x < line ? 0 : 1;
    remembered[side] = place;
    for (const Place& point : ways[1 - side]) {
        send(point);
    }
    send(remembered[1 - side]);
    wl_display_flush(pointer->display());
    // What lies beneath is to be told, too.
    wl_display_roundtrip(pointer->display());
    stir();
}

}  // namespace

int main() {
    static vantrel::bench::FloorPointer connected(&bind);
    pointer = &connected;
    if (input == nullptr) {
        return 1;
    }
    org_kde_kwin_fake_input_authenticate(input, "floor", "measures");
    GDBusConnection* const bus = g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr);
    const auto call = [bus](const char* method, const char* arguments) {
        g_variant_unref(g_dbus_connection_call_sync(bus, "org.kde.kglobalaccel", "/kglobalaccel",
                                                    "org.kde.KGlobalAccel", method, g_variant_new_parsed(arguments),
                                                    nullptr, G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr));
    };
    g_dbus_connection_signal_subscribe(bus, nullptr, "org.kde.kglobalaccel.Component", "globalShortcutPressed",
                                       "/component/floor", nullptr, G_DBUS_SIGNAL_FLAGS_NONE, &pressed, nullptr,
                                       nullptr);
    // Hyper + D as Qt numbers it.
    call("doRegister", "(['floor', 'jump', 'Floor', 'Jump'],)");
    call("setShortcutKeys", "(['floor', 'jump', 'Floor', 'Jump'], [([503316548, 0, 0, 0],)], uint32 6)");
    g_main_loop_run(g_main_loop_new(nullptr, FALSE));
    return 0;
}
