#pragma once

#include <QPushButton>
#include <functional>
#include <memory>
#include <string>

#include "Vantrel/Channel/SettingsMessages.hpp"
#include "helpers/settings/RecorderKeyTap.hpp"

namespace vantrel::qt {

/// The recorder's push button. A shortcut too long for its width takes several lines.
class RecorderButton final : public QPushButton {
  public:
    struct Events {
        std::function<void()> pressed;
        /// The button's window was shown or closed, which the windowing system did not do on its own account.
        std::function<void(bool isShown)> shown;
        RecorderKeyTap::Events keyTap;
    };

    explicit RecorderButton(Events events);

    void setTitle(const std::string& title);

    /// Takes the keyboard for a shortcut, or ends that.
    void setRecording(bool isRecording);

    /// Whether the desktop captures the keys of recordings from the next one on, and gives them here.
    void setKeysCaptured(bool areCaptured) { areKeysCaptured_ = areCaptured; }
    void takeCapturedKey(const WindowKey& key);
    void endCapture();

    /// Takes the desktop's present fonts.
    void updateFont();

  protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

  private:
    void updateText();

    Events events_;
    std::string title_;
    bool areKeysCaptured_ = false;
    std::unique_ptr<RecorderKeyTap> keyTap_;
};

}  // namespace vantrel::qt
