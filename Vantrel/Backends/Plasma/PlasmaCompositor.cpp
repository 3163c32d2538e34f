#include "Vantrel/Backends/Plasma/PlasmaCompositor.hpp"

#include <utility>

#include "Vantrel/Handles/SessionBusOffer.hpp"

namespace vantrel::plasma {

std::unique_ptr<wayland::Compositor> PlasmaCompositor::find(const wayland::CompositorAddress& address) {
    auto input = FakeInput::bind(address.registry);
    return input ? std::unique_ptr<PlasmaCompositor>(new PlasmaCompositor(std::move(input), address)) : nullptr;
}

PlasmaCompositor::PlasmaCompositor(std::unique_ptr<FakeInput> input, const wayland::CompositorAddress& address)
    : input_(std::move(input)), address_(address) {}

backend::HotKeyBinder* PlasmaCompositor::hotKeys() {
    if (!isSessionBusOffered()) {
        return nullptr;
    }
    GObjectPointer<GDBusConnection> bus(g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr));
    if (!bus) {
        return nullptr;
    }
    hotKeys_.emplace(std::move(bus), address_.registry, address_.readKeymap);
    return &*hotKeys_;
}

bool PlasmaCompositor::warpPointer(const wayland::Warp& warp) {
    input_->warp(warp);
    address_.connection.flush();
    return true;
}

bool PlasmaCompositor::lookUnderPointer() {
    input_->stir();
    address_.connection.flush();
    return true;
}

}  // namespace vantrel::plasma
