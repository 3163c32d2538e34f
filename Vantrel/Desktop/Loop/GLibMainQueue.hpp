#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <thread>

#include "Vantrel/Desktop/Loop/SourceHandles.hpp"
#include "Vantrel/Platform/MainQueue.hpp"

namespace vantrel::desktop {

/// The main queue, served by a GLib main context. Made and used on the thread that runs the context; only
/// isMainThread() may be called elsewhere.
class GLibMainQueue final : public MainQueue {
  public:
    /// Null means the default context, which then is alive for as long as the process.
    explicit GLibMainQueue(GMainContext* context = nullptr);
    ~GLibMainQueue() override;
    GLibMainQueue(const GLibMainQueue&) = delete;
    GLibMainQueue& operator=(const GLibMainQueue&) = delete;

    /// A task that is scheduled by a running task waits for the turn after this one.
    void async(std::function<void()> task) override;

    /// The delay is kept to the millisecond, never shortened. A cancelled item leaves no wake-up behind.
    void asyncAfter(Seconds delay, std::shared_ptr<DispatchWorkItem> item) override;

    [[nodiscard]] bool isMainThread() const override;

    /// Lets go of the tasks that wait, and of what they hold, without running them: the loop turns no more.
    void dropTasks();

  private:
    struct Source;
    static gboolean prepare(GSource* source, gint* timeout);
    static gboolean check(GSource* source);
    static gboolean dispatch(GSource* source, GSourceFunc callback, gpointer data);

    void runTasks();

    MainContextHandle context_;
    std::thread::id mainThread_;
    std::deque<std::function<void()>> tasks_;
    SourceHandle source_;
};

}  // namespace vantrel::desktop
