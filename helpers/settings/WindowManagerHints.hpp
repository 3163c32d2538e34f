#pragma once

#include <QWidget>

namespace vantrel::qt {

/// What Qt does not ask of a window manager by itself (Extended Window Manager Hints). On other windowing systems than
/// X nothing happens.
struct WindowManagerHints {
    WindowManagerHints() = delete;

    /// Waits, for a moment at most, until the window manager has let go of a window that was just hidden: shown again
    /// before that, the window would stay lost between the two (ICCCM, "Changing Window State").
    static void waitUntilWithdrawn(QWidget& window);

    /// Keeps the window out of task bars and pagers. To be repeated before each showing: a hidden window loses it.
    static void skipTaskBar(QWidget& window);

    /// Brings the shown window onto the present workspace, to the front, and gives it the keyboard. Asked as a pager
    /// asks, on the person's behalf: a plain request of a program whose last input is long ago is often refused.
    static void bringToFront(QWidget& window);
};

}  // namespace vantrel::qt
