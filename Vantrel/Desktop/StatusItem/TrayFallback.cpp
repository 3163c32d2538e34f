#include "Vantrel/Desktop/StatusItem/TrayFallback.hpp"

#include <utility>

namespace vantrel::desktop {

namespace {

constexpr guint graceTime = 1000;  // ms

}  // namespace

TrayFallback::TrayFallback(OverlayProcess& overlay, Events events) : overlay_(overlay), events_(std::move(events)) {}

TrayFallback::~TrayFallback() {
    stopGrace();
}

void TrayFallback::stopGrace() {
    if (graceSource_ != 0) {
        g_source_remove(std::exchange(graceSource_, 0));
    }
}

void TrayFallback::setWanted(bool isWanted) {
    if (std::exchange(isWanted_, isWanted) == isWanted) {
        return;
    }
    if (isWanted) {
        graceSource_ = g_timeout_add(graceTime, graceEnded, this);
        return;
    }
    stopGrace();
    tray_.reset();
    room_ = Room::unknown;
}

gboolean TrayFallback::graceEnded(gpointer data) {
    auto& fallback = *static_cast<TrayFallback*>(data);
    fallback.graceSource_ = 0;
    fallback.tray_ =
        XEmbedTray::connect({.pressed = fallback.events_.pressed, .changed = [&fallback] { fallback.trayChanged(); }});
    return G_SOURCE_REMOVE;
}

void TrayFallback::setTitle(const std::string& title, const ItemFont& font) {
    title_ = title;
    font_ = font;
    if (showsTitle()) {
        paintTitle();
    }
}

void TrayFallback::trayChanged() {
    TrayWindow* window = tray_->window();
    if (window == nullptr) {
        room_ = Room::unknown;
    } else if (room_ == Room::unknown) {
        window->paintIcon();
        room_ = Room::asked;
        requestedWidth_ = 0;
        paintTitle();
    } else if (requestedWidth_ > 0 && window->visibleWidth() >= requestedWidth_) {
        room_ = Room::given;
        paintTitle();
    } else {
        window->paintIcon();
    }
    events_.presenceChanged();
}

void TrayFallback::paintTitle() {
    overlay_.paintWindow(tray_->window()->identifier(), title_, font_);
}

void TrayFallback::windowPainted(std::uint32_t identifier, int width) {
    TrayWindow* window = tray_ ? tray_->window() : nullptr;
    if (window == nullptr || window->identifier() != identifier || width <= 0 ||
        std::exchange(requestedWidth_, width) == width) {
        return;
    }
    window->requestWidth(width);
}

}  // namespace vantrel::desktop
