#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <string>

#include "helpers/messages/Typesetter.hpp"
#include "helpers/messages/X11/PopupWindow.hpp"
#include "helpers/messages/X11/Screen.hpp"

namespace vantrel::overlay {

/// The short text near the top of the display that the pointer is on. It takes neither focus nor clicks.
class FlashText {
  public:
    using Clock = std::chrono::steady_clock;

    FlashText(const Screen& screen, const Typesetter& typesetter);

    /// Shows the text in place of the present one. While the pointer is on its way it waits a moment, so that the text
    /// appears on the display where the pointer ends up.
    void show(const std::string& text, const Font& font);
    void hide();

    /// When to look at the pointer next; none while there is nothing to show.
    [[nodiscard]] std::optional<Clock::time_point> nextLook() const { return nextLook_; }

    /// Looks at the pointer: shows a waiting text once the pointer rests, moves the shown one after it.
    void look();

  private:
    void place();

    const Screen& screen_;
    const Typesetter& typesetter_;
    std::string text_;
    Font font_;
    std::unique_ptr<PopupWindow> window_;
    Rect monitor_;
    Point lastPointer_;
    Clock::time_point latestAppearance_;
    std::optional<Clock::time_point> nextLook_;
    bool isWaiting_ = false;
};

}  // namespace vantrel::overlay
