// The floor on GNOME: a program of a few lines that hears of a press from its extension of the shell, with the place of
// the pointer, and has the extension put it where it last was on the other side of a line (x = 400). It stores nothing
// and knows no errors.
#include <gio/gio.h>

#include <array>
#include <cstddef>

namespace {

struct Place {
    double x;
    double y;
};

constexpr double line = 400;
std::array<Place, 2> remembered{{{200, 250}, {}}};

void pressed(GDBusConnection* bus, const char*, const char*, const char*, const char*, GVariant* arguments, gpointer) {
    Place place{};
    g_variant_get(arguments, "(dd)", &place.x, &place.y);
    const std::size_t side = place.x < line ? 0 : 1;
    remembered[side] = place;
    const Place& target = remembered[1 - side];
    g_dbus_connection_call(bus, "org.vantrel.Floor", "/org/vantrel/Floor", "org.vantrel.Floor1", "Warp",
                           g_variant_new("(dd)", target.x, target.y), nullptr, G_DBUS_CALL_FLAGS_NO_AUTO_START, -1,
                           nullptr, nullptr, nullptr);
}

}  // namespace

int main() {
    GDBusConnection* const bus = g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr);
    g_dbus_connection_signal_subscribe(bus, "org.vantrel.Floor", "org.vantrel.Floor1", "Pressed", "/org/vantrel/Floor",
                                       nullptr, G_DBUS_SIGNAL_FLAGS_NONE, &pressed, nullptr, nullptr);
    g_main_loop_run(g_main_loop_new(nullptr, FALSE));
    return 0;
}
