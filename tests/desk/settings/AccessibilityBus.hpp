#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "tests/desk/status/BusClient.hpp"
#include "tests/desk/support/ChildProcess.hpp"

namespace vantrel::desk {

/// One thing on the screen as a screen reader knows it.
struct AccessibleObject {
    std::string busName;
    std::string path;

    bool operator==(const AccessibleObject&) const = default;
};

/// What an object told a screen reader.
struct AccessibleEvent {
    AccessibleObject source;
    std::string kind;  ///< as "PropertyChange:accessible-name"

    bool operator==(const AccessibleEvent&) const = default;
};

/// The accessibility bus of a private session (AT-SPI), and a screen reader's view of what is on it.
class AccessibilityBus {
  public:
    /// Starts the bus beside the session bus, in the desk's environment (its socket is in the home); throws when it
    /// does not come up.
    AccessibilityBus(const std::string& sessionBusAddress, const Environment& environment);
    ~AccessibilityBus();
    AccessibilityBus(const AccessibilityBus&) = delete;
    AccessibilityBus& operator=(const AccessibilityBus&) = delete;

    /// The first object with that role and name, anywhere in the application of that name; none when there is none.
    std::optional<AccessibleObject> find(const std::string& application, const std::string& role,
                                         const std::string& name);

    std::string name(const AccessibleObject& object);
    std::string role(const AccessibleObject& object);
    bool hasState(const AccessibleObject& object, unsigned state);

    /// The names of the objects that label this one.
    std::vector<std::string> labels(const AccessibleObject& object);

    /// Does what a press of the object does.
    bool press(const AccessibleObject& object);

    /// What the objects told since the start.
    [[nodiscard]] const std::vector<AccessibleEvent>& events() const { return events_; }

  private:
    std::vector<AccessibleObject> children(const AccessibleObject& object);
    std::optional<AccessibleObject> findBelow(const AccessibleObject& object, const std::string& role,
                                              const std::string& name);
    GVariantPointer call(const AccessibleObject& object, const std::string& interface, const std::string& method,
                         GVariant* arguments);

    std::unique_ptr<ChildProcess> launcher_;
    std::unique_ptr<BusClient> bus_;
    guint subscription_ = 0;
    std::vector<AccessibleEvent> events_;
};

/// States of AT-SPI by their numbers.
namespace accessibleState {
inline constexpr unsigned checked = 4;
inline constexpr unsigned enabled = 8;
inline constexpr unsigned focusable = 11;
inline constexpr unsigned focused = 12;
inline constexpr unsigned showing = 25;
}  // namespace accessibleState

}  // namespace vantrel::desk
