#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "Vantrel/Channel/SettingsMessages.hpp"
#include "Vantrel/Desktop/Helpers/Helper.hpp"
#include "Vantrel/Interface/PreferencesWindowView.hpp"
#include "Vantrel/Platform/KeyboardCapture.hpp"

namespace vantrel::desktop {

/// The settings window, and the recorder's button in it, as the agent sees them: a program of its own draws them, which
/// is started when the window is shown and stays for a minute after it was closed. That program decides nothing; it
/// gets all that is to be seen, and reports what the person does.
class RemoteSettingsWindow final : public PreferencesWindowView, private ShortcutRecorderButton {
  public:
    /// The keyboard outlives this object.
    RemoteSettingsWindow(Helper::Start start, KeyboardCapture& keyboard);
    ~RemoteSettingsWindow() override;
    RemoteSettingsWindow(const RemoteSettingsWindow&) = delete;
    RemoteSettingsWindow& operator=(const RemoteSettingsWindow&) = delete;

    void setDelegate(std::weak_ptr<PreferencesWindowViewDelegate> delegate) override;
    ShortcutRecorderButton& shortcutRecorderButton() override { return *this; }
    void setContent(const PreferencesWindowContent& content) override;
    void reloadSavedPoints() override;
    void showWindow() override;
    void makeKeyAndOrderFront() override;

  private:
    void setDelegate(std::weak_ptr<ShortcutRecorderButtonDelegate> delegate) override;
    void setTitle(const std::string& title) override;
    [[nodiscard]] bool isInWindow() const override { return isShown_; }
    void makeFirstResponder() override;
    std::unique_ptr<EventMonitor> addLocalMonitorForEvents(std::uint32_t mask, EventHandler handler) override;

    void obey(const Message& message);
    void take(const WindowReport& report);
    void giveRow(const WindowRow& wanted);
    void typed(const KeyEvent& event);
    void setKeyboardTaken(bool isTaken);
    void captureEnded();
    void shown(bool isShown);
    void ended(const std::string& otherVersion);
    void fail(const std::string& problem, const std::string& flashText);
    void sendContentSoon();
    void sendContent();

    KeyboardCapture& keyboard_;
    std::weak_ptr<PreferencesWindowViewDelegate> delegate_;
    std::weak_ptr<ShortcutRecorderButtonDelegate> recorder_;
    std::uint32_t recordedEvents_ = 0;  ///< the mask of the installed monitor
    EventHandler recordedEventHandler_;
    WindowContent content_;
    std::optional<WindowPlace> place_;
    bool isWanted_ = false;  ///< shown, or about to be
    bool isShown_ = false;
    bool isKeyboardTaken_ = false;  ///< by the recorder
    LoopSource sending_;
    Helper program_;
};

}  // namespace vantrel::desktop
