#pragma once

#include <glib-unix.h>

#include <functional>
#include <memory>
#include <utility>

namespace vantrel::backend {

/// Calls back from the main loop whenever a descriptor can be read or its other end is gone. Before everything but the
/// main queue's tasks, as the display server's events are.
class DescriptorSource {
  public:
    /// The descriptor outlives this object, which may be destroyed while it calls back.
    DescriptorSource(int descriptor, std::function<void()> readable)
        : readable_(std::make_shared<std::function<void()>>(std::move(readable))),
          source_(g_unix_fd_source_new(descriptor, static_cast<GIOCondition>(G_IO_IN | G_IO_HUP | G_IO_ERR))) {
        const GUnixFDSourceFunc call = [](gint /*descriptor*/, GIOCondition /*condition*/, gpointer data) -> gboolean {
            const auto readableNow = *static_cast<std::shared_ptr<std::function<void()>>*>(data);
            (*readableNow)();
            return G_SOURCE_CONTINUE;
        };
        g_source_set_callback(source_, reinterpret_cast<GSourceFunc>(reinterpret_cast<void (*)()>(call)), &readable_,
                              nullptr);
        g_source_set_priority(source_, G_PRIORITY_HIGH);
        // Nothing here runs a loop of its own. Otherwise GLib wakes itself up at each dispatch.
        g_source_set_can_recurse(source_, TRUE);
        g_source_attach(source_, nullptr);
    }
    ~DescriptorSource() {
        g_source_destroy(source_);
        g_source_unref(source_);
    }
    DescriptorSource(const DescriptorSource&) = delete;
    DescriptorSource& operator=(const DescriptorSource&) = delete;

  private:
    std::shared_ptr<std::function<void()>> readable_;
    GSource* source_;
};

}  // namespace vantrel::backend
