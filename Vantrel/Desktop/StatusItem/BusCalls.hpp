#pragma once

#include <functional>
#include <string>

#include "Vantrel/Handles/GLibHandles.hpp"

namespace vantrel::desktop {

/// A method on the bus.
struct BusMethod {
    std::string destination;
    std::string objectPath;
    std::string interface;
    std::string name;
};

/// Asynchronous calls made on behalf of one object: with the object go the answers that have not come yet.
class BusCalls {
  public:
    /// Gets the answer's arguments, or null when the call failed.
    using Answer = std::function<void(GVariant* arguments)>;

    explicit BusCalls(GDBusConnection* bus);
    ~BusCalls();
    BusCalls(const BusCalls&) = delete;
    BusCalls& operator=(const BusCalls&) = delete;

    /// Calls the method and returns at once. `arguments` may be floating; null for none.
    void call(const BusMethod& method, GVariant* arguments, Answer answer);

  private:
    GObjectPointer<GDBusConnection> bus_;
    GObjectPointer<GCancellable> cancellable_;
};

}  // namespace vantrel::desktop
