#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Vantrel/Interface/PreferencesWindowView.hpp"
#include "tests/fakes/Journal.hpp"

namespace vantrel::fake {

/// A recorder's button without a screen: a test presses it and types at it.
class FakeShortcutRecorderButton final : public ShortcutRecorderButton {
  public:
    explicit FakeShortcutRecorderButton(Journal& calls) : journal(calls) {}

    void setDelegate(std::weak_ptr<ShortcutRecorderButtonDelegate> newDelegate) override;
    void setTitle(const std::string& newTitle) override;
    [[nodiscard]] bool isInWindow() const override { return hasWindow; }
    void makeFirstResponder() override;
    std::unique_ptr<EventMonitor> addLocalMonitorForEvents(std::uint32_t mask, EventHandler newHandler) override;

    /// Presses the button.
    void click();

    /// Closes the window that the button is in, or brings the button into one.
    void moveToWindow(bool toWindow);

    /// Delivers the event to the monitor; what it passes on, or the event itself when no monitor listens.
    std::optional<KeyEvent> type(const KeyEvent& event);

    Journal& journal;
    std::weak_ptr<ShortcutRecorderButtonDelegate> delegate;
    std::string title;
    bool hasWindow = true;
    bool refusesMonitor = false;
    std::uint32_t monitorMask = 0;
    EventHandler handler;  ///< empty when no monitor is installed
};

/// A settings window without a screen: it records what it is told, in fields and, with the status of the shortcut, in
/// the journal.
class FakePreferencesWindowView final : public PreferencesWindowView {
  public:
    explicit FakePreferencesWindowView(Journal& calls) : journal(calls), recorderButton(calls) {}

    void setDelegate(std::weak_ptr<PreferencesWindowViewDelegate> newDelegate) override;
    ShortcutRecorderButton& shortcutRecorderButton() override { return recorderButton; }
    void setContent(const PreferencesWindowContent& newContent) override;
    void reloadSavedPoints() override;
    void showWindow() override;
    void makeKeyAndOrderFront() override;

    /// Draws every row of the table: their texts, in order.
    [[nodiscard]] std::vector<std::string> drawnRows() const;

    Journal& journal;
    FakeShortcutRecorderButton recorderButton;
    std::weak_ptr<PreferencesWindowViewDelegate> delegate;
    PreferencesWindowContent content;
};

/// Makes fake windows, or none while `isInstalled` is false.
class FakePreferencesWindowViewFactory final : public PreferencesWindowViewFactory {
  public:
    explicit FakePreferencesWindowViewFactory(Journal& calls) : journal(calls) {}

    PreferencesWindowViewResult makePreferencesWindowView() override;

    Journal& journal;
    bool isInstalled = true;
    FakePreferencesWindowView* view = nullptr;  ///< the last one made; belongs to its controller
};

}  // namespace vantrel::fake
