#include "Vantrel/Backends/X11/Tray/TrayItemPresenter.hpp"

#include <chrono>
#include <utility>

namespace vantrel::x11 {

namespace {

constexpr std::chrono::seconds graceTime(1);

}  // namespace

void TrayItemPresenter::setWanted(bool isWanted) {
    if (std::exchange(isWanted_, isWanted) == isWanted) {
        return;
    }
    if (isWanted) {
        grace_ = LoopSource::after(graceTime, [this] { join(); });
    } else {
        grace_.reset();
        tray_.reset();
    }
}

void TrayItemPresenter::join() {
    tray_ = XEmbedTray::connect({.pressed = events_.pressed, .changed = [this] { trayChanged(); }});
}

void TrayItemPresenter::trayChanged() {
    if (TrayWindow* const window = tray_->window()) {
        window->paintIcon();
    }
    events_.presenceChanged();
}

}  // namespace vantrel::x11
