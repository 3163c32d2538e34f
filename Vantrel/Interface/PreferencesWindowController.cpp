#include "Vantrel/Interface/PreferencesWindowController.hpp"

#include "Vantrel/Interface/SavedPointTexts.hpp"
#include "Vantrel/Platform/FatalError.hpp"

#include <algorithm>
#include <utility>

namespace vantrel {

namespace {

constexpr const auto& modes = allModes;
constexpr const auto& animations = allAnimationStyles;

template <typename Values>
std::vector<std::string> titles(const Values& values) {
    std::vector<std::string> result;
    result.reserve(values.size());
    for (const auto value : values) {
        result.emplace_back(title(value));
    }
    return result;
}

/// The pop-up's chosen value; none when nothing in the list is chosen.
template <typename Values>
auto selectedValue(const PreferencesWindowView& window, PreferencesPopUp popUp, const Values& values)
    -> std::optional<typename Values::value_type> {
    const std::int64_t index = window.indexOfSelectedItem(popUp);
    if (index < 0 || static_cast<std::size_t>(index) >= values.size()) {
        return std::nullopt;
    }
    return values[static_cast<std::size_t>(index)];
}

template <typename Values>
void select(PreferencesWindowView& window, PreferencesPopUp popUp, const Values& values,
            typename Values::value_type value) {
    const auto* const found = std::find(values.begin(), values.end(), value);
    if (found != values.end()) {
        window.selectItem(popUp, static_cast<std::size_t>(found - values.begin()));
    }
}

}  // namespace

std::shared_ptr<PreferencesWindowController> PreferencesWindowController::create(
    std::unique_ptr<PreferencesWindowView> window, const MainQueue& mainQueue) {
    auto controller = std::make_shared<PreferencesWindowController>(CreationKey(), std::move(window), mainQueue);
    controller->shortcutRecorder_->setRecorderDelegate(controller);
    controller->window_->setDelegate(controller);
    return controller;
}

void PreferencesWindowController::initWithCoder() {
    fatalError("init(coder:) has not been implemented");
}

void PreferencesWindowController::initWithWindow() {
    fatalError("init(window:) has not been implemented");
}

PreferencesWindowController::PreferencesWindowController(CreationKey /*key*/,
                                                         std::unique_ptr<PreferencesWindowView> window,
                                                         const MainQueue& mainQueue)
    : mainQueue_(mainQueue),
      window_(std::move(window)),
      shortcutRecorder_(ShortcutRecorderView::create(window_->shortcutRecorderButton())) {
    window_->setTitles(PreferencesPopUp::mode, titles(modes));
    window_->setTitles(PreferencesPopUp::animation, titles(animations));
}

PreferencesWindowController::~PreferencesWindowController() = default;

void PreferencesWindowController::setDelegate(std::weak_ptr<PreferencesWindowControllerDelegate> delegate) {
    delegate_ = std::move(delegate);
}

void PreferencesWindowController::refresh(PreferencesWindowState state) {
    assertMainThread("refresh");
    shortcutRecorder_->setShortcut(state.primaryShortcut);
    window_->setShortcutStatus(state.primaryShortcutStatusText, state.primaryShortcutIsRegistered
                                                                    ? SemanticColor::secondaryLabel
                                                                    : SemanticColor::systemRed);
    select(*window_, PreferencesPopUp::mode, modes, state.mode);
    select(*window_, PreferencesPopUp::animation, animations, state.animationStyle);
    window_->setSoundChecked(state.soundEnabled);
    savedPoints_ = std::move(state.savedPoints);
    const bool isEmpty = savedPoints_.empty();
    window_->setSavedPointsSummary(savedPointsSummary(savedPoints_.size()));
    window_->setSavedPointsEmptyLabelHidden(!isEmpty);
    window_->setSavedPointsTableHidden(isEmpty);
    window_->setClearSavedPointsEnabled(!isEmpty);
    window_->reloadSavedPoints();
}

void PreferencesWindowController::showWindow() {
    window_->showWindow();
}

void PreferencesWindowController::resetShortcut() {
    assertMainThread("resetShortcut");
    if (const auto delegate = delegate_.lock()) {
        delegate->preferencesDidResetShortcut();
    }
}

void PreferencesWindowController::modeChanged() {
    assertMainThread("modeChanged");
    const auto delegate = delegate_.lock();
    if (!delegate) {
        return;
    }
    if (const auto mode = selectedValue(*window_, PreferencesPopUp::mode, modes)) {
        delegate->preferencesDidChangeMode(*mode);
    }
}

void PreferencesWindowController::animationChanged() {
    assertMainThread("animationChanged");
    const auto delegate = delegate_.lock();
    if (!delegate) {
        return;
    }
    if (const auto style = selectedValue(*window_, PreferencesPopUp::animation, animations)) {
        delegate->preferencesDidChangeAnimation(*style);
    }
}

void PreferencesWindowController::soundChanged() {
    assertMainThread("soundChanged");
    if (const auto delegate = delegate_.lock()) {
        delegate->preferencesDidChangeSound(window_->isSoundChecked());
    }
}

void PreferencesWindowController::clearSavedPoints() {
    assertMainThread("clearSavedPoints");
    if (const auto delegate = delegate_.lock()) {
        delegate->preferencesDidClearSavedPoints();
    }
}

void PreferencesWindowController::windowFailed(const std::string& problem, const std::string& flashText) {
    assertMainThread("windowFailed");
    if (const auto delegate = delegate_.lock()) {
        delegate->preferencesWindowFailed(problem, flashText);
    }
}

std::size_t PreferencesWindowController::numberOfRows() const {
    assertMainThread("numberOfRows");
    return savedPoints_.size();
}

std::optional<std::string> PreferencesWindowController::textForRow(std::int64_t row) const {
    assertMainThread("textForRow");
    if (row < 0 || static_cast<std::size_t>(row) >= savedPoints_.size()) {
        return std::nullopt;
    }
    return savedPointRowText(savedPoints_[static_cast<std::size_t>(row)]);
}

void PreferencesWindowController::shortcutRecorderViewDidRecord(ShortcutRecorderView& /*view*/,
                                                                const KeyboardShortcut& shortcut) {
    assertMainThread("shortcutRecorderViewDidRecord");
    window_->setShortcutStatus("Checking " + shortcut.displayText() + "...", SemanticColor::secondaryLabel);
    if (const auto delegate = delegate_.lock()) {
        delegate->preferencesDidRecordShortcut(shortcut);
    }
}

void PreferencesWindowController::shortcutRecorderViewDidReject(ShortcutRecorderView& /*view*/,
                                                                const std::string& message) {
    assertMainThread("shortcutRecorderViewDidReject");
    window_->setShortcutStatus(message, SemanticColor::systemRed);
}

void PreferencesWindowController::shortcutRecorderViewDidCancel(ShortcutRecorderView& /*view*/) {
    assertMainThread("shortcutRecorderViewDidCancel");
    window_->setShortcutStatus("Shortcut recording cancelled.", SemanticColor::secondaryLabel);
}

void PreferencesWindowController::assertMainThread(std::string_view operation) const {
    if (!mainQueue_.isMainThread()) {
        fatalError(std::string(operation) + " must be called on the main thread");
    }
}

}  // namespace vantrel
