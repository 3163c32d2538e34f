#pragma once

#include <memory>
#include <string>
#include <vector>

#include "tests/desk/settings/WindowManagerProbe.hpp"
#include "tests/desk/status/PanelItem.hpp"
#include "tests/desk/status/TestPanel.hpp"
#include "tests/desk/support/Desk.hpp"
#include "tests/soak/StoreReader.hpp"
#include "tests/soak/Typist.hpp"

namespace vantrel::soak {

/// Rows of the agent's menu, counted from 1.
enum class MenuRow : int { nextDisplay = 4, previousDisplay = 5, clearPoints = 9, settings = 11 };

/// A desk with everything that a person has: a window manager, a panel, and the agent with its settings window.
/// Everything throws when it does not come about.
class SoakDesk {
  public:
    SoakDesk();
    SoakDesk(const SoakDesk&) = delete;
    SoakDesk& operator=(const SoakDesk&) = delete;
    ~SoakDesk() = default;

    desk::Desk& desk() { return desk_; }
    Typist& typist() { return typist_; }
    desk::AgentProcess& agent() { return *agent_; }

    /// Has the agent run under the program, e.g. valgrind, from its next start on.
    void wrapAgent(std::vector<std::string> wrapper) { desk_.wrapAgent(std::move(wrapper)); }

    /// Starts the agent, and waits for its hot keys and its item in the panel.
    void startAgent();
    /// SIGKILL.
    void killAgent();
    /// The ordinary end; throws when it is anything else.
    void endAgent();

    /// Serves the bus until the condition holds; throws with what was waited for if it does not, or if the agent ends.
    void await(const std::string& what, const std::function<bool()>& condition);
    /// Reads what has come from the bus.
    static void serveBus();

    void restartPanel();
    void click(MenuRow row);

    /// Hands the URLs to the agent in one call on the bus.
    void openURLs(const std::vector<std::string>& urls);

    /// Gives the keyboard a map, and waits until the agent has its hot keys on it.
    void setKeymap(const std::string& layout, const std::string& option);

    /// Opens the settings window by the menu and waits until it has the keyboard.
    void openSettings();
    void closeSettings();
    [[nodiscard]] bool isSettingsOpen() const { return settingsWindow_ != XCB_NONE; }

    /// The store as another program sees it, which has it open from now on. Only while there is one.
    StoreReader& store();
    void closeStore() { store_.reset(); }

  private:
    xcb_window_t findSettingsWindow();
    void awaitItem();

    desk::Desk desk_{{.hasSessionBus = true, .hasWindowManager = true}};
    Typist typist_{desk_.connection(), desk_.keyboard()};
    desk::WindowManagerProbe windows_{desk_.connection()};
    std::unique_ptr<desk::TestPanel> panel_;
    std::unique_ptr<desk::PanelItem> item_;
    std::unique_ptr<desk::AgentProcess> agent_;
    std::unique_ptr<StoreReader> store_;
    xcb_window_t settingsWindow_ = XCB_NONE;
};

}  // namespace vantrel::soak
