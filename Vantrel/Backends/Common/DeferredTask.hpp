#pragma once

#include <glib.h>

#include <chrono>
#include <functional>
#include <utility>

namespace vantrel::backend {

/// Work that the loop does once when nothing more urgent waits, however often it was asked for before then. Idle work
/// unless another priority (g_source_set_priority) is given.
class DeferredTask {
  public:
    explicit DeferredTask(std::function<void()> work, int priority = G_PRIORITY_DEFAULT_IDLE)
        : work_(std::move(work)), priority_(priority) {}
    ~DeferredTask() { cancel(); }
    DeferredTask(const DeferredTask&) = delete;
    DeferredTask& operator=(const DeferredTask&) = delete;

    /// Asks for the work to be done by the main loop, not before so long has passed. Where it was asked for already,
    /// that request stands.
    void schedule(std::chrono::milliseconds delay = {}) {
        if (source_ != nullptr) {
            return;
        }
        source_ = g_timeout_source_new(static_cast<guint>(delay.count()));
        g_source_set_priority(source_, priority_);
        g_source_set_callback(source_, &run, this, nullptr);
        g_source_attach(source_, nullptr);
    }

    void cancel() {
        if (GSource* source = std::exchange(source_, nullptr)) {
            g_source_destroy(source);
            g_source_unref(source);
        }
    }

  private:
    static gboolean run(gpointer data) {
        auto& task = *static_cast<DeferredTask*>(data);
        task.cancel();
        task.work_();
        return G_SOURCE_REMOVE;
    }

    std::function<void()> work_;
    int priority_;
    GSource* source_ = nullptr;
};

}  // namespace vantrel::backend
