#pragma once

#include <memory>
#include <utility>

#include "Vantrel/Backends/X11/Tray/XEmbedTray.hpp"
#include "Vantrel/Handles/LoopSource.hpp"
#include "Vantrel/Platform/ItemPresenter.hpp"

namespace vantrel::x11 {

/// The item in the old system tray of X.
class TrayItemPresenter final : public ItemPresenter {
  public:
    explicit TrayItemPresenter(Events events) : events_(std::move(events)) {}
    ~TrayItemPresenter() override = default;
    TrayItemPresenter(const TrayItemPresenter&) = delete;
    TrayItemPresenter& operator=(const TrayItemPresenter&) = delete;

    void setWanted(bool isWanted) override;
    [[nodiscard]] bool isShown() const override { return tray_ && tray_->isDocked(); }

  private:
    void join();
    void trayChanged();

    Events events_;
    bool isWanted_ = false;
    LoopSource grace_;
    std::unique_ptr<XEmbedTray> tray_;
};

}  // namespace vantrel::x11
