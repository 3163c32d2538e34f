#pragma once

#include <memory>
#include <string>

#include "tests/desk/wayland/support/CompositorDesk.hpp"
#include "tests/desk/wayland/support/GnomePerson.hpp"
#include "tests/desk/wayland/support/GnomeProcess.hpp"

namespace vantrel::desk {

/// A private GNOME session, with Vantrel's extension.
class GnomeDesk : public CompositorDesk {
  public:
    /// The displays of WaylandDesk::twoOutputs.
    static GnomeOptions twoDisplays();

    explicit GnomeDesk(const GnomeOptions& options = twoDisplays());

    GnomeProcess& shell() { return static_cast<GnomeProcess&>(compositor()); }
    GnomePerson& person() { return *person_; }
    /// Has the person sit down anew, at a shell that was started anew.
    void seatPerson() { person_ = std::make_unique<GnomePerson>(shell()); }

    /// What a JavaScript expression about Vantrel's item in the panel, `item`, comes to; "null" while there is none.
    std::string item(const std::string& expression);
    /// The texts of the rows of its menu, in order; a separator has none.
    std::vector<std::string> rows();
    bool waitForTitle(const std::string& title, Duration deadline = generousDeadline);
    /// Has each of the item's titles from now on written down. Some stand for a moment that a busy test may miss.
    void watchTitles();
    /// Waits for a title since then.
    bool waitForWatchedTitle(const std::string& title, Duration deadline = generousDeadline);
    /// What Vantrel has put on the screen beside it, in quotes; "null" for nothing.
    std::string notice();
    /// Opens the menu by a click, and clicks on the row of that number.
    void chooseRow(std::size_t row);

    /// Presses the chord and waits until the pointer is at the point; false when it does not get there.
    bool jump(const Chord& chord, LayoutPoint target);
    /// The same, by having the agent obey the URL.
    bool jump(const std::string& url, LayoutPoint target);

  private:
    bool jump(const std::function<void()>& ask, LayoutPoint target);

    std::unique_ptr<GnomePerson> person_;
};

}  // namespace vantrel::desk
