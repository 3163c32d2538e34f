#pragma once

#include <memory>

#include "helpers/messages/Stage.hpp"
#include "helpers/messages/X11/FlashText.hpp"
#include "helpers/messages/X11/PopupMenu.hpp"
#include "helpers/messages/X11/Screen.hpp"

namespace vantrel::overlay {

/// The screen of an X server. The text stands on the display that the pointer is on.
class X11Stage final : public Stage {
  public:
    /// Connects to the display that DISPLAY names; null when it cannot.
    static std::unique_ptr<Stage> connect();

    void showText(const std::string& text, const Font& font) override { flashText_.show(text, font); }
    void hideText() override { flashText_.hide(); }
    void openMenu(std::vector<MenuRow> rows, Chosen chosen) override;
    void updateMenu(std::vector<MenuRow> rows) override;
    [[nodiscard]] int descriptor() const override { return xcb_get_file_descriptor(screen_->connection()); }
    void serve() override;
    [[nodiscard]] bool isLost() const override { return screen_->isLost(); }
    [[nodiscard]] std::optional<Clock::time_point> nextWork() const override;
    void doDueWork() override;

  private:
    explicit X11Stage(std::unique_ptr<Screen> screen);

    std::unique_ptr<Screen> screen_;
    Typesetter typesetter_;
    FlashText flashText_;
    std::unique_ptr<PopupMenu> menu_;
    std::unique_ptr<PopupMenu> endedMenu_;  ///< released once its own call is over
};

}  // namespace vantrel::overlay
