#include "helpers/settings/WaylandKeyTap.hpp"

#include <QApplication>
#include <QEvent>
#include <utility>

#include "Vantrel/Backends/Wayland/SeatKeymap.hpp"
#include "helpers/settings/WaylandKeyboard.hpp"

namespace vantrel::qt {

std::unique_ptr<RecorderKeyTap> WaylandKeyTap::make(QWidget& window, Events events) {
    return QGuiApplication::platformName() == "wayland" ? std::make_unique<WaylandKeyTap>(window, std::move(events))
                                                        : nullptr;
}

WaylandKeyTap::~WaylandKeyTap() {
    setRecording(false, false);
    WaylandKeyTap::letGo();
}

void WaylandKeyTap::startRecording() {
    // Before the window's own widgets and shortcuts.
    QCoreApplication::instance()->installEventFilter(this);
    if (window_.isActiveWindow()) {
        takeKeyboard();
    }
}

void WaylandKeyTap::takeKeyboard() {
    if (auto keyboard = readWaylandKeyboard()) {
        // What is down already is not told; its repeats say so of themselves.
        keys_.emplace(std::move(*keyboard), x11::KeySet());
    }
    if (!areKeysCaptured()) {
        inhibitor_.emplace(window_);
    }
    isTaken_ = true;
    // Not every compositor counts hot keys that programs ask for among its shortcuts.
    reportTaken(true);
}

void WaylandKeyTap::letGo() {
    inhibitor_.reset();
    if (std::exchange(isTaken_, false)) {
        reportTaken(false);
    }
    keys_.reset();
    if (!isRecording()) {
        QCoreApplication::instance()->removeEventFilter(this);
    }
}

bool WaylandKeyTap::eventFilter(QObject* /*watched*/, QEvent* event) {
    switch (event->type()) {
        case QEvent::KeyPress:
        case QEvent::KeyRelease:
            return keyChanged(*static_cast<QKeyEvent*>(event));
        case QEvent::ShortcutOverride:
            return keys_.has_value();
        case QEvent::ApplicationStateChange:
            if (areKeysCaptured()) {
                return false;
            }
            if (!window_.isActiveWindow()) {
                letGo();
            } else if (isRecording() && !keys_) {
                takeKeyboard();
            }
            return false;
        default:
            return false;
    }
}

/// Whether the event is swallowed.
bool WaylandKeyTap::keyChanged(const QKeyEvent& event) {
    constexpr std::uint32_t keycodes = 256;
    if (!keys_ || event.nativeScanCode() == 0 || event.nativeScanCode() >= keycodes) {
        return false;
    }
    if (event.isAutoRepeat() || areKeysCaptured()) {
        return true;
    }
    const auto keycode = static_cast<std::uint8_t>(event.nativeScanCode());
    const auto state = static_cast<std::uint16_t>(event.nativeModifiers());
    return event.type() == QEvent::KeyPress ? pressed(keycode, state) : released(keycode, state);
}

}  // namespace vantrel::qt
