#include "tests/fakes/FakePreferencesWindowView.hpp"

#include <utility>

namespace vantrel::fake {

namespace {

std::string name(SemanticColor color) {
    switch (color) {
        case SemanticColor::secondaryLabel:
            return "secondary";
        case SemanticColor::systemRed:
            return "red";
        case SemanticColor::label:
            break;
    }
    return "label";
}

}  // namespace

void FakeShortcutRecorderButton::setDelegate(std::weak_ptr<ShortcutRecorderButtonDelegate> newDelegate) {
    delegate = std::move(newDelegate);
}

void FakeShortcutRecorderButton::setTitle(const std::string& newTitle) {
    title = newTitle;
    journal.push_back("recorder.setTitle(" + newTitle + ")");
}

void FakeShortcutRecorderButton::makeFirstResponder() {
    journal.emplace_back("recorder.makeFirstResponder");
}

std::unique_ptr<EventMonitor> FakeShortcutRecorderButton::addLocalMonitorForEvents(std::uint32_t mask,
                                                                                   EventHandler newHandler) {
    journal.emplace_back("recorder.addMonitor");
    if (refusesMonitor) {
        return nullptr;
    }
    monitorMask = mask;
    handler = std::move(newHandler);
    return std::make_unique<EventMonitor>([this] {
        handler = nullptr;
        journal.emplace_back("recorder.removeMonitor");
    });
}

void FakeShortcutRecorderButton::click() {
    if (const auto recorder = delegate.lock()) {
        recorder->toggleRecording();
    }
}

void FakeShortcutRecorderButton::moveToWindow(bool toWindow) {
    if (const auto recorder = delegate.lock()) {
        recorder->viewWillMoveToWindow(toWindow);
    }
    hasWindow = toWindow;
}

std::optional<KeyEvent> FakeShortcutRecorderButton::type(const KeyEvent& event) {
    if (!handler || (monitorMask & eventMask(event.type)) == 0) {
        return event;
    }
    // The handler may remove its own monitor.
    const EventHandler running = handler;
    return running(event);
}

void FakePreferencesWindowView::setDelegate(std::weak_ptr<PreferencesWindowViewDelegate> newDelegate) {
    delegate = std::move(newDelegate);
}

void FakePreferencesWindowView::setContent(const PreferencesWindowContent& newContent) {
    content = newContent;
    journal.push_back("window.setContent(" + content.shortcutStatus + ", " + name(content.shortcutStatusColor) + ")");
}

void FakePreferencesWindowView::reloadSavedPoints() {
    journal.emplace_back("window.reloadSavedPoints");
}

std::vector<std::string> FakePreferencesWindowView::drawnRows() const {
    std::vector<std::string> rows;
    const auto source = delegate.lock();
    const std::size_t count = source ? source->numberOfRows() : 0;
    for (std::size_t row = 0; row < count; ++row) {
        rows.push_back(source->textForRow(static_cast<std::int64_t>(row)).value_or("(no view)"));
    }
    return rows;
}

void FakePreferencesWindowView::showWindow() {
    journal.emplace_back("window.showWindow");
}

void FakePreferencesWindowView::makeKeyAndOrderFront() {
    journal.emplace_back("window.makeKeyAndOrderFront");
}

PreferencesWindowViewResult FakePreferencesWindowViewFactory::makePreferencesWindowView() {
    journal.emplace_back("window.make");
    if (!isInstalled) {
        view = nullptr;
        return {.view = nullptr, .problem = "the settings window is not installed", .flashText = "Install it"};
    }
    auto made = std::make_unique<FakePreferencesWindowView>(journal);
    view = made.get();
    return {.view = std::move(made), .problem = "", .flashText = ""};
}

}  // namespace vantrel::fake
