#pragma once

#include <glib.h>

#include <functional>
#include <utility>

namespace vantrel::x11 {

/// Work that the loop does once when nothing more urgent waits, however often it was asked for before then.
class IdleTask {
  public:
    explicit IdleTask(std::function<void()> work) : work_(std::move(work)) {}
    ~IdleTask() { cancel(); }
    IdleTask(const IdleTask&) = delete;
    IdleTask& operator=(const IdleTask&) = delete;

    /// Asks for the work to be done by the loop of the context.
    void schedule(GMainContext* context) {
        if (source_ != nullptr) {
            return;
        }
        source_ = g_idle_source_new();
        g_source_set_callback(source_, &run, this, nullptr);
        g_source_attach(source_, context);
    }

    void cancel() {
        if (GSource* source = std::exchange(source_, nullptr)) {
            g_source_destroy(source);
            g_source_unref(source);
        }
    }

  private:
    static gboolean run(gpointer data) {
        auto& task = *static_cast<IdleTask*>(data);
        task.cancel();
        task.work_();
        return G_SOURCE_REMOVE;
    }

    std::function<void()> work_;
    GSource* source_ = nullptr;
};

}  // namespace vantrel::x11
