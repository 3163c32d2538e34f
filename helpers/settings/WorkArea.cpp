#include "helpers/settings/WorkArea.hpp"

#include <QScreen>
#include <QStyle>
#include <algorithm>

namespace vantrel::qt {

namespace {

QSize frameSize(const QWidget& window) {
    const QSize known = window.frameGeometry().size() - window.size();
    return known.expandedTo(QSize(0, window.style()->pixelMetric(QStyle::PM_TitleBarHeight)));
}

/// Where there is no room (a display that is tiny, or not told of yet) the window is one that can be seen and scrolled.
constexpr QSize leastRoom{300, 160};

/// The place for `length` from `first` on, so that it ends within the area; at its begin when it is too long.
int placeWithin(int first, int length, int areaFirst, int areaLength) {
    return std::max(areaFirst, std::min(first, areaFirst + areaLength - length));
}

}  // namespace

QSize WorkArea::roomFor(const QWidget& window) {
    return (window.screen()->availableGeometry().size() - frameSize(window)).expandedTo(leastRoom);
}

void WorkArea::centre(QWidget& window) {
    QRect inside = window.rect();
    inside.moveCenter(window.screen()->availableGeometry().center());
    window.move(inside.topLeft());
    bringInto(window);
}

void WorkArea::bringInto(QWidget& window) {
    const QRect area = window.screen()->availableGeometry();
    const QSize size = window.size() + frameSize(window);
    const QPoint place(placeWithin(window.x(), size.width(), area.x(), area.width()),
                       placeWithin(window.y(), size.height(), area.y(), area.height()));
    if (place != window.pos()) {
        window.move(place);
    }
}

}  // namespace vantrel::qt
