#pragma once

#include "tests/desk/support/SessionBus.hpp"
#include "tests/desk/wayland/support/SwayDesk.hpp"
#include "tests/soak/wayland/Session.hpp"

namespace vantrel::soak {

/// A private session of sway.
class SwaySession final : public Session {
  public:
    SwaySession();

    desk::WaylandDesk& desk() override { return desk_; }
    [[nodiscard]] std::vector<DisplayShape> shapes() const override;
    bool plug() override;
    void reconfigure() override;
    void chooseKeyboardLayout(unsigned number) override { person().chooseLayout(number); }
    void checkNoHotKeysRemain() override;

  protected:
    void apply(const std::vector<ShownDisplay>& displays) override;
    [[nodiscard]] std::vector<desk::LayoutArea> areas(const std::vector<ShownDisplay>& displays) const override;
    std::string panelBus() override { return bus_.address(); }

  private:
    [[nodiscard]] std::string commandsFor(const std::vector<ShownDisplay>& displays, const char* separator) const;
    [[nodiscard]] bool isShown(int output, const std::vector<ShownDisplay>& displays) const;
    bool findOutWhetherOutputsGo();

    desk::SessionBus bus_;
    desk::SwayDesk desk_;
    bool canSwitchOff_ = false;
    int plugs_ = 0;
};

}  // namespace vantrel::soak
