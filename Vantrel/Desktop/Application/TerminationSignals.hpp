#pragma once

#include <array>
#include <csignal>
#include <functional>

#include "Vantrel/Handles/FileDescriptor.hpp"
#include "Vantrel/Handles/LoopSource.hpp"

namespace vantrel::desktop {

/// SIGTERM, SIGINT and SIGHUP from others, told by a main context. One that the process sends itself is left unheard:
/// GLib raises SIGTERM when the session bus goes away before its connection has been handed out, so before it can be
/// told not to (seen on GLib 2.74), and the agent lives without a bus. Only one object at a time.
class TerminationSignals {
  public:
    /// `received` is called for each signal, until this object is gone. Null means the default context.
    explicit TerminationSignals(std::function<void()> received, GMainContext* context = nullptr);
    ~TerminationSignals();
    TerminationSignals(const TerminationSignals&) = delete;
    TerminationSignals& operator=(const TerminationSignals&) = delete;

  private:
    static constexpr std::array<int, 3> signals{SIGTERM, SIGINT, SIGHUP};

    void takeSignals();

    std::function<void()> received_;
    FileDescriptor event_;
    LoopSource source_;
    std::array<struct sigaction, signals.size()> previous_{};
};

}  // namespace vantrel::desktop
