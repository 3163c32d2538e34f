#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "Vantrel/Backends/Gnome/ShellExtension.hpp"
#include "Vantrel/Platform/ItemPresenter.hpp"

namespace vantrel::gnome {

/// The item as the extension shows it: a text in GNOME's panel with a menu, and messages where the panel is not seen.
class GnomeItemPresenter final : public ItemPresenter {
  public:
    /// `ended` is told at the end of this object.
    GnomeItemPresenter(ShellExtension& extension, Events events, std::function<void()> ended);
    ~GnomeItemPresenter() override { ended_(); }
    GnomeItemPresenter(const GnomeItemPresenter&) = delete;
    GnomeItemPresenter& operator=(const GnomeItemPresenter&) = delete;

    /// It is there whenever the extension is.
    void setWanted(bool /*isWanted*/) override {}
    [[nodiscard]] bool isShown() const override { return extension_.isPresent(); }
    [[nodiscard]] bool isWholeItem() const override { return true; }
    void setTexts(const std::string& title, const std::string& toolTip) override;
    void setMenu(const Menu& menu) override;
    void showMessage(const std::string& text) override;

    // What the extension tells.
    void presenceChanged();
    void chooseRow(std::uint32_t row) { events_.rowChosen(row); }

  private:
    void tellTexts();
    void tellMenu();

    ShellExtension& extension_;
    Events events_;
    std::function<void()> ended_;
    std::string title_;
    std::string toolTip_;
    Menu menu_;
};

}  // namespace vantrel::gnome
