#pragma once

#include <xcb/xcb.h>

#include <memory>
#include <utility>

#include "Vantrel/Backends/X11/Tray/TrayWindow.hpp"
#include "Vantrel/Backends/X11/X11Connection.hpp"
#include "Vantrel/Backends/X11/X11EventSource.hpp"
#include "Vantrel/Handles/LoopSource.hpp"
#include "Vantrel/Platform/ItemPresenter.hpp"

namespace vantrel::x11 {

/// The item in the X screen's system tray (the System Tray and XEmbed protocols), whichever program has that role and
/// whenever it comes. Has a connection of its own: a tray's misbehaviour stays away from the hot keys.
class TrayItemPresenter final : public ItemPresenter, private X11EventListener {
  public:
    explicit TrayItemPresenter(Events events) : events_(std::move(events)) {}
    ~TrayItemPresenter() override { leave(); }
    TrayItemPresenter(const TrayItemPresenter&) = delete;
    TrayItemPresenter& operator=(const TrayItemPresenter&) = delete;

    void setWanted(bool isWanted) override;
    [[nodiscard]] bool isShown() const override { return window_ && window_->isEmbedded(); }

  private:
    void handleEvent(const xcb_generic_event_t& event) override;
    void join();
    void leave();
    void dock();
    void undock();
    void changed();

    Events events_;
    bool isWanted_ = false;
    LoopSource grace_;
    std::unique_ptr<X11Connection> connection_;
    xcb_atom_t selection_ = XCB_ATOM_NONE;
    xcb_atom_t managerMessage_ = XCB_ATOM_NONE;
    xcb_window_t manager_ = XCB_NONE;
    std::unique_ptr<TrayWindow> window_;
    std::unique_ptr<X11EventSource> source_;
};

}  // namespace vantrel::x11
