#pragma once

#include <glib.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "Vantrel/Backends/X11/Tray/XEmbedTray.hpp"
#include "Vantrel/Desktop/StatusItem/OverlayProcess.hpp"

namespace vantrel::desktop {

/// The item in the old system tray, while no StatusNotifier host shows it: the drawing, and the title beside it where
/// the tray makes room for it.
class TrayFallback {
  public:
    struct Events {
        std::function<void()> pressed;          ///< the menu is wanted at the pointer
        std::function<void()> presenceChanged;  ///< isShown() or showsTitle() changed
    };

    /// The overlay draws the title and outlives this object.
    TrayFallback(OverlayProcess& overlay, Events events);
    ~TrayFallback();
    TrayFallback(const TrayFallback&) = delete;
    TrayFallback& operator=(const TrayFallback&) = delete;

    /// Whether the item is to be in the tray. It goes there a moment later: at the start of a session a better panel
    /// may be about to come.
    void setWanted(bool isWanted);

    void setTitle(const std::string& title, const ItemFont& font);

    /// The overlay's answer: what the title needs.
    void windowPainted(std::uint32_t window, int width);

    [[nodiscard]] bool isShown() const { return tray_ && tray_->isDocked(); }
    [[nodiscard]] bool showsTitle() const { return isShown() && room_ == Room::given; }

  private:
    enum class Room { unknown, asked, given };

    static gboolean graceEnded(gpointer data);

    void trayChanged();
    void paintTitle();
    void stopGrace();

    OverlayProcess& overlay_;
    Events events_;
    std::string title_;
    ItemFont font_;
    bool isWanted_ = false;
    guint graceSource_ = 0;
    Room room_ = Room::unknown;
    int requestedWidth_ = 0;
    std::unique_ptr<XEmbedTray> tray_;
};

}  // namespace vantrel::desktop
