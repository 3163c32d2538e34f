#pragma once

#include <functional>
#include <memory>
#include <string>

#include "Vantrel/Channel/SettingsMessages.hpp"
#include "Vantrel/Interface/ShortcutRecorderButton.hpp"

namespace vantrel::desktop {

/// The recorder's button in a window that another program draws.
class RemoteRecorderButton final : public ShortcutRecorderButton {
  public:
    struct Events {
        std::function<void()> changed;      ///< title() or recordedEvents() did
        std::function<void()> focusWanted;  ///< the button is to have the keyboard focus
    };

    explicit RemoteRecorderButton(Events events);
    ~RemoteRecorderButton() override;

    void setDelegate(std::weak_ptr<ShortcutRecorderButtonDelegate> delegate) override;
    void setTitle(const std::string& title) override;
    [[nodiscard]] bool isInWindow() const override { return isShown_; }
    void makeFirstResponder() override { events_.focusWanted(); }
    std::unique_ptr<EventMonitor> addLocalMonitorForEvents(std::uint32_t mask, EventHandler handler) override;

    [[nodiscard]] const std::string& title() const { return title_; }
    /// The mask of the events that a monitor waits for; 0 without one.
    [[nodiscard]] std::uint32_t recordedEvents() const;

    // What the window reports.
    void pressed();
    void windowShown(bool isShown);
    /// Events that no monitor waits for are dropped.
    void keyEvent(const KeyEvent& event);

  private:
    class Monitor;

    Events events_;
    std::weak_ptr<ShortcutRecorderButtonDelegate> delegate_;
    std::string title_;
    bool isShown_ = false;
    Monitor* monitor_ = nullptr;
};

}  // namespace vantrel::desktop
