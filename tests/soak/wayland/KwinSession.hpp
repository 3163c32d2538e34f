#pragma once

#include "tests/desk/wayland/support/KwinDesk.hpp"
#include "tests/soak/wayland/Session.hpp"

namespace vantrel::soak {

/// A private session of KWin.
class KwinSession final : public Session {
  public:
    KwinSession();

    desk::WaylandDesk& desk() override { return desk_; }
    [[nodiscard]] std::vector<DisplayShape> shapes() const override;
    void reconfigure() override;
    void chooseKeyboardLayout(unsigned number) override { desk_.kwin().chooseLayout(number); }
    [[nodiscard]] desk::LayoutPoint kept(desk::LayoutPoint point) const override;
    void checkNoHotKeysRemain() override;

  protected:
    void apply(const std::vector<ShownDisplay>& displays) override;
    [[nodiscard]] std::vector<desk::LayoutArea> areas(const std::vector<ShownDisplay>& displays) const override;
    [[nodiscard]] desk::LayoutPoint mainCorner(const std::vector<ShownDisplay>& displays) const override;
    std::string panelBus() override { return desk_.kwin().busAddress(); }
    void awaitKeysTold() override;

  private:
    std::string storedShortcuts();

    desk::KwinDesk desk_;
    desk::BusClient bus_;
    std::string shortcutsBefore_;  ///< as KWin has stored them before the first agent
};

}  // namespace vantrel::soak
