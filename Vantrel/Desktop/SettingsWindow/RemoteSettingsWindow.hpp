#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Vantrel/Channel/SettingsMessages.hpp"
#include "Vantrel/Desktop/Helpers/Helper.hpp"
#include "Vantrel/Desktop/SettingsWindow/RemoteRecorderButton.hpp"
#include "Vantrel/Interface/PreferencesWindowView.hpp"

namespace vantrel::desktop {

/// The settings window as the agent sees it: a program of its own draws it, which is started when the window is shown
/// and stays for a minute after it was closed. That program decides nothing; it gets all that is to be seen, and
/// reports what the person does.
class RemoteSettingsWindow final : public PreferencesWindowView {
  public:
    explicit RemoteSettingsWindow(Helper::Start start);

    void setDelegate(std::weak_ptr<PreferencesWindowViewDelegate> delegate) override;
    ShortcutRecorderButton& shortcutRecorderButton() override { return recorder_; }
    void setShortcutStatus(const std::string& text, SemanticColor color) override;
    void setTitles(PreferencesPopUp popUp, const std::vector<std::string>& titles) override;
    void selectItem(PreferencesPopUp popUp, std::size_t index) override;
    [[nodiscard]] std::int64_t indexOfSelectedItem(PreferencesPopUp popUp) const override;
    void setSoundChecked(bool checked) override;
    [[nodiscard]] bool isSoundChecked() const override { return content_.isSoundChecked; }
    void setSavedPointsSummary(const std::string& text) override;
    void setSavedPointsEmptyLabelHidden(bool hidden) override;
    void setSavedPointsTableHidden(bool hidden) override;
    void setClearSavedPointsEnabled(bool enabled) override;
    void reloadSavedPoints() override;
    void showWindow() override;
    void makeKeyAndOrderFront() override;

  private:
    using Action = void (PreferencesWindowViewDelegate::*)();

    void obey(const Message& message);
    void take(const WindowReport& report);
    void giveRow(const WindowRow& wanted);
    void shown(bool isShown);
    void ended(const std::string& otherVersion);
    void fail(const std::string& problem, const std::string& flashText);
    void tell(Action action);
    void sendContentSoon();
    void sendContent();

    std::weak_ptr<PreferencesWindowViewDelegate> delegate_;
    WindowContent content_;
    std::optional<WindowPlace> place_;
    bool isWanted_ = false;  ///< shown, or about to be
    LoopSource sending_;
    RemoteRecorderButton recorder_;
    Helper program_;
};

}  // namespace vantrel::desktop
