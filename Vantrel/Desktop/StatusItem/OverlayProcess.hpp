#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "Vantrel/Channel/ScreenMessages.hpp"
#include "Vantrel/Desktop/Helpers/Helper.hpp"

namespace vantrel::desktop {

/// The program that draws on the screen for the agent. It is started with the first thing to show and ends a while
/// after the last; should it end by itself, the next thing to show starts it again.
class OverlayProcess {
  public:
    using RowChosen = std::function<void(std::uint32_t row)>;

    OverlayProcess(Helper::Start start, RowChosen rowChosen);

    void showText(const ScreenText& text);
    void hideText();

    /// Opens the menu at the pointer.
    void openMenu(const std::vector<MenuRow>& rows);
    /// Gives a menu that is open other rows.
    void updateMenu(const std::vector<MenuRow>& rows);
    [[nodiscard]] bool isMenuOpen() const { return isMenuOpen_; }

  private:
    void obey(const Message& message);
    void ended();
    void lingerOrStay();

    RowChosen rowChosen_;
    bool isTextShown_ = false;
    bool isMenuOpen_ = false;
    Helper program_;
};

}  // namespace vantrel::desktop
