#include "Vantrel/Controller/AppDelegate.hpp"

#include "VantrelCore/TeleportPlanner.hpp"

#include <algorithm>

namespace vantrel {

void AppDelegate::teleportPrimary() {
    assertMainThread("teleportPrimary");
    if (mode == VantrelMode::manual) {
        teleportSavedPoint();
    } else {
        teleportDisplay(TeleportDirection::next);
    }
}

void AppDelegate::teleportNextDisplay() {
    assertMainThread("teleportNextDisplay");
    teleportDisplay(TeleportDirection::next);
}

void AppDelegate::teleportPreviousDisplay() {
    assertMainThread("teleportPreviousDisplay");
    teleportDisplay(TeleportDirection::previous);
}

void AppDelegate::teleportDisplay(TeleportDirection direction) {
    const std::vector<DisplaySnapshot> displays = activeDisplays();
    if (displays.empty()) {
        flashStatus("No display");
        return;
    }
    const auto pointer = readPointer();
    if (!pointer) {
        flashStatus("No cursor");
        return;
    }
    // The departure is stored before the target is chosen: on a single display the target is where the pointer is, and
    // a crash in mid-jump cannot lose the position.
    if (const auto display = currentDisplay(*pointer, displays)) {
        rememberedPositions.insert_or_assign(display->id, *pointer);
        saveRememberedPositions();
    }
    teleport(TeleportPlanner::targetPoint(*pointer, displays, direction, rememberedPositions));
}

void AppDelegate::teleportSavedPoint() {
    assertMainThread("teleportSavedPoint");
    if (savedPoints.empty()) {
        flashStatus("No points");
        return;
    }
    const auto count = static_cast<std::int64_t>(savedPoints.size());
    // Points may have been deleted since the last jump.
    if (savedPointIndex >= count) {
        savedPointIndex = 0;
    }
    const SavedPoint& savedPoint = savedPoints[static_cast<std::size_t>(savedPointIndex)];
    savedPointIndex = savedPointIndex + 1 == count ? 0 : savedPointIndex + 1;
    movePointer(savedPoint.point);
    flashStatus(savedPoint.name);
}

void AppDelegate::saveCurrentPoint() {
    assertMainThread("saveCurrentPoint");
    const auto pointer = readPointer();
    if (!pointer) {
        flashStatus("No cursor");
        return;
    }
    SavedPoint savedPoint;
    if (const auto display = currentDisplay(*pointer, activeDisplays())) {
        savedPoint.displayID = display->id;
    }
    savedPoint.id = platform_.uuids.makeUUID();
    savedPoint.name = "Point " + std::to_string(savedPoints.size() + 1);
    savedPoint.point = *pointer;
    savedPointIndex = static_cast<std::int64_t>(savedPoints.size());
    savedPoints.push_back(std::move(savedPoint));
    saveSavedPoints();
    rebuildMenu();
    refreshPreferencesWindow();
    if (soundEnabled) {
        playFeedbackSound();
    }
    flashStatus("Saved");
}

void AppDelegate::clearSavedPoints() {
    assertMainThread("clearSavedPoints");
    savedPoints.clear();
    savedPointsWereCleared = true;
    savedPointIndex = 0;
    saveSavedPoints();
    rebuildMenu();
    refreshPreferencesWindow();
    flashStatus("Cleared");
}

std::vector<DisplaySnapshot> AppDelegate::activeDisplays() {
    std::uint32_t count = 0;
    if (platform_.displays.CGGetActiveDisplayList({}, count) != 0 || count == 0) {
        return {};
    }
    std::vector<CGDirectDisplayID> identifiers(count);
    if (platform_.displays.CGGetActiveDisplayList(identifiers, count) != 0) {
        return {};
    }
    // The layout may have changed between the two calls.
    identifiers.resize(std::min<std::size_t>(count, identifiers.size()));
    std::vector<DisplaySnapshot> displays;
    displays.reserve(identifiers.size());
    for (const CGDirectDisplayID identifier : identifiers) {
        const CGRect bounds = platform_.displays.CGDisplayBounds(identifier);
        if (CGRectGetWidth(bounds) > 0 && CGRectGetHeight(bounds) > 0) {
            displays.emplace_back(identifier, bounds);
        }
    }
    return displays;
}

std::optional<VantrelPoint> AppDelegate::readPointer() {
    const auto event = platform_.pointerReader.CGEventCreate();
    if (!event) {
        return std::nullopt;
    }
    return VantrelPoint(platform_.pointerReader.CGEventGetLocation(*event));
}

std::optional<DisplaySnapshot> AppDelegate::currentDisplay(const VantrelPoint& pointer,
                                                           const std::vector<DisplaySnapshot>& displays) {
    const std::vector<DisplaySnapshot> sorted = TeleportPlanner::sortedDisplays(displays);
    auto index = TeleportPlanner::displayIndex(pointer, sorted);
    if (!index) {
        index = TeleportPlanner::nearestDisplayIndex(pointer, sorted);
    }
    if (!index) {
        return std::nullopt;
    }
    return sorted[*index];
}

void AppDelegate::teleport(const std::optional<VantrelPoint>& target) {
    if (target) {
        movePointer(*target);
    } else {
        flashStatus("No target");
    }
}

void AppDelegate::movePointer(const VantrelPoint& target) {
    if (animationStyle == AnimationStyle::glide) {
        glidePointer(target);
    } else {
        movePointerAtOnce(target);
    }
}

void AppDelegate::movePointerAtOnce(const VantrelPoint& target) {
    platform_.pointerWarper.CGWarpMouseCursorPosition(target.cgPoint());
    platform_.pointerWarper.CGAssociateMouseAndMouseCursorPosition(true);
    if (soundEnabled) {
        playFeedbackSound();
    }
}

void AppDelegate::playFeedbackSound() {
    platform_.sounds.play("Pop");
}

}  // namespace vantrel
