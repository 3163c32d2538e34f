#pragma once

#include <gtest/gtest.h>
#include <sys/prctl.h>

#include "tests/desk/status/ItemProcess.hpp"
#include "tests/desk/status/PanelItem.hpp"
#include "tests/desk/status/ScreenWindows.hpp"
#include "tests/desk/status/TestPanel.hpp"
#include "tests/desk/support/Desk.hpp"

namespace vantrel::desk {

/// A desk for tests of the status item.
class StatusDesk : public testing::Test {
  protected:
    StatusDesk() = default;
    explicit StatusDesk(const DeskOptions& options) : desk(options) {}

    static constexpr auto overlayClass = "vantrel-overlay";
    static constexpr auto iconClass = "vantrel";

    /// The windows that the item has put on the screen itself.
    std::vector<ScreenWindow> overlayWindows() { return visibleWindows(desk.connection(), overlayClass); }
    bool waitForOverlayWindows(std::size_t count) {
        return waitOnBus([&] { return overlayWindows().size() == count; });
    }

    Desk desk;
};

/// Gives this process, which serves the test's panel, the name of another program while it lives: the item tells by the
/// name whether a panel draws labels.
class ProcessName {
  public:
    explicit ProcessName(const char* name) {
        prctl(PR_GET_NAME, former_);
        prctl(PR_SET_NAME, name);
    }
    ~ProcessName() { prctl(PR_SET_NAME, former_); }
    ProcessName(const ProcessName&) = delete;
    ProcessName& operator=(const ProcessName&) = delete;

  private:
    char former_[16] = {};
};

}  // namespace vantrel::desk
