#include "Vantrel/Backends/Wayland/WaylandConnection.hpp"

#include <cerrno>
#include <cstdarg>
#include <cstdlib>
#include <utility>

namespace vantrel::wayland {

std::unique_ptr<WaylandConnection> WaylandConnection::open(std::string& error) {
    // The library would write lines of its own on stderr.
    wl_log_set_handler_client([](const char* /*format*/, va_list /*arguments*/) {});
    WaylandPointer<wl_display> display(wl_display_connect(nullptr));
    if (!display) {
        const char* const name = std::getenv("WAYLAND_DISPLAY");
        error = std::string("cannot connect to the Wayland display ") + (name == nullptr ? "wayland-0" : name);
        return nullptr;
    }
    // The constructor is private, so make_unique cannot reach it.
    return std::unique_ptr<WaylandConnection>(new WaylandConnection(std::move(display)));
}

bool WaylandConnection::isRefused() const {
    return wl_display_get_error(get()) == EPROTO;
}

std::string WaylandConnection::endReason() const {
    if (!isRefused()) {
        return "the Wayland compositor went away";
    }
    const wl_interface* interface = nullptr;
    const std::uint32_t code = wl_display_get_protocol_error(get(), &interface, nullptr);
    return "the Wayland compositor ended the connection: error " + std::to_string(code) + " of " +
           (interface == nullptr ? "an object that is gone" : interface->name);
}

bool WaylandConnection::flush() {
    return wl_display_flush(get()) >= 0 || errno != EAGAIN;
}

bool WaylandConnection::hasQueuedEvents() const {
    // Only one thread reads, so nothing needs to be announced for longer than this question.
    if (wl_display_prepare_read(get()) != 0) {
        return true;
    }
    wl_display_cancel_read(get());
    return false;
}

void WaylandConnection::dispatchQueued() {
    if (wl_display_dispatch_pending(get()) < 0) {
        isLost_ = true;
    }
}

void WaylandConnection::drain() {
    waitFor([] { return false; }, Clock::time_point{});
}

bool WaylandConnection::waitFor(const std::function<bool()>& condition, Clock::time_point deadline) {
    // A compositor that never stops talking holds nobody up: what is left is read in the loop's next turn.
    constexpr int mostReadsAfterwards = 64;
    int readsAfterwards = 0;
    dispatchQueued();
    flush();
    while (!condition() && !isLost()) {
        readsAfterwards += Clock::now() >= deadline ? 1 : 0;
        if (readsAfterwards > mostReadsAfterwards || !waitUntilReadable(wl_display_get_fd(get()), deadline)) {
            return false;
        }
        while (wl_display_prepare_read(get()) != 0) {
            dispatchQueued();
        }
        if (wl_display_read_events(get()) < 0) {
            isLost_ = true;
        }
        dispatchQueued();
        flush();
    }
    return condition();
}

bool WaylandConnection::synchronize(Clock::time_point deadline, const std::function<bool()>& isEnough) {
    bool isDone = false;
    static constexpr wl_callback_listener listener{
        .done = [](void* data, wl_callback* /*callback*/, std::uint32_t /*time*/) {
            *static_cast<bool*>(data) = true;
        }};
    const WaylandPointer<wl_callback> callback(wl_display_sync(get()));
    wl_callback_add_listener(callback.get(), &listener, &isDone);
    return waitFor([&] { return isDone || isEnough(); }, deadline);
}

}  // namespace vantrel::wayland
