#include "Vantrel/Backends/Gnome/GnomeScreen.hpp"

#include <cmath>
#include <utility>

#include "Vantrel/Backends/Gnome/DisplayConfiguration.hpp"
#include "Vantrel/Backends/Wayland/ConnectorEdid.hpp"

namespace vantrel::gnome {

namespace {

constexpr const char* service = "org.gnome.Mutter.DisplayConfig";
constexpr const char* path = "/org/gnome/Mutter/DisplayConfig";

/// What is left of the 30 ms for a jump stays for everything else.
constexpr std::chrono::milliseconds readingTime{25};
/// At the start and after a change, when nobody waits.
constexpr std::chrono::seconds patience{2};

}  // namespace

struct GnomeScreen::Callbacks {
    static void changed(GDBusConnection* /*bus*/, const char* /*sender*/, const char* /*path*/,
                        const char* /*interface*/, const char* /*signal*/, GVariant* /*arguments*/, gpointer data) {
        auto& self = *static_cast<GnomeScreen*>(data);
        self.isLayoutStale_ = true;
        self.layoutTask_ = LoopSource::whenIdle([&self] { self.refreshLayout(Clock::now() + patience); });
    }
};

GnomeScreen::GnomeScreen(GObjectPointer<GDBusConnection> bus, ShellExtension& extension)
    : bus_(std::move(bus)),
      extension_(extension),
      changes_(g_dbus_connection_signal_subscribe(bus_.get(), service, service, "MonitorsChanged", path, nullptr,
                                                  G_DBUS_SIGNAL_FLAGS_NONE, &Callbacks::changed, this, nullptr)),
      displays_(layout_, [this] { refreshLayout(Clock::now() + readingTime); }) {
    refreshLayout(Clock::now() + patience);
}

GnomeScreen::~GnomeScreen() {
    g_dbus_connection_signal_unsubscribe(bus_.get(), changes_);
}

void GnomeScreen::refreshLayout(Clock::time_point deadline) {
    if (!isLayoutStale_) {
        return;
    }
    const auto state = backend::callUntil(deadline, bus_.get(), {service, path, service, "GetCurrentState"}, nullptr,
                                          displayStateType);
    if (!state) {
        return;
    }
    isLayoutStale_ = false;
    auto outputs = outputsOf(state.get());
    for (wayland::OutputDescription& output : outputs) {
        output.edid = wayland::edidIdentityOfConnector(output.name);
    }
    layout_ = wayland::layoutOfOutputs(std::move(outputs));
    freshPointer_.reset();
}

std::optional<CGEvent> GnomeScreen::CGEventCreate() {
    const auto deadline = Clock::now() + readingTime;
    // Another layout has the pointer elsewhere: then the place that a key brought does not count.
    refreshLayout(deadline);
    if (!freshPointer_) {
        if (const auto answer = extension_.ask("GetPointer", nullptr, "(dd)", deadline)) {
            wayland::LayoutPoint place;
            g_variant_get(answer.get(), "(dd)", &place.x, &place.y);
            takePlace(place);
        }
    }
    return freshPointer_ ? std::optional(CGEvent{*freshPointer_}) : std::nullopt;
}

void GnomeScreen::takePlace(wayland::LayoutPoint place) {
    freshPointer_ = CGPoint{place.x - layout_.originX, place.y - layout_.originY};
}

void GnomeScreen::CGWarpMouseCursorPosition(CGPoint position) {
    freshPointer_.reset();
    if (std::isfinite(position.x) && std::isfinite(position.y)) {
        extension_.tell("Warp", g_variant_new("(dd)", position.x + layout_.originX, position.y + layout_.originY));
    }
}

}  // namespace vantrel::gnome
