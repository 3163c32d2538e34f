#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tests/desk/support/Keyboard.hpp"
#include "tests/desk/support/Wait.hpp"
#include "tests/desk/wayland/support/GnomeProcess.hpp"
#include "tests/desk/wayland/support/KeyboardMap.hpp"
#include "tests/desk/wayland/support/LayoutPoint.hpp"

namespace vantrel::desk {

/// A person at a private GNOME Shell, with the hands of a remote desktop session and the shell's own eyes. Points are
/// told from the main display's corner on, as the agent's are.
class GnomePerson {
  public:
    explicit GnomePerson(GnomeProcess& shell);
    GnomePerson(const GnomePerson&) = delete;
    GnomePerson& operator=(const GnomePerson&) = delete;

    /// Presses the keys in order and lets go of them in reverse order.
    void type(const Chord& chord);
    /// Presses the keys in order and keeps them down until letGo().
    void hold(const Chord& chord);
    void letGo();

    /// Moves the pointer and waits until it is there; throws when it does not get there.
    void moveTo(LayoutPoint point);
    /// Clicks on what the expression names: an actor of the shell.
    void click(const std::string& actor);
    void pressButton() { button(true); }
    void releaseButton() { button(false); }

    std::optional<LayoutPoint> pointer();
    bool waitFor(LayoutPoint point, Duration deadline = generousDeadline);
    bool staysAt(LayoutPoint point, Duration time = quietTime);

  private:
    void notify(const char* method, GVariant* arguments);
    void key(std::string_view name, bool isDown);
    void button(bool isDown);
    [[nodiscard]] LayoutPoint origin() const;

    GnomeProcess& shell_;
    KeyboardMap map_;
    std::string session_;
    std::vector<std::string> held_;
};

}  // namespace vantrel::desk
