#pragma once

#include <string>

#include "tests/desk/wayland/support/KwinProcess.hpp"
#include "tests/desk/wayland/support/WaylandDesk.hpp"

namespace vantrel::desk {

/// A private session of KWin, with its bus.
class KwinDesk final : public WaylandDesk {
  public:
    static KwinOptions twoDisplays();

    explicit KwinDesk(const KwinOptions& options = twoDisplays());

    KwinProcess& kwin() { return static_cast<KwinProcess&>(compositor()); }
};

}  // namespace vantrel::desk
