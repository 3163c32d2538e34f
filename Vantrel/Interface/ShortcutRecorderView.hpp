#pragma once

#include <memory>
#include <optional>
#include <string>

#include "Vantrel/Interface/KeyEvent.hpp"
#include "Vantrel/Interface/KeyboardShortcut.hpp"
#include "Vantrel/Interface/ShortcutRecorderButton.hpp"

namespace vantrel {

class ShortcutRecorderView;

/// The owner of a shortcut recorder, which holds it weakly.
class ShortcutRecorderViewDelegate {
  public:
    virtual ~ShortcutRecorderViewDelegate() = default;

    /// An acceptable combination was typed; recording has ended.
    virtual void shortcutRecorderViewDidRecord(ShortcutRecorderView& view, const KeyboardShortcut& shortcut) = 0;

    /// A combination was refused; the message says why.
    virtual void shortcutRecorderViewDidReject(ShortcutRecorderView& view, const std::string& message) = 0;

    /// Recording was given up.
    virtual void shortcutRecorderViewDidCancel(ShortcutRecorderView& view) = 0;
};

/// Shows a shortcut and, once pressed, captures the next acceptable key combination. It neither registers nor stores
/// anything: its owner does. Main thread only.
class ShortcutRecorderView final : public ShortcutRecorderButtonDelegate,
                                   public std::enable_shared_from_this<ShortcutRecorderView> {
    struct CreationKey {
        explicit CreationKey() = default;
    };

  public:
    /// A recorder at rest, drawn as the button, which outlives it.
    static std::shared_ptr<ShortcutRecorderView> create(ShortcutRecorderButton& button);

    /// A recorder is never made from an archive: stops the program.
    [[noreturn]] static void initWithCoder();

    /// Kept to create() by its key: the recorder always lives in a shared pointer.
    ShortcutRecorderView(CreationKey key, ShortcutRecorderButton& button);
    ~ShortcutRecorderView() override;
    ShortcutRecorderView(const ShortcutRecorderView&) = delete;
    ShortcutRecorderView& operator=(const ShortcutRecorderView&) = delete;

    void setRecorderDelegate(std::weak_ptr<ShortcutRecorderViewDelegate> delegate);

    [[nodiscard]] const KeyboardShortcut& shortcut() const { return shortcut_; }

    /// Shows the shortcut, at once or, while recording, when recording stops.
    void setShortcut(const KeyboardShortcut& shortcut);

    [[nodiscard]] bool isRecording() const { return isRecording_; }

    void toggleRecording() override;
    void viewWillMoveToWindow(bool hasWindow) override;

    void startRecording();

    /// Does nothing at all when nothing is recorded.
    void stopRecording(bool notifyCancel);

  private:
    std::optional<KeyEvent> monitorEvent(const KeyEvent& event);
    void recordKeyDown(const KeyEvent& event);
    void rejectKeyWithoutModifier();
    void reject(const std::string& message);

    ShortcutRecorderButton& button_;
    std::weak_ptr<ShortcutRecorderViewDelegate> recorderDelegate_;
    KeyboardShortcut shortcut_;
    bool isRecording_ = false;
    std::unique_ptr<EventMonitor> eventMonitor_;
};

}  // namespace vantrel
