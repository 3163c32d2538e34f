#pragma once

#include <QSocketNotifier>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>

#include "Vantrel/Channel/Channel.hpp"
#include "Vantrel/Channel/SettingsMessages.hpp"
#include "helpers/settings/SettingsWindow.hpp"

namespace vantrel::qt {

/// Joins the settings window to the agent: shows what the agent sends, and reports what the person does. Nothing is
/// decided here.
class AgentLink final : public PreferencesWindowViewDelegate,
                        public ShortcutRecorderButtonDelegate,
                        public std::enable_shared_from_this<AgentLink> {
    struct CreationKey {
        explicit CreationKey() = default;
    };

  public:
    /// `agentGone` is called once, when there is nobody to show anything for any more.
    static std::shared_ptr<AgentLink> create(Channel agent, std::function<void()> agentGone);

    /// Kept to create() by its key: the window's controls hold the link weakly.
    AgentLink(CreationKey key, Channel agent, std::function<void()> agentGone);
    ~AgentLink() override;
    AgentLink(const AgentLink&) = delete;
    AgentLink& operator=(const AgentLink&) = delete;

    SettingsWindow& window() { return window_; }

    void resetShortcut() override { report(WindowReport::Kind::resetPressed); }
    void modeChanged() override;
    void animationChanged() override;
    void soundChanged() override;
    void clearSavedPoints() override { report(WindowReport::Kind::clearPressed); }
    /// A window that is drawn here does not fail.
    void windowFailed(const std::string& /*problem*/, const std::string& /*flashText*/) override {}
    [[nodiscard]] std::size_t numberOfRows() const override { return content_.rows; }
    /// Asks the agent for a text that is drawn for the first time, and has none until it comes.
    [[nodiscard]] std::optional<std::string> textForRow(std::int64_t row) const override;
    void toggleRecording() override;
    void viewWillMoveToWindow(bool hasWindow) override;

  private:
    void receive();
    void obey(const Message& message);
    void show(const WindowContent& content);
    void takeRowText(const WindowRowText& text);
    void recordKeys(std::uint32_t events);
    void report(WindowReport::Kind kind, std::int64_t value = 0);
    void send(WindowReport report);

    std::function<void()> agentGone_;
    mutable Channel agent_;  ///< drawing a row may ask for its text
    QSocketNotifier notifier_;
    std::uint64_t lastReport_ = 0;
    WindowContent content_;
    mutable std::unordered_map<std::uint32_t, std::optional<std::string>> rowTexts_;  ///< none while it is on its way
    SettingsWindow window_;
    std::unique_ptr<EventMonitor> keyMonitor_;
};

}  // namespace vantrel::qt
