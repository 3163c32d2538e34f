#include "helpers/messages/Wayland/Compositor.hpp"

#include <algorithm>
#include <utility>

namespace vantrel::overlay {

namespace {

constexpr std::uint32_t seatVersion = 5;
constexpr std::uint32_t outputVersion = 3;

}  // namespace

struct Compositor::Callbacks {
    static void added(void* data, wl_registry* /*registry*/, std::uint32_t name, const char* interface,
                      std::uint32_t version) {
        static_cast<Compositor*>(data)->offered(name, interface, version);
    }
    static void removed(void* data, wl_registry* /*registry*/, std::uint32_t name) {
        static_cast<Compositor*>(data)->outputs_.remove(name);
    }

    static constexpr wl_registry_listener registry{.global = added, .global_remove = removed};
};

std::unique_ptr<Compositor> Compositor::connect() {
    Handle<wl_display> display(wl_display_connect(nullptr));
    if (!display) {
        return nullptr;
    }
    std::unique_ptr<Compositor> self(new Compositor(std::move(display)));  // NOLINT: private constructor
    wl_display_roundtrip(self->display());
    if (!self->compositor_ || !self->subcompositor_ || !self->shm_ || !self->viewporter_ || !self->outputManager_ ||
        !self->layerShell_) {
        return nullptr;
    }
    for (const auto& [name, version] : std::exchange(self->earlyOutputs_, {})) {
        self->offered(name, wl_output_interface.name, version);
    }
    // The displays tell of themselves.
    wl_display_roundtrip(self->display());
    return self;
}

Compositor::Compositor(Handle<wl_display> display)
    : display_(std::move(display)), registry_(wl_display_get_registry(display_.get())) {
    wl_registry_add_listener(registry_.get(), &Callbacks::registry, this);
}

void Compositor::offered(std::uint32_t name, std::string_view interface, std::uint32_t version) {
    const auto bind = [&](const wl_interface& wanted, std::uint32_t mostVersion) {
        return wl_registry_bind(registry_.get(), name, &wanted, std::min(version, mostVersion));
    };
    const auto take = [&](auto& handle, const wl_interface& wanted, std::uint32_t mostVersion) {
        if (!handle && interface == wanted.name) {
            using Object = typename std::remove_reference_t<decltype(handle)>::element_type;
            handle.reset(static_cast<Object*>(bind(wanted, mostVersion)));
        }
    };
    take(compositor_, wl_compositor_interface, 4);
    take(subcompositor_, wl_subcompositor_interface, 1);
    take(shm_, wl_shm_interface, 1);
    take(viewporter_, wp_viewporter_interface, 1);
    take(outputManager_, zxdg_output_manager_v1_interface, 3);
    take(layerShell_, zwlr_layer_shell_v1_interface, 4);
    take(pointerManager_, zwlr_virtual_pointer_manager_v1_interface, 1);
    if (interface == wl_seat_interface.name && seat_ == 0) {
        seat_ = name;
        seatVersion_ = std::min(version, seatVersion);
    }
    if (interface == wl_output_interface.name && version >= outputVersion) {
        if (outputManager_ && compositor_) {
            outputs_.add(name, Handle<wl_output>(static_cast<wl_output*>(bind(wl_output_interface, outputVersion))),
                         *outputManager_);
        } else {
            earlyOutputs_.emplace_back(name, version);
        }
    }
}

Handle<wl_seat> Compositor::bindSeat() const {
    return Handle<wl_seat>(
        seat_ == 0 ? nullptr
                   : static_cast<wl_seat*>(wl_registry_bind(registry_.get(), seat_, &wl_seat_interface, seatVersion_)));
}

void Compositor::lookUnderPointer() const {
    if (!pointerManager_) {
        return;
    }
    const Handle<zwlr_virtual_pointer_v1> device(
        zwlr_virtual_pointer_manager_v1_create_virtual_pointer(pointerManager_.get(), nullptr));
    zwlr_virtual_pointer_v1_motion(device.get(), 0, 0, 0);
    zwlr_virtual_pointer_v1_frame(device.get());
}

void Compositor::receive() {
    while (wl_display_prepare_read(display()) != 0) {
        if (wl_display_dispatch_pending(display()) < 0) {
            return;  // the connection is lost, and nothing takes these events any more
        }
    }
    wl_display_read_events(display());
    wl_display_dispatch_pending(display());
}

Milestone::Milestone(const Compositor& compositor, std::function<void()> reached)
    : reached_(std::move(reached)), callback_(wl_display_sync(compositor.display())) {
    static constexpr wl_callback_listener listener{
        .done = [](void* data, wl_callback* /*callback*/, std::uint32_t /*time*/) {
            // The milestone may end in the call.
            const auto call = std::exchange(static_cast<Milestone*>(data)->reached_, nullptr);
            call();
        }};
    wl_callback_add_listener(callback_.get(), &listener, this);
}

}  // namespace vantrel::overlay
