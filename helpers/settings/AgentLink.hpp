#pragma once

#include <QSocketNotifier>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <unordered_map>

#include "Vantrel/Channel/Channel.hpp"
#include "Vantrel/Channel/SettingsMessages.hpp"
#include "helpers/settings/SettingsWindow.hpp"

namespace vantrel::qt {

/// Joins the settings window to the agent: shows what the agent sends, and reports what the person does. Nothing is
/// decided here.
class AgentLink final {
  public:
    /// `agentGone` is called once, when there is nobody to show anything for any more.
    AgentLink(Channel agent, std::function<void()> agentGone);
    AgentLink(const AgentLink&) = delete;
    AgentLink& operator=(const AgentLink&) = delete;

    SettingsWindow& window() { return window_; }

  private:
    void receive();
    void obey(const Message& message);
    void show(const WindowContent& content);
    void takeRowText(const WindowRowText& text);
    /// Asks the agent for a text that is drawn for the first time, and has none until it comes.
    std::optional<std::string> textForRow(std::uint32_t row);
    void report(WindowReport report);

    std::function<void()> agentGone_;
    Channel agent_;
    QSocketNotifier notifier_;
    std::uint64_t lastReport_ = 0;
    std::uint32_t rowsVersion_ = 0;
    std::unordered_map<std::uint32_t, std::optional<std::string>> rowTexts_;  ///< none while it is on its way
    SettingsWindow window_;
};

}  // namespace vantrel::qt
