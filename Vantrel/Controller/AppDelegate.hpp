#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Vantrel/Controller/CursorAnimation.hpp"
#include "Vantrel/Controller/HotKeyAction.hpp"
#include "Vantrel/Interface/KeyboardShortcut.hpp"
#include "Vantrel/Interface/PreferencesWindowControllerDelegate.hpp"
#include "Vantrel/Interface/SettingEnumerations.hpp"
#include "Vantrel/Platform/Platform.hpp"
#include "VantrelCore/JSONDecoder.hpp"
#include "VantrelCore/JSONEncoder.hpp"
#include "VantrelCore/RememberedPositions.hpp"
#include "VantrelCore/SavedPoint.hpp"
#include "VantrelCore/TeleportDirection.hpp"

namespace vantrel {

class PreferencesWindowController;

/// The four bytes "VNTL", which every hot key that the application registers carries.
inline constexpr std::uint32_t vantrelHotKeySignature = fourCharCode("VNTL");

/// The application's controller: owns all mutable state and carries out every action. Lives on the main thread, for the
/// whole process, always in a shared pointer. Operations that the platform calls stop the program when they are called
/// on another thread. Each group of operations has a source file of its own.
class AppDelegate final : public ApplicationDelegate,
                          public PreferencesWindowControllerDelegate,
                          public std::enable_shared_from_this<AppDelegate> {
    struct CreationKey {
        explicit CreationKey() = default;
    };

  public:
    /// Creates the controller with its built-in values and an untitled status item. Nothing is loaded or registered
    /// before applicationDidFinishLaunching(). The platform outlives the controller.
    static std::shared_ptr<AppDelegate> create(const Platform& platform, std::uint32_t hotKeySignature,
                                               EventHandlerProc hotKeyHandler);

    /// Kept to create() by its key: the controller always lives in a shared pointer.
    AppDelegate(CreationKey key, const Platform& platform, std::uint32_t hotKeySignature,
                EventHandlerProc hotKeyHandler);
    ~AppDelegate() override;
    AppDelegate(const AppDelegate&) = delete;
    AppDelegate& operator=(const AppDelegate&) = delete;

    // Lifecycle (Lifecycle.cpp)
    void applicationDidFinishLaunching() override;
    void applicationWillTerminate() override;
    void applicationDidReopen() override;

    // URL commands (URLCommands.cpp)
    void applicationOpen(const std::vector<std::string>& urls) override;
    void handleURL(std::string_view url);

    // Hot keys (HotKeys.cpp)

    /// The callback that the platform calls for each press; `userData` is the controller. Schedules the action on the
    /// main queue and returns at once.
    static OSStatus hotKeyPressed(EventHandlerCallRef call, EventRef event, void* userData);

    /// Replaces the primary shortcut: registers the new one and, if it is refused, puts the present one back.
    void applyPrimaryShortcut(const KeyboardShortcut& shortcut);

    /// The status line of a registered primary shortcut.
    [[nodiscard]] static std::string readyStatusText(const KeyboardShortcut& shortcut);

    // Actions (TeleportActions.cpp)
    void teleportPrimary();
    void teleportNextDisplay();
    void teleportPreviousDisplay();
    void teleportDisplay(TeleportDirection direction);
    void teleportSavedPoint();
    void saveCurrentPoint();
    void clearSavedPoints();

    /// Moves the pointer to the target; without one, says so.
    void teleport(const std::optional<VantrelPoint>& target);

    // Glide (GlideAnimation.cpp)

    /// Moves the pointer to the target in 18 eased steps over 0.16 s, replacing a glide in progress.
    void glidePointer(const VantrelPoint& target);
    void animationTick(Timer& timer);

    // Status flash (StatusFlash.cpp)

    /// Shows the message in place of the status item's title for 1.2 s from now.
    void flashStatus(const std::string& message);

    // Status menu (MenuActions.cpp)

    /// Builds the menu anew from the present state.
    void rebuildMenu();
    void selectMode(const MenuItem& sender);
    void selectAnimation(const MenuItem& sender);
    void toggleSound();
    void openSettings();
    void quit();

    // Settings window (PreferencesWindowUpdates.cpp)

    /// Pushes the present state into the settings window, if it was ever opened.
    void refreshPreferencesWindow();
    void preferencesDidRecordShortcut(const KeyboardShortcut& shortcut) override;
    void preferencesDidResetShortcut() override;
    void preferencesDidChangeMode(VantrelMode newMode) override;
    void preferencesDidChangeAnimation(AnimationStyle style) override;
    void preferencesDidChangeSound(bool enabled) override;
    void preferencesDidClearSavedPoints() override;
    void preferencesWindowFailed(const std::string& problem, const std::string& flashText) override;

  private:
    /// What the status item shows between two flashes.
    static constexpr const char* normalStatusTitle = "Vantrel";

    /// What came of an attempt to register a hot key.
    struct HotKeyRegistration {
        OSStatus status = 0;
        EventHotKeyRef hotKeyRef = nullptr;

        /// A status of 0 without a reference is a refusal too.
        [[nodiscard]] bool succeeded() const { return status == 0 && hotKeyRef != nullptr; }
    };

    // Lifecycle (Lifecycle.cpp)
    void dressStatusItem();
    void assertMainThread(std::string_view operation) const;

    // Settings (StoredValues.cpp)
    void loadSettings();
    void loadSingleValues();
    void loadPrimaryShortcut();
    void loadSavedPoints();
    void loadRememberedPositions();
    [[nodiscard]] std::optional<RememberedPositions> decodeRememberedPositions(std::string_view json) const;
    void saveSavedPoints();
    void saveRememberedPositions();
    void storeMode(VantrelMode newMode);
    void storeAnimationStyle(AnimationStyle style);
    void storeSoundEnabled(bool enabled);
    void storePrimaryShortcut();

    // A store that could not be read at launch (LateReading.cpp)
    void takeInLateReading(const UserDefaults::Values& stored);
    void takeInLateSavedPoints(const DefaultsValue& stored);
    void takeInLateRememberedPositions(const DefaultsValue& stored);
    void setAside(std::string_view key, const DefaultsValue& stored);

    // Hot keys (HotKeys.cpp)
    void installHotKeyHandler();
    void registerPrimaryHotKeyAtLaunch();
    void registerSecondaryHotKeys();
    void registerSecondaryHotKey(std::uint32_t keyCode, std::uint32_t modifiers, HotKeyAction action);
    void releasePrimaryHotKey();
    void unregisterHotKeys();
    HotKeyRegistration registerHotKey(const KeyboardShortcut& shortcut, HotKeyAction action);
    bool tryPrimaryShortcut(const KeyboardShortcut& shortcut);
    void restorePrimaryShortcut(const std::string& refusedLabel, OSStatus refusalStatus);
    void performHotKeyAction(std::uint32_t id);

    // Actions (TeleportActions.cpp)
    std::vector<DisplaySnapshot> activeDisplays();
    std::optional<VantrelPoint> readPointer();
    static std::optional<DisplaySnapshot> currentDisplay(const VantrelPoint& pointer,
                                                         const std::vector<DisplaySnapshot>& displays);
    void movePointer(const VantrelPoint& target);
    void movePointerAtOnce(const VantrelPoint& target);
    void playFeedbackSound();

    // Status flash (StatusFlash.cpp)
    void resetStatusTitle();

    Platform platform_;
    std::uint32_t hotKeySignature_;
    EventHandlerProc hotKeyHandler_;

    std::unique_ptr<StatusItem> statusItem;
    UserDefaults& defaults;
    JSONEncoder encoder;
    JSONDecoder decoder;
    EventHotKeyRef primaryHotKeyRef = nullptr;
    std::vector<EventHotKeyRef> secondaryHotKeyRefs;
    EventHandlerRef eventHandlerRef = nullptr;
    std::shared_ptr<Timer> animationTimer;
    std::optional<CursorAnimation> cursorAnimation;
    std::shared_ptr<DispatchWorkItem> statusResetItem;
    std::shared_ptr<PreferencesWindowController> preferencesWindowController;
    VantrelMode mode = VantrelMode::automatic;
    AnimationStyle animationStyle = AnimationStyle::glide;
    bool soundEnabled = true;
    KeyboardShortcut primaryShortcut;
    bool primaryShortcutIsRegistered = false;
    std::string primaryShortcutStatusText = "Shortcut not registered yet.";
    std::vector<SavedPoint> savedPoints;
    std::int64_t savedPointIndex = 0;
    bool savedPointsWereCleared = false;
    RememberedPositions rememberedPositions;
};

}  // namespace vantrel
