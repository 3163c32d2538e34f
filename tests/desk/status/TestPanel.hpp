#pragma once

#include <string>
#include <vector>

#include "tests/desk/status/BusClient.hpp"

namespace vantrel::desk {

/// A StatusNotifierWatcher with or without a host, as a panel brings it to the bus.
class TestPanel {
  public:
    struct Options {
        bool hasHost = true;
        int refusals = 0;  ///< the number of registrations that it answers with an error
    };

    /// Comes to the bus and takes the watcher's name from whoever has it.
    explicit TestPanel(const std::string& address, Options options);
    explicit TestPanel(const std::string& address) : TestPanel(address, Options{}) {}
    ~TestPanel();
    TestPanel(const TestPanel&) = delete;
    TestPanel& operator=(const TestPanel&) = delete;

    /// The bus names of the items that registered, in order.
    [[nodiscard]] const std::vector<std::string>& items() const { return items_; }

    /// Waits for the number of registrations since the start.
    bool waitForRegistrations(std::size_t count);

    /// Says that the last host has gone or that one has come.
    void setHost(bool hasHost);

    BusClient& bus() { return bus_; }

  private:
    struct Callbacks;

    BusClient bus_;
    bool hasHost_;
    int refusals_;
    std::vector<std::string> items_;
    guint registration_ = 0;
};

}  // namespace vantrel::desk
