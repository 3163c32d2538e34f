#include "Vantrel/Platform/Desktop/StatusItem/TrayFallback.hpp"

#include <utility>

namespace vantrel::desktop {

namespace {

constexpr guint graceTime = 1000;  // ms
// In ms: how long a tray may take to decide about a window's width. Generous, because many start at the beginning of a
// session, and harmless: a tray that gives no room shows the left end of the title meanwhile, which is the icon.
constexpr guint roomTime = 2000;

}  // namespace

TrayFallback::TrayFallback(OverlayProcess& overlay, Events events) : overlay_(overlay), events_(std::move(events)) {}

TrayFallback::~TrayFallback() {
    stopTimers();
}

void TrayFallback::stopTimers() {
    for (guint* source : {&graceSource_, &roomSource_}) {
        if (*source != 0) {
            g_source_remove(std::exchange(*source, 0));
        }
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
    stopTimers();
    tray_.reset();
    room_ = Room::unknown;
}

void TrayFallback::forgetRoom() {
    room_ = Room::unknown;
    if (roomSource_ != 0) {
        g_source_remove(std::exchange(roomSource_, 0));
    }
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
        forgetRoom();
    } else if (room_ == Room::unknown) {
        window->paintIcon();
        room_ = Room::asked;
        requestedWidth_ = 0;
        paintTitle();
    } else if (requestedWidth_ > 0 && room_ != Room::refused && window->visibleWidth() >= requestedWidth_) {
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
    const bool isOfInterest = room_ == Room::asked || room_ == Room::given;
    if (window == nullptr || window->identifier() != identifier || !isOfInterest || width <= 0 ||
        std::exchange(requestedWidth_, width) == width) {
        return;
    }
    window->requestWidth(width);
    if (room_ == Room::asked && roomSource_ == 0) {
        roomSource_ = g_timeout_add(roomTime, roomRefused, this);
    }
}

gboolean TrayFallback::roomRefused(gpointer data) {
    auto& fallback = *static_cast<TrayFallback*>(data);
    fallback.roomSource_ = 0;
    TrayWindow* window = fallback.tray_ ? fallback.tray_->window() : nullptr;
    if (window != nullptr && fallback.room_ == Room::asked) {
        fallback.room_ = Room::refused;
        window->requestWidth(window->height());
        window->paintIcon();
    }
    return G_SOURCE_REMOVE;
}

}  // namespace vantrel::desktop
