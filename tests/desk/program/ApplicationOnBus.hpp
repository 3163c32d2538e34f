#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

#include "tests/desk/status/BusClient.hpp"
#include "tests/desk/support/Environment.hpp"

namespace vantrel::desk {

/// The agent as the desktop calls it: org.freedesktop.Application of org.vantrel.Vantrel. Calls start the agent where
/// the bus offers to.
class ApplicationOnBus {
  public:
    explicit ApplicationOnBus(const std::string& address) : bus_(address) {}

    BusClient& bus() { return bus_; }

    /// The unique name of the agent that has the application's name; empty when nobody has it.
    std::string owner();

    /// The process of that agent; 0 when there is none.
    pid_t process();

    /// Tells the bus what the services that it starts have in their environment.
    void setActivationEnvironment(const Environment& environment);

    // Each waits for the answer and gives the name of the D-Bus error, or an empty text.
    std::string open(const std::vector<std::string>& urls);
    std::string activate();
    std::string activateAction(const std::string& name);

    /// Opens the URL, one call for each time, and does not wait for answers.
    void openManyTimes(const std::string& url, int times);

  private:
    std::string call(const char* method, GVariant* arguments);

    BusClient bus_;
};

}  // namespace vantrel::desk
