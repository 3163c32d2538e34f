#include "Vantrel/Backends/X11/Tray/TrayItemPresenter.hpp"

#include <chrono>
#include <utility>

namespace vantrel::x11 {

namespace {

constexpr std::chrono::seconds graceTime(1);

}  // namespace

TrayItemPresenter::TrayItemPresenter(Events events)
    : events_(std::move(events)), grace_([this] {
          tray_ = XEmbedTray::connect({.pressed = events_.pressed, .changed = [this] { trayChanged(); }});
      }) {}

void TrayItemPresenter::setWanted(bool isWanted) {
    if (std::exchange(isWanted_, isWanted) == isWanted) {
        return;
    }
    if (isWanted) {
        grace_.schedule(graceTime);
    } else {
        grace_.cancel();
        tray_.reset();
    }
}

void TrayItemPresenter::trayChanged() {
    if (TrayWindow* const window = tray_->window()) {
        window->paintIcon();
    }
    events_.presenceChanged();
}

}  // namespace vantrel::x11
