#include "Vantrel/Backends/Wayland/WaylandScreen.hpp"

#include <cmath>
#include <utility>

#include "Vantrel/Backends/Wayland/ConnectorEdid.hpp"

namespace vantrel::wayland {

namespace {

/// What is left of the 30 ms for a jump stays for everything else.
constexpr std::chrono::milliseconds readingTime{25};

/// How long after a warp the outputs may still show the pointer where it was: some pictures' time.
constexpr std::chrono::milliseconds showingTime{100};

/// Compositors calculate where the pointer is from fractions of the layout, and may cut what they tell of it down to
/// the protocol's 256ths of a point. So it is sent a quarter of these too far: else it would go back by one with each
/// jump.
constexpr double lead = 1.0 / 1024;

}  // namespace

WaylandScreen::WaylandScreen(WaylandConnection& connection, const Outputs& outputs, OverlayReader& reader,
                             CursorSessions& sessions, VirtualPointers& pointers, Compositor* compositor)
    : connection_(connection),
      tracked_(outputs),
      reader_(reader),
      sessions_(sessions),
      pointers_(pointers),
      compositor_(compositor) {}

void WaylandScreen::refreshLayout() {
    connection_.drain();
    if (!isLayoutStale()) {
        return;
    }
    generation_ = tracked_.generation();
    outputs_ = tracked_.current();
    std::vector<OutputDescription> descriptions;
    for (Output& output : outputs_) {
        output.description.edid = edidIdentityOfConnector(output.description.name);
        descriptions.push_back(output.description);
    }
    corner_ = cornerOfOutputs(descriptions);
    layout_ = layoutOfOutputs(std::move(descriptions));
}

std::optional<CGPoint> WaylandScreen::pointer() {
    if (freshPointer_) {
        return freshPointer_;
    }
    const Clock::time_point deadline = Clock::now() + readingTime;
    refreshLayout();
    // What a compositor is asked over its own door must not overtake a warp that went by Wayland.
    if (std::exchange(isWarpUnderway_, false) && compositor_ != nullptr) {
        connection_.synchronize(deadline);
    }
    auto place = compositor_ == nullptr ? std::nullopt : compositor_->readPointer(deadline);
    if (!place) {
        if (compositor_ != nullptr) {
            compositor_->settleWarps(deadline);
        }
        place = reader_.read(outputs_, deadline);
        if (!place && compositor_ != nullptr) {
            place = compositor_->readHeldPointer(deadline);
        }
        if (!place && Clock::now() - warpTime_ > showingTime) {
            place = sessions_.read(outputs_, deadline);
        }
    }
    if (place) {
        freshPointer_ = CGPoint{place->x - layout_.originX, place->y - layout_.originY};
    }
    return freshPointer_;
}

void WaylandScreen::warpPointer(CGPoint position) {
    const auto departure = std::exchange(freshPointer_, std::nullopt);
    warpTime_ = Clock::now();
    if (!std::isfinite(position.x) || !std::isfinite(position.y) || outputs_.empty()) {
        return;
    }
    const LayoutPoint place{position.x + layout_.originX + lead, position.y + layout_.originY + lead};
    Warp warp{.from = std::nullopt, .to = place, .outputs = outputs_, .corner = corner_};
    if (departure) {
        warp.from = LayoutPoint{departure->x + layout_.originX, departure->y + layout_.originY};
    }
    if (compositor_ == nullptr || !compositor_->warpPointer(warp)) {
        pointers_.warp(outputs_, place);
        connection_.flush();
        isWarpUnderway_ = true;
    }
}

}  // namespace vantrel::wayland
