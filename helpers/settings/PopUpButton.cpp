#include "helpers/settings/PopUpButton.hpp"

#include <QWheelEvent>

namespace vantrel::qt {

PopUpButton::PopUpButton() {
    // By the keyboard and by a click, not by the wheel.
    setFocusPolicy(Qt::StrongFocus);
}

void PopUpButton::wheelEvent(QWheelEvent* event) {
    // The open list is a window of its own and gets the wheel itself.
    event->ignore();
}

}  // namespace vantrel::qt
