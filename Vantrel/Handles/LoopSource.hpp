#pragma once

#include <glib.h>

#include <chrono>
#include <functional>
#include <memory>
#include <utility>

namespace vantrel {

struct GSourceDestroyer {
    void operator()(GSource* source) const {
        g_source_destroy(source);
        g_source_unref(source);
    }
};

/// Where in which loop a source stands.
struct LoopPlace {
    int priority = G_PRIORITY_DEFAULT;
    GMainContext* context = nullptr;  ///< null for the default one
};

/// Work that waits in a GLib loop, and is taken out of it with this object. The work may release its own source, or put
/// another in its place. Used on the thread that runs the loop.
class LoopSource {
  public:
    using Work = std::function<void()>;

    /// Nothing that waits.
    LoopSource() = default;

    /// Does the work once, when so long has passed: never earlier, at most a millisecond later where the loop is free.
    /// With zero it is done on a coming turn, after what waits at that priority already.
    [[nodiscard]] static LoopSource after(std::chrono::microseconds delay, Work work, LoopPlace place = {});

    /// Does the work once, when nothing more urgent waits.
    [[nodiscard]] static LoopSource whenIdle(Work work) {
        return after({}, std::move(work), {.priority = G_PRIORITY_DEFAULT_IDLE});
    }

    /// Does the work in each turn in which the descriptor is readable or broken. The descriptor outlives the source.
    [[nodiscard]] static LoopSource whenReadable(int descriptor, Work work, LoopPlace place = {});

    /// Does the work in each turn in which `isReady` says so, or a descriptor (if one is given) is readable or broken.
    /// `isReady` is asked before the loop would sleep and after it has slept, unless something of a higher priority is
    /// ready; it must not change what waits in the loop.
    [[nodiscard]] static LoopSource whenever(std::function<bool()> isReady, Work work, LoopPlace place = {},
                                             int descriptor = -1);

    /// Whether something waits. No longer so when work that is done once begins.
    [[nodiscard]] bool isSet() const { return source_ && g_source_is_destroyed(source_.get()) == FALSE; }

    void reset() { source_.reset(); }

  private:
    struct Callbacks;

    LoopSource(GSource* source, std::unique_ptr<Callbacks> callbacks, LoopPlace place);

    std::unique_ptr<GSource, GSourceDestroyer> source_;
};

}  // namespace vantrel
