#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Vantrel/Interface/KeyboardShortcut.hpp"
#include "Vantrel/Interface/PreferencesWindowControllerDelegate.hpp"
#include "Vantrel/Interface/PreferencesWindowView.hpp"
#include "Vantrel/Interface/SettingEnumerations.hpp"
#include "Vantrel/Interface/ShortcutRecorderView.hpp"
#include "Vantrel/Platform/MainQueue.hpp"
#include "VantrelCore/SavedPoint.hpp"

namespace vantrel {

/// The application's state as the settings window shows it.
struct PreferencesWindowState {
    KeyboardShortcut primaryShortcut;
    bool primaryShortcutIsRegistered = false;
    std::string primaryShortcutStatusText;
    VantrelMode mode = VantrelMode::automatic;
    AnimationStyle animationStyle = AnimationStyle::glide;
    bool soundEnabled = true;
    std::vector<SavedPoint> savedPoints;
};

/// Owns the settings window. It keeps no settings: every change goes to its delegate, which stores it and refreshes the
/// window. Main thread only; an action or a row asked for on another thread stops the program.
class PreferencesWindowController final : public PreferencesWindowViewDelegate,
                                          public ShortcutRecorderViewDelegate,
                                          public std::enable_shared_from_this<PreferencesWindowController> {
    struct CreationKey {
        explicit CreationKey() = default;
    };

  public:
    /// The controller of the window, with all controls wired to it. The queue outlives it.
    static std::shared_ptr<PreferencesWindowController> create(std::unique_ptr<PreferencesWindowView> window,
                                                               const MainQueue& mainQueue);

    /// A controller is never made from an archive or for a window of somebody else's: both stop the program.
    [[noreturn]] static void initWithCoder();
    [[noreturn]] static void initWithWindow();

    /// Kept to create() by its key: the controller always lives in a shared pointer.
    PreferencesWindowController(CreationKey key, std::unique_ptr<PreferencesWindowView> window,
                                const MainQueue& mainQueue);
    ~PreferencesWindowController() override;
    PreferencesWindowController(const PreferencesWindowController&) = delete;
    PreferencesWindowController& operator=(const PreferencesWindowController&) = delete;

    /// Held weakly; without it no action does anything.
    void setDelegate(std::weak_ptr<PreferencesWindowControllerDelegate> delegate);

    [[nodiscard]] PreferencesWindowView& window() { return *window_; }
    [[nodiscard]] ShortcutRecorderView& shortcutRecorder() { return *shortcutRecorder_; }

    /// Shows the state, also while the window is hidden.
    void refresh(PreferencesWindowState state);

    void showWindow();

    void resetShortcut() override;
    void modeChanged(std::int64_t chosenIndex) override;
    void animationChanged(std::int64_t chosenIndex) override;
    void soundChanged(bool isChecked) override;
    void clearSavedPoints() override;
    void windowFailed(const std::string& problem, const std::string& flashText) override;

    [[nodiscard]] std::size_t numberOfRows() const override;
    [[nodiscard]] std::optional<std::string> textForRow(std::int64_t row) const override;

    void shortcutRecorderViewDidRecord(ShortcutRecorderView& view, const KeyboardShortcut& shortcut) override;
    void shortcutRecorderViewDidReject(ShortcutRecorderView& view, const std::string& message) override;
    void shortcutRecorderViewDidCancel(ShortcutRecorderView& view) override;

  private:
    void assertMainThread(std::string_view operation) const;
    void showShortcutStatus(const std::string& text, SemanticColor color);

    const MainQueue& mainQueue_;
    std::weak_ptr<PreferencesWindowControllerDelegate> delegate_;
    std::unique_ptr<PreferencesWindowView> window_;
    std::shared_ptr<ShortcutRecorderView> shortcutRecorder_;
    PreferencesWindowContent content_;
    std::vector<SavedPoint> savedPoints_;
};

}  // namespace vantrel
