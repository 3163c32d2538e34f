#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "tests/desk/status/PanelItem.hpp"
#include "tests/desk/status/TestPanel.hpp"
#include "tests/desk/wayland/support/WaylandDesk.hpp"
#include "tests/soak/wayland/LayoutMaker.hpp"

namespace vantrel::soak {

/// A private Wayland session with a panel and the agent, and what its person can do about displays, keyboard layouts
/// and the configuration. Everything throws when it does not come about.
class Session {
  public:
    virtual ~Session() = default;
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    virtual desk::WaylandDesk& desk() = 0;
    desk::SeatClient& person() { return desk().person(); }

    /// Shows a layout, of any outputs in any places, and waits until the person sees it.
    void show(const std::vector<ShownDisplay>& displays);
    [[nodiscard]] const std::vector<ShownDisplay>& shown() const { return shown_; }
    [[nodiscard]] virtual std::vector<DisplayShape> shapes() const = 0;
    /// The numbers of the outputs that there are now.
    [[nodiscard]] const std::vector<int>& outputs() const { return outputs_; }
    /// Plugs an output in that was not there before, or pulls one out for good; false where that cannot be done (any
    /// more). The layout is to be shown anew then.
    virtual bool plug() { return false; }

    /// Has the compositor read its configuration again, in which the shown displays stand.
    virtual void reconfigure() = 0;
    /// Makes one of three keyboard layouts the active one.
    virtual void chooseKeyboardLayout(unsigned number) = 0;

    /// Where the pointer comes to rest after it was sent there.
    [[nodiscard]] virtual desk::LayoutPoint kept(desk::LayoutPoint point) const { return point; }

    /// Waits until all that was typed up to now has come to the agent, and the agent has done what it does about it.
    void awaitAgent();

    /// Moves the pointer there by hand; where the person sees it then, which may be the least fraction off.
    desk::LayoutPoint bring(desk::LayoutPoint place);

    /// Starts the agent, and waits until it has its hot keys and its item in the panel.
    void startAgent();
    desk::AgentProcess& agent() { return *agent_; }
    /// SIGKILL.
    void killAgent();
    /// The ordinary end; throws when it is anything else.
    void endAgent();
    /// What the panel shows of it.
    std::string label() { return item_->text("XAyatanaLabel"); }
    void openURLs(const std::vector<std::string>& urls);
    /// The same without waiting for an answer.
    void openURLsLater(const std::vector<std::string>& urls);

    /// Throws unless the agent, which has come to its ordinary end, has left no hot key behind.
    virtual void checkNoHotKeysRemain() = 0;

  protected:
    Session() = default;
    /// The displays are there from the start.
    void expect(std::vector<ShownDisplay> displays, std::vector<int> outputs);
    void setOutputs(std::vector<int> outputs) { outputs_ = std::move(outputs); }

    virtual void apply(const std::vector<ShownDisplay>& displays) = 0;
    /// What the person is told of the outputs when these are shown.
    [[nodiscard]] virtual std::vector<desk::LayoutArea> areas(const std::vector<ShownDisplay>& displays) const = 0;
    /// Where the main one of them stands in the layout.
    [[nodiscard]] virtual desk::LayoutPoint mainCorner(const std::vector<ShownDisplay>& /*displays*/) const {
        return {};
    }
    virtual std::string panelBus() = 0;
    /// Waits until what the compositor has to tell of typed keys is on its way to the agent.
    virtual void awaitKeysTold();

    void awaitShown();

  private:
    void awaitItem();
    /// Where the person sees the pointer once it is there; none when it does not come in a while.
    std::optional<desk::LayoutPoint> seenNear(desk::LayoutPoint place);
    /// Moves it by hand from display to display, from one end or the other up to that which shows the place.
    void walkTowards(desk::LayoutPoint place, bool isForward);

    std::vector<ShownDisplay> shown_;
    std::vector<int> outputs_;
    std::unique_ptr<desk::TestPanel> panel_;
    std::unique_ptr<desk::PanelItem> item_;
    std::unique_ptr<desk::AgentProcess> agent_;
};

/// Those that can be had here, by their names: "sway", "kwin".
std::vector<std::string> sessionNames();
std::unique_ptr<Session> makeSession(const std::string& name);

}  // namespace vantrel::soak
