#include "helpers/settings/ScrollingContent.hpp"

#include <QApplication>
#include <QEvent>
#include <QScrollBar>
#include <algorithm>

#include "helpers/settings/QtObjects.hpp"

namespace vantrel::qt {

namespace {

/// Between what has the keyboard and the edge that it was scrolled in from.
constexpr int distanceFromEdge = 16;

}  // namespace

ScrollingContent::ScrollingContent() : stack_(makeOwnedByParent<QVBoxLayout>()) {
    auto& content = makeOwnedByParent<QWidget>();
    content.setLayout(&stack_);
    setWidget(&content);
    setWidgetResizable(true);
    setFrameShape(QFrame::NoFrame);
    // The keyboard goes from control to control.
    setFocusPolicy(Qt::NoFocus);
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget* /*old*/, QWidget* now) {
        if (now != nullptr && widget()->isAncestorOf(now)) {
            showAllOf(*now);
        }
    });
}

QSize ScrollingContent::neededSize(int width) const {
    const int neededWidth = std::max(width, stack_.totalMinimumSize().width());
    return {neededWidth, stack_.totalHeightForWidth(neededWidth)};
}

int ScrollingContent::scrollBarWidth() const {
    return verticalScrollBar()->sizeHint().width();
}

void ScrollingContent::showAllOf(const QWidget& control) {
    // Not ensureWidgetVisible(): of a list it shows the current row.
    const QRect place(control.mapTo(widget(), QPoint(0, 0)), control.size());
    ensureVisible(place.center().x(), place.center().y(), place.width() / 2 + distanceFromEdge,
                  place.height() / 2 + distanceFromEdge);
}

bool ScrollingContent::event(QEvent* event) {
    const bool isHandled = QScrollArea::event(event);
    if (event->type() == QEvent::LayoutRequest) {
        // Qt takes it for the scroll area's own affair; the window may want to grow.
        updateGeometry();
    }
    return isHandled;
}

}  // namespace vantrel::qt
