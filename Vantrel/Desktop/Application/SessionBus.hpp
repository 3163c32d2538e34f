#pragma once

#include <chrono>
#include <functional>

#include "Vantrel/Handles/GLibHandles.hpp"

namespace vantrel::desktop {

/// The connection to the session bus, if the session has one. The connection is made without waiting: a bus that does
/// not answer must not hold up a hot key.
class SessionBus {
  public:
    /// Called once with the connection, which is the process's shared one, and never when there is no bus.
    using Connected = std::function<void(GDBusConnection* bus)>;

    explicit SessionBus(Connected connected);
    ~SessionBus();
    SessionBus(const SessionBus&) = delete;
    SessionBus& operator=(const SessionBus&) = delete;

    /// Begins to connect, if a bus is offered.
    void connect();

    /// Waits until all that was sent has left the process, but no longer than `most`: a bus that hangs must not hold up
    /// the end. Serves nothing meanwhile.
    void flush(std::chrono::milliseconds most);

  private:
    static void finish(GObject* source, GAsyncResult* result, gpointer data);

    Connected connected_;
    GObjectPointer<GCancellable> cancellable_;
    GObjectPointer<GDBusConnection> bus_;
};

}  // namespace vantrel::desktop
