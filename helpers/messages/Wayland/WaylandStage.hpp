#pragma once

#include <memory>

#include "helpers/messages/Stage.hpp"
#include "helpers/messages/Wayland/Compositor.hpp"
#include "helpers/messages/Wayland/LayerMenu.hpp"
#include "helpers/messages/Wayland/LayerTexts.hpp"

namespace vantrel::overlay {

/// A Wayland compositor that lets programs draw over everything (layer-shell).
class WaylandStage final : public Stage {
  public:
    /// Connects to the display that WAYLAND_DISPLAY names; null when it cannot, or when something is lacking.
    static std::unique_ptr<Stage> connect();

    void showText(const std::string& text, const Font& font) override { texts_.show(text, font); }
    void hideText() override { texts_.hide(); }
    void openMenu(std::vector<MenuRow> rows, Chosen chosen) override;
    void updateMenu(std::vector<MenuRow> rows) override;
    [[nodiscard]] int descriptor() const override { return wl_display_get_fd(compositor_->display()); }
    void serve() override;
    [[nodiscard]] bool isLost() const override { return compositor_->isLost(); }
    [[nodiscard]] std::optional<Clock::time_point> nextWork() const override;
    void doDueWork() override;

  private:
    explicit WaylandStage(std::unique_ptr<Compositor> compositor);

    std::unique_ptr<Compositor> compositor_;
    Typesetter typesetter_;
    LayerTexts texts_;
    std::unique_ptr<LayerMenu> menu_;
    std::unique_ptr<LayerMenu> endedMenu_;  ///< released once its own call is over
};

}  // namespace vantrel::overlay
