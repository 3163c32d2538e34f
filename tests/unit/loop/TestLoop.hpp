#pragma once

#include "Vantrel/Handles/GLibHandles.hpp"

namespace vantrel::desktop {

/// A main context of the test's own, turned by hand.
class TestLoop {
  public:
    TestLoop() : context_(g_main_context_new()) {}

    GMainContext* context() const { return context_.get(); }

    /// One turn, without waiting; false when nothing was ready.
    bool turn() { return g_main_context_iteration(context_.get(), FALSE) != FALSE; }

    /// One turn, which waits until something is ready.
    void waitingTurn() { g_main_context_iteration(context_.get(), TRUE); }

    /// Turns until the condition holds. A test that waits in vain is ended by its time limit.
    template <typename Condition>
    void turnUntil(Condition condition) {
        while (!condition()) {
            waitingTurn();
        }
    }

    /// How long the loop would sleep now, in milliseconds; -1 for ever.
    int sleepTime() {
        int priority = 0;
        g_main_context_acquire(context_.get());
        g_main_context_prepare(context_.get(), &priority);
        int timeout = 0;
        g_main_context_query(context_.get(), priority, &timeout, nullptr, 0);
        g_main_context_release(context_.get());
        return timeout;
    }

  private:
    GMainContextPointer context_;
};

}  // namespace vantrel::desktop
