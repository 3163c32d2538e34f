// Settings from a store that could not be read at launch. What it holds and what this run did since come together.
#include "Vantrel/Controller/AppDelegate.hpp"

#include "Vantrel/Controller/StoredKeys.hpp"
#include "Vantrel/Platform/DefaultsConversions.hpp"

#include <algorithm>
#include <cstdio>
#include <utility>

namespace vantrel {

namespace {

/// What to store in place of the unread value: the new form, or for want of one the unread value itself.
DefaultsValue formOr(const DefaultsValue& unread, std::optional<std::string> json) {
    return json ? DefaultsValue(DefaultsData{std::move(*json)}) : unread;
}

}  // namespace

void AppDelegate::takeInLateReading(const UserDefaults::Values& stored) {
    const KeyboardShortcut shortcutSoFar = primaryShortcut;
    // Of a key that this run has set, the store gives what it was set to.
    loadSingleValues();
    if (primaryShortcut != shortcutSoFar) {
        registerPrimaryHotKeyAtLaunch();
    }
    if (const auto found = stored.find(savedPointsKey); found != stored.end()) {
        takeInLateSavedPoints(found->second);
    }
    if (const auto found = stored.find(rememberedPositionsKey); found != stored.end()) {
        takeInLateRememberedPositions(found->second);
    }
    rebuildMenu();
    refreshPreferencesWindow();
}

void AppDelegate::takeInLateSavedPoints(const DefaultsValue& stored) {
    const auto data = dataFromDefaultsValue(stored);
    auto points = data ? decoder.decodeSavedPoints(*data) : std::nullopt;
    if (!points) {
        setAside(savedPointsKey, stored);
        return;
    }
    if (savedPointsWereCleared) {
        return;
    }
    if (savedPoints.empty()) {
        savedPoints = std::move(*points);
        return;
    }
    // A copy of the store may have come into its place, with points of this run in it.
    std::erase_if(*points, [this](const SavedPoint& point) {
        return std::ranges::find(savedPoints, point.id, &SavedPoint::id) != savedPoints.end();
    });
    // The cycle goes on where it was among the points of this run.
    savedPointIndex += static_cast<std::int64_t>(points->size());
    savedPoints.insert(savedPoints.begin(), points->begin(), points->end());
    defaults.setObject(formOr(stored, encoder.encode(savedPoints)), savedPointsKey);
}

void AppDelegate::takeInLateRememberedPositions(const DefaultsValue& stored) {
    const auto data = dataFromDefaultsValue(stored);
    auto positions = data ? decodeRememberedPositions(*data) : std::nullopt;
    if (!positions) {
        setAside(rememberedPositionsKey, stored);
        return;
    }
    const bool hasLearnt = !rememberedPositions.empty();
    rememberedPositions.merge(*positions);
    if (hasLearnt) {
        defaults.setObject(formOr(stored, encoder.encode(rememberedPositions)), rememberedPositionsKey);
    }
}

void AppDelegate::setAside(std::string_view key, const DefaultsValue& stored) {
    const std::string aside = std::string(key) + ".unreadable-" + platform_.uuids.makeUUID().uuidString();
    std::fprintf(stderr, "vantrel: the stored value of %s cannot be understood; it is kept as %s\n",
                 std::string(key).c_str(), aside.c_str());
    defaults.setObject(stored, aside);
}

}  // namespace vantrel
