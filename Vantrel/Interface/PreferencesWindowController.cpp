#include "Vantrel/Interface/PreferencesWindowController.hpp"

#include "Vantrel/Interface/SavedPointTexts.hpp"
#include "Vantrel/Platform/FatalError.hpp"

#include <algorithm>
#include <utility>

namespace vantrel {

namespace {

/// The value at the pop-up's index; none when nothing in the list is chosen.
template <typename Values>
auto valueAt(std::int64_t index, const Values& values) -> std::optional<typename Values::value_type> {
    if (index < 0 || static_cast<std::size_t>(index) >= values.size()) {
        return std::nullopt;
    }
    return values[static_cast<std::size_t>(index)];
}

template <typename Values>
void select(std::int32_t& index, const Values& values, typename Values::value_type value) {
    const auto* const found = std::find(values.begin(), values.end(), value);
    if (found != values.end()) {
        index = static_cast<std::int32_t>(found - values.begin());
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
      shortcutRecorder_(ShortcutRecorderView::create(window_->shortcutRecorderButton())) {}

PreferencesWindowController::~PreferencesWindowController() = default;

void PreferencesWindowController::setDelegate(std::weak_ptr<PreferencesWindowControllerDelegate> delegate) {
    delegate_ = std::move(delegate);
}

void PreferencesWindowController::refresh(PreferencesWindowState state) {
    assertMainThread("refresh");
    shortcutRecorder_->setShortcut(state.primaryShortcut);
    content_.shortcutStatus = state.primaryShortcutStatusText;
    content_.shortcutStatusColor =
        state.primaryShortcutIsRegistered ? SemanticColor::secondaryLabel : SemanticColor::systemRed;
    select(content_.selectedMode, allModes, state.mode);
    select(content_.selectedAnimation, allAnimationStyles, state.animationStyle);
    content_.isSoundChecked = state.soundEnabled;
    savedPoints_ = std::move(state.savedPoints);
    content_.savedPointsSummary = savedPointsSummary(savedPoints_.size());
    window_->setContent(content_);
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

void PreferencesWindowController::modeChanged(std::int64_t chosenIndex) {
    assertMainThread("modeChanged");
    const auto mode = valueAt(chosenIndex, allModes);
    if (const auto delegate = delegate_.lock(); delegate && mode) {
        delegate->preferencesDidChangeMode(*mode);
    }
}

void PreferencesWindowController::animationChanged(std::int64_t chosenIndex) {
    assertMainThread("animationChanged");
    const auto style = valueAt(chosenIndex, allAnimationStyles);
    if (const auto delegate = delegate_.lock(); delegate && style) {
        delegate->preferencesDidChangeAnimation(*style);
    }
}

void PreferencesWindowController::soundChanged(bool isChecked) {
    assertMainThread("soundChanged");
    if (const auto delegate = delegate_.lock()) {
        delegate->preferencesDidChangeSound(isChecked);
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
    showShortcutStatus("Checking " + shortcut.displayText() + "...", SemanticColor::secondaryLabel);
    if (const auto delegate = delegate_.lock()) {
        delegate->preferencesDidRecordShortcut(shortcut);
    }
}

void PreferencesWindowController::shortcutRecorderViewDidReject(ShortcutRecorderView& /*view*/,
                                                                const std::string& message) {
    assertMainThread("shortcutRecorderViewDidReject");
    showShortcutStatus(message, SemanticColor::systemRed);
}

void PreferencesWindowController::shortcutRecorderViewDidCancel(ShortcutRecorderView& /*view*/) {
    assertMainThread("shortcutRecorderViewDidCancel");
    showShortcutStatus("Shortcut recording cancelled.", SemanticColor::secondaryLabel);
}

void PreferencesWindowController::showShortcutStatus(const std::string& text, SemanticColor color) {
    content_.shortcutStatus = text;
    content_.shortcutStatusColor = color;
    window_->setContent(content_);
}

void PreferencesWindowController::assertMainThread(std::string_view operation) const {
    if (!mainQueue_.isMainThread()) {
        fatalError(std::string(operation) + " must be called on the main thread");
    }
}

}  // namespace vantrel
