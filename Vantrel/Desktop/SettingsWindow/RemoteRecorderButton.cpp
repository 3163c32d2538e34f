#include "Vantrel/Desktop/SettingsWindow/RemoteRecorderButton.hpp"

#include <utility>

namespace vantrel::desktop {

class RemoteRecorderButton::Monitor final : public EventMonitor {
  public:
    Monitor(RemoteRecorderButton& button, std::uint32_t mask, EventHandler handler)
        : button_(&button), mask_(mask), handler_(std::move(handler)) {}
    ~Monitor() override {
        if (button_ != nullptr) {
            button_->monitor_ = nullptr;
            button_->events_.changed();
        }
    }
    Monitor(const Monitor&) = delete;
    Monitor& operator=(const Monitor&) = delete;

    void forgetButton() { button_ = nullptr; }
    [[nodiscard]] std::uint32_t mask() const { return mask_; }
    /// A copy: the handler may end its monitor.
    [[nodiscard]] EventHandler handler() const { return handler_; }

  private:
    RemoteRecorderButton* button_;
    std::uint32_t mask_;
    EventHandler handler_;
};

RemoteRecorderButton::RemoteRecorderButton(Events events) : events_(std::move(events)) {}

RemoteRecorderButton::~RemoteRecorderButton() {
    if (monitor_ != nullptr) {
        monitor_->forgetButton();
    }
}

void RemoteRecorderButton::setDelegate(std::weak_ptr<ShortcutRecorderButtonDelegate> delegate) {
    delegate_ = std::move(delegate);
}

void RemoteRecorderButton::setTitle(const std::string& title) {
    title_ = title;
    events_.changed();
}

std::unique_ptr<EventMonitor> RemoteRecorderButton::addLocalMonitorForEvents(std::uint32_t mask, EventHandler handler) {
    auto monitor = std::make_unique<Monitor>(*this, mask, std::move(handler));
    monitor_ = monitor.get();
    events_.changed();
    return monitor;
}

std::uint32_t RemoteRecorderButton::recordedEvents() const {
    return monitor_ != nullptr ? monitor_->mask() : 0;
}

void RemoteRecorderButton::pressed() {
    if (const auto delegate = delegate_.lock()) {
        delegate->toggleRecording();
    }
}

void RemoteRecorderButton::windowShown(bool isShown) {
    isShown_ = isShown;
    if (const auto delegate = delegate_.lock()) {
        delegate->viewWillMoveToWindow(isShown);
    }
}

void RemoteRecorderButton::keyEvent(const KeyEvent& event) {
    if ((recordedEvents() & eventMask(event.type)) != 0) {
        monitor_->handler()(event);
    }
}

}  // namespace vantrel::desktop
