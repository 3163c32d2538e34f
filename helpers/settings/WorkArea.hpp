#pragma once

#include <QSize>
#include <QWidget>

namespace vantrel::qt {

/// The part of its screen that a top-level window may take, without panels and the like.
struct WorkArea {
    WorkArea() = delete;

    /// The largest inside with which the window fits, the window manager's frame included: its frame where that is
    /// known already, and as long as it is not, room for an ordinary one. At least 300 x 160.
    static QSize roomFor(const QWidget& window);

    /// Puts the window into the middle of a screen's work area.
    static void centre(QWidget& window);

    /// Moves the window, which is no larger than its room, as far as it takes to have all of it in the work area.
    static void bringInto(QWidget& window);
};

}  // namespace vantrel::qt
