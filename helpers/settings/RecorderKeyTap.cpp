#include "helpers/settings/RecorderKeyTap.hpp"

#include <utility>

#include "helpers/settings/ServerConnection.hpp"
#include "helpers/settings/X11KeyTap.hpp"
#ifdef VANTREL_WAYLAND
#include "helpers/settings/WaylandKeyTap.hpp"
#endif

namespace vantrel::qt {

class RecorderKeyTap::Monitor final : public EventMonitor {
  public:
    explicit Monitor(RecorderKeyTap& tap) : tap_(&tap) {}
    ~Monitor() override {
        if (tap_ != nullptr) {
            tap_->monitor_ = nullptr;
            tap_->handler_ = nullptr;
            tap_->stopRecording();
        }
    }
    Monitor(const Monitor&) = delete;
    Monitor& operator=(const Monitor&) = delete;

    void forgetTap() { tap_ = nullptr; }

  private:
    RecorderKeyTap* tap_;
};

std::unique_ptr<RecorderKeyTap> RecorderKeyTap::make(QWidget& window) {
    if (serverConnection() != nullptr) {
        return std::make_unique<X11KeyTap>(window);
    }
#ifdef VANTREL_WAYLAND
    return WaylandKeyTap::make(window);
#else
    return nullptr;
#endif
}

std::unique_ptr<EventMonitor> RecorderKeyTap::startRecording(std::uint32_t mask,
                                                             ShortcutRecorderButton::EventHandler handler) {
    auto monitor = std::make_unique<Monitor>(*this);
    monitor_ = monitor.get();
    mask_ = mask;
    handler_ = std::move(handler);
    return monitor;
}

void RecorderKeyTap::endRecording() {
    if (monitor_ != nullptr) {
        std::exchange(monitor_, nullptr)->forgetTap();
        handler_ = nullptr;
    }
}

bool RecorderKeyTap::deliver(const KeyEvent& event) {
    if ((mask_ & eventMask(event.type)) == 0) {
        return false;
    }
    // The handler may release the monitor, and the handler with it.
    const auto handler = handler_;
    return !handler(event).has_value();
}

}  // namespace vantrel::qt
