#pragma once

#include <QPushButton>
#include <memory>
#include <string>

#include "Vantrel/Interface/ShortcutRecorderButton.hpp"
#include "helpers/settings/RecorderKeyTap.hpp"

namespace vantrel::qt {

/// The recorder's push button. A shortcut too long for its width takes several lines.
class RecorderButton final : public QPushButton, public ShortcutRecorderButton {
  public:
    RecorderButton();
    ~RecorderButton() override;

    void setDelegate(std::weak_ptr<ShortcutRecorderButtonDelegate> delegate) override;
    void setTitle(const std::string& title) override;
    [[nodiscard]] bool isInWindow() const override { return window()->isVisible(); }
    void makeFirstResponder() override { setFocus(Qt::OtherFocusReason); }
    std::unique_ptr<EventMonitor> addLocalMonitorForEvents(std::uint32_t mask, EventHandler handler) override;

    /// Takes the desktop's present fonts.
    void updateFont();

  protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

  private:
    void updateText();

    std::weak_ptr<ShortcutRecorderButtonDelegate> delegate_;
    std::string title_;
    std::unique_ptr<RecorderKeyTap> keyTap_;
};

}  // namespace vantrel::qt
