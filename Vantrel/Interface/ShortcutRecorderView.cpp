#include "Vantrel/Interface/ShortcutRecorderView.hpp"

#include "Vantrel/Interface/ModifierFlags.hpp"
#include "Vantrel/Platform/FatalError.hpp"

#include <algorithm>
#include <utility>

namespace vantrel {

namespace {

constexpr std::uint32_t escapeKeyCode = 53;

std::uint32_t carbonModifiers(const KeyEvent& event) {
    std::uint32_t mask = 0;
    for (const auto& [flag, modifier] : modifierFlags) {
        if ((event.modifierFlags & flag) != 0) {
            mask |= modifier;
        }
    }
    return mask;
}

bool isModifierKey(std::uint32_t keyCode) {
    return std::any_of(KeyboardShortcut::modifierKeyCodes.begin(), KeyboardShortcut::modifierKeyCodes.end(),
                       [keyCode](int code) { return static_cast<std::uint32_t>(code) == keyCode; });
}

}  // namespace

std::shared_ptr<ShortcutRecorderView> ShortcutRecorderView::create(ShortcutRecorderButton& button) {
    auto view = std::make_shared<ShortcutRecorderView>(CreationKey(), button);
    button.setDelegate(view);
    return view;
}

void ShortcutRecorderView::initWithCoder() {
    fatalError("init(coder:) has not been implemented");
}

ShortcutRecorderView::ShortcutRecorderView(CreationKey /*key*/, ShortcutRecorderButton& button) : button_(button) {
    button_.setTitle(shortcut_.displayText());
}

ShortcutRecorderView::~ShortcutRecorderView() = default;

void ShortcutRecorderView::setRecorderDelegate(std::weak_ptr<ShortcutRecorderViewDelegate> delegate) {
    recorderDelegate_ = std::move(delegate);
}

void ShortcutRecorderView::setShortcut(const KeyboardShortcut& shortcut) {
    shortcut_ = shortcut;
    if (!isRecording_) {
        button_.setTitle(shortcut_.displayText());
    }
}

void ShortcutRecorderView::toggleRecording() {
    if (isRecording_) {
        stopRecording(true);
    } else {
        startRecording();
    }
}

void ShortcutRecorderView::viewWillMoveToWindow(bool hasWindow) {
    if (!hasWindow) {
        stopRecording(true);
    }
}

void ShortcutRecorderView::startRecording() {
    isRecording_ = true;
    button_.setTitle("Press shortcut...");
    if (button_.isInWindow()) {
        button_.makeFirstResponder();
    }
    eventMonitor_ = button_.addLocalMonitorForEvents(
        eventMask(KeyEventType::keyDown) | eventMask(KeyEventType::flagsChanged),
        [weakSelf = weak_from_this()](const KeyEvent& event) -> std::optional<KeyEvent> {
            const auto self = weakSelf.lock();
            return self ? self->monitorEvent(event) : std::nullopt;
        });
}

void ShortcutRecorderView::stopRecording(bool notifyCancel) {
    if (!isRecording_ && !eventMonitor_) {
        return;
    }
    eventMonitor_.reset();
    isRecording_ = false;
    // What is in force, not what was just typed: the owner assigns that once it is applied.
    button_.setTitle(shortcut_.displayText());
    if (!notifyCancel) {
        return;
    }
    if (const auto delegate = recorderDelegate_.lock()) {
        delegate->shortcutRecorderViewDidCancel(*this);
    }
}

std::optional<KeyEvent> ShortcutRecorderView::monitorEvent(const KeyEvent& event) {
    if (!isRecording_) {
        return event;
    }
    switch (event.type) {
        case KeyEventType::flagsChanged:
            button_.setTitle("Press a key...");
            return std::nullopt;
        case KeyEventType::keyDown:
            recordKeyDown(event);
            return std::nullopt;
        case KeyEventType::keyUp:
            break;
    }
    return event;
}

void ShortcutRecorderView::recordKeyDown(const KeyEvent& event) {
    if (event.keyCode == escapeKeyCode) {
        stopRecording(true);
        return;
    }
    const KeyboardShortcut typed{event.keyCode, carbonModifiers(event)};
    if (typed.modifiers == 0 || isModifierKey(typed.keyCode)) {
        rejectKeyWithoutModifier();
        return;
    }
    stopRecording(false);
    if (typed.isKnownRaycastConflict()) {
        reject("Hyper + 1 through Hyper + 5 are already reserved in Raycast.");
        return;
    }
    if (const auto delegate = recorderDelegate_.lock()) {
        delegate->shortcutRecorderViewDidRecord(*this, typed);
    }
}

void ShortcutRecorderView::rejectKeyWithoutModifier() {
    button_.setTitle("Add modifier...");
    reject("Use at least one modifier plus a regular key.");
}

void ShortcutRecorderView::reject(const std::string& message) {
    if (const auto delegate = recorderDelegate_.lock()) {
        delegate->shortcutRecorderViewDidReject(*this, message);
    }
}

}  // namespace vantrel
