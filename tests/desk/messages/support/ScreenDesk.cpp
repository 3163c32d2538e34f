#include "tests/desk/messages/support/ScreenDesk.hpp"

#include <utility>

namespace vantrel::desk {

ScreenDesk::ScreenDesk(std::unique_ptr<WaylandDesk> desk)
    : session(std::move(desk)), camera(session->compositor().socket()) {}

void ScreenDesk::rememberTheScreen() {
    pointerBefore = pointer;
    for (const char* const output : {mainOutput, secondOutput}) {
        before.insert_or_assign(output, camera.take(output));
    }
}

std::optional<overlay::Rect> ScreenDesk::seenOn(const std::string& output) {
    // Far larger than any pointer.
    constexpr int reach = 40;
    const LayoutPoint corner = output == mainOutput ? LayoutPoint{.x = 0, .y = 0} : secondCorner;
    const auto around = [&](LayoutPoint point) {
        return overlay::Rect{.x = static_cast<int>(point.x - corner.x) - reach,
                             .y = static_cast<int>(point.y - corner.y) - reach,
                             .width = 2 * reach,
                             .height = 2 * reach};
    };
    return difference(before.at(output), camera.take(output), {around(pointerBefore), around(pointer)});
}

bool ScreenDesk::waitUntilSeenOn(const std::string& output) {
    return waitUntil([&] { return seenOn(output).has_value(); });
}

bool ScreenDesk::waitUntilNothingIsSeen() {
    return waitUntil([&] { return !seenOn(mainOutput) && !seenOn(secondOutput); });
}

void ScreenDesk::movePointer(LayoutPoint point) {
    session->person().moveTo(point);
    pointer = point;
}

}  // namespace vantrel::desk
