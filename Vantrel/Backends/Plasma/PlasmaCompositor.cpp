#include "Vantrel/Backends/Plasma/PlasmaCompositor.hpp"

#include <utility>

#include "Vantrel/Handles/SessionBusOffer.hpp"

namespace vantrel::plasma {

std::unique_ptr<wayland::Compositor> PlasmaCompositor::find(const wayland::CompositorAddress& address) {
    auto input = FakeInput::bind(address.registry);
    return input ? std::unique_ptr<PlasmaCompositor>(new PlasmaCompositor(std::move(input), address)) : nullptr;
}

PlasmaCompositor::PlasmaCompositor(std::unique_ptr<FakeInput> input, const wayland::CompositorAddress& address)
    : input_(std::move(input)),
      address_(address),
      bus_(isSessionBusOffered() ? g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr) : nullptr) {
    if (bus_) {
        script_.emplace(shareObject(bus_.get()));
    }
}

backend::HotKeyBinder* PlasmaCompositor::hotKeys() {
    if (!bus_) {
        return nullptr;
    }
    hotKeys_.emplace(shareObject(bus_.get()), address_.registry, address_.readKeymap);
    return &*hotKeys_;
}

std::optional<wayland::LayoutPoint> PlasmaCompositor::readHeldPointer(wayland::Clock::time_point deadline) {
    return script_ ? script_->ask(deadline) : std::nullopt;
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
