#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "Vantrel/Interface/KeyEvent.hpp"

namespace vantrel {

/// What a recorder's button tells the recorder.
class ShortcutRecorderButtonDelegate {
  public:
    virtual ~ShortcutRecorderButtonDelegate() = default;

    /// The button was pressed, with the mouse or the keyboard.
    virtual void toggleRecording() = 0;

    /// The button comes into a window that is shown (true), or its window is closed or hidden (false). A window that is
    /// merely covered or on another workspace is still shown.
    virtual void viewWillMoveToWindow(bool hasWindow) = 0;
};

/// An installed event monitor. Releasing it removes it and gives all keys free again; that may happen within its
/// handler. It goes before its button does.
class EventMonitor {
  public:
    /// `removed` is called at the end.
    explicit EventMonitor(std::function<void()> removed) : removed_(std::move(removed)) {}
    ~EventMonitor() { removed_(); }
    EventMonitor(const EventMonitor&) = delete;
    EventMonitor& operator=(const EventMonitor&) = delete;

  private:
    std::function<void()> removed_;
};

/// The push button that a shortcut recorder is drawn as.
class ShortcutRecorderButton {
  public:
    /// Gets each event before anything else does and returns what is to be passed on, or none to swallow the event.
    using EventHandler = std::function<std::optional<KeyEvent>(const KeyEvent&)>;

    virtual ~ShortcutRecorderButton() = default;

    virtual void setDelegate(std::weak_ptr<ShortcutRecorderButtonDelegate> delegate) = 0;
    virtual void setTitle(const std::string& title) = 0;

    /// Whether the button is part of a window.
    [[nodiscard]] virtual bool isInWindow() const = 0;

    /// Gives the button the keyboard focus within its window.
    virtual void makeFirstResponder() = 0;

    /// Hands the handler every key event whose type is in the mask and that arrives while the button's window is
    /// active. As long as the monitor is installed, neither the window manager nor a hot key takes a key away. Null
    /// when no monitor could be installed.
    virtual std::unique_ptr<EventMonitor> addLocalMonitorForEvents(std::uint32_t mask, EventHandler handler) = 0;
};

}  // namespace vantrel
