#pragma once

#include <glib.h>

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "Vantrel/Handles/FileDescriptor.hpp"
#include "Vantrel/Platform/StatusItem.hpp"
#include "helpers/messages/OverlayMessage.hpp"

namespace vantrel::desktop {

struct ItemFont {
    double size = 12;  ///< points
    FontWeight weight = FontWeight::semibold;
};

/// The program that draws on the screen for the agent. It is started with the first thing to show and ends a while
/// after the last; should it end by itself, the next thing to show starts it again.
class OverlayProcess {
  public:
    using RowChosen = std::function<void(std::size_t row)>;

    explicit OverlayProcess(RowChosen rowChosen);
    ~OverlayProcess();
    OverlayProcess(const OverlayProcess&) = delete;
    OverlayProcess& operator=(const OverlayProcess&) = delete;

    void showText(const std::string& text, const ItemFont& font);
    void hideText();

    /// Opens the menu at the pointer.
    void openMenu(const std::vector<OverlayRow>& rows);
    /// Gives a menu that is open other rows.
    void updateMenu(const std::vector<OverlayRow>& rows);
    [[nodiscard]] bool isMenuOpen() const { return isMenuOpen_; }

  private:
    static gboolean readable(gint socket, GIOCondition condition, gpointer data);
    static gboolean lingeredEnough(gpointer data);

    bool start();
    void hangUp();
    void send(const OverlayMessage& message);
    void receive();
    void obey(const OverlayMessage& message);
    void lingerOrStay();

    RowChosen rowChosen_;
    FileDescriptor socket_;
    guint socketSource_ = 0;
    guint lingerSource_ = 0;
    bool isTextShown_ = false;
    bool isMenuOpen_ = false;
};

}  // namespace vantrel::desktop
