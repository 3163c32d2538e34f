#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Vantrel/Desktop/StatusItem/BusMenu.hpp"
#include "Vantrel/Desktop/StatusItem/OverlayProcess.hpp"
#include "Vantrel/Desktop/StatusItem/StatusNotifierItem.hpp"
#include "Vantrel/Handles/GLibHandles.hpp"
#include "Vantrel/Handles/LoopSource.hpp"
#include "Vantrel/Platform/ItemPresenter.hpp"
#include "Vantrel/Platform/StatusItem.hpp"

namespace vantrel::desktop {

class DesktopStatusBar;

/// The item on a Linux desktop. Holds what is to be seen and gives it to whoever shows it.
class DesktopStatusItem final : public StatusItem, private StatusBarButton {
  public:
    explicit DesktopStatusItem(DesktopStatusBar& statusBar);
    ~DesktopStatusItem() override;
    DesktopStatusItem(const DesktopStatusItem&) = delete;
    DesktopStatusItem& operator=(const DesktopStatusItem&) = delete;

    /// Moves to that connection; null for none.
    void setSessionBus(GDBusConnection* bus);

    StatusBarButton* button() override { return this; }
    void setMenu(Menu menu) override;
    [[nodiscard]] bool isVisible() const override;
    void popUpMenu() override;

  private:
    void setTitle(const std::string& title) override;
    void setToolTip(const std::string& toolTip) override;
    void setFont(double size, FontWeight weight) override;

    static void busClosed(GDBusConnection* bus, gboolean remotePeerVanished, GError* error, gpointer data);
    void leaveBus();
    void offerToHosts();
    void presenterChanged();
    void presenceChanged();
    [[nodiscard]] bool hasHost() const { return notifierItem_ && notifierItem_->isShown(); }
    void publishMenuLater();
    void publishMenu();
    void performRow(std::size_t row);
    void updateScreenText();
    void updatePresentedTexts();
    /// Whether the desktop has a place of its own for the item: its menu and messages are there or nowhere.
    [[nodiscard]] bool isPresentedWhole() const { return presenter_ && presenter_->isWholeItem(); }
    [[nodiscard]] bool isTitleSeenInPanel() const;
    [[nodiscard]] std::vector<MenuRow> menuRows() const;

    DesktopStatusBar& statusBar_;
    std::string title_;
    std::optional<std::string> restingTitle_;  ///< the first one: every other is a message for a moment
    std::string toolTip_;
    Menu menu_;
    GObjectPointer<GDBusConnection> bus_;
    gulong busClosedHandler_ = 0;
    std::unique_ptr<BusMenu> busMenu_;
    LoopSource menuTask_;
    KeyHintStyle keyHintStyle_ = KeyHintStyle::x11Names;
    std::unique_ptr<StatusNotifierItem> notifierItem_;
    ScreenText screenText_;  ///< its text is the title's beginning
    OverlayProcess overlay_;
    std::unique_ptr<ItemPresenter> presenter_;
};

}  // namespace vantrel::desktop
