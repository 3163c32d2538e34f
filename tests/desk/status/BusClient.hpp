#pragma once

#include <gio/gio.h>

#include <functional>
#include <memory>
#include <string>

#include "Vantrel/Handles/GLibHandles.hpp"
#include "tests/desk/support/Wait.hpp"

namespace vantrel::desk {

/// How long a call on a private bus may take on a loaded machine, in milliseconds.
inline constexpr int callDeadline = 20000;

/// A connection of its own to a private session bus. Its callbacks run while waitOnBus() waits.
class BusClient {
  public:
    /// Throws when the bus does not let it in.
    explicit BusClient(const std::string& address);
    ~BusClient();
    BusClient(const BusClient&) = delete;
    BusClient& operator=(const BusClient&) = delete;

    [[nodiscard]] GDBusConnection* get() const { return connection_.get(); }
    [[nodiscard]] std::string uniqueName() const { return g_dbus_connection_get_unique_name(get()); }

    /// Calls the method and waits for the answer; null when it is an error. `arguments` may be floating.
    GVariantPointer call(const std::string& destination, const std::string& path, const std::string& interface,
                         const std::string& method, GVariant* arguments);

    /// The value of a property; null when there is none.
    GVariantPointer property(const std::string& destination, const std::string& path, const std::string& interface,
                             const std::string& name);

    /// Owns the name, taken from its present owner if need be; throws when it cannot.
    void ownName(const std::string& name);
    void releaseName(const std::string& name);

  private:
    GObjectPointer<GDBusConnection> connection_;
};

/// Serves the bus until the condition holds or the deadline passes. Returns whether it held.
bool waitOnBus(const std::function<bool()>& condition, Duration deadline = generousDeadline);

/// The text in a variant of type s, o or a variant of these; empty for null.
std::string textOf(const GVariantPointer& value);

}  // namespace vantrel::desk
