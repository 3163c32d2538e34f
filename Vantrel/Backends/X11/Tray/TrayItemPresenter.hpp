#pragma once

#include <memory>

#include "Vantrel/Backends/Common/DeferredTask.hpp"
#include "Vantrel/Backends/X11/Tray/XEmbedTray.hpp"
#include "Vantrel/Platform/ItemPresenter.hpp"

namespace vantrel::x11 {

/// The item in the old system tray of X.
class TrayItemPresenter final : public ItemPresenter {
  public:
    explicit TrayItemPresenter(Events events);

    void setWanted(bool isWanted) override;
    [[nodiscard]] bool isShown() const override { return tray_ && tray_->isDocked(); }

  private:
    void trayChanged();

    Events events_;
    bool isWanted_ = false;
    backend::DeferredTask grace_;
    std::unique_ptr<XEmbedTray> tray_;
};

}  // namespace vantrel::x11
