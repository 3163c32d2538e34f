#include "Vantrel/Handles/LoopSource.hpp"

#include <glib-unix.h>

#include <utility>

namespace vantrel {

/// GLib keeps these while it uses them, also when the work releases its own source.
struct LoopSource::Callbacks {
    Work work;
    std::function<bool()> isReady;

    static gboolean run(gpointer data) {
        static_cast<Callbacks*>(data)->work();
        return G_SOURCE_CONTINUE;
    }

    static void release(gpointer data) { const std::unique_ptr<Callbacks> callbacks(static_cast<Callbacks*>(data)); }
};

namespace {

/// GLib allocates a source itself and asks only that it begin with a GSource.
struct ConditionalSource {
    GSource base;
    const std::function<bool()>* isReady;
};

gboolean check(GSource* source) {
    return (*reinterpret_cast<ConditionalSource*>(source)->isReady)() ? TRUE : FALSE;
}

gboolean prepare(GSource* source, gint* timeout) {
    *timeout = -1;
    return check(source);
}

gboolean dispatch(GSource* /*source*/, GSourceFunc callback, gpointer data) {
    return callback(data);
}

gboolean dispatchOnce(GSource* source, GSourceFunc callback, gpointer data) {
    g_source_destroy(source);
    return callback(data);
}

}  // namespace

LoopSource::LoopSource(GSource* source, std::unique_ptr<Callbacks> callbacks, LoopPlace place) : source_(source) {
    g_source_set_callback(source, &Callbacks::run, callbacks.release(), &Callbacks::release);
    g_source_set_priority(source, place.priority);
    // Work may run a loop of its own, in which the rest goes on. Without this GLib also takes the descriptors out of
    // its list for each run and puts them back, waking itself up each time: two writes, a read and a turn of the loop.
    g_source_set_can_recurse(source, TRUE);
    g_source_attach(source, place.context);
}

LoopSource LoopSource::after(std::chrono::microseconds delay, Work work, LoopPlace place) {
    static GSourceFuncs functions{nullptr, nullptr, &dispatchOnce, nullptr, nullptr, nullptr};
    GSource* const source = g_source_new(&functions, sizeof(GSource));
    g_source_set_ready_time(source, g_get_monotonic_time() + delay.count());
    return {source, std::make_unique<Callbacks>(Callbacks{std::move(work), nullptr}), place};
}

LoopSource LoopSource::whenReadable(int descriptor, Work work, LoopPlace place) {
    static GSourceFuncs functions{nullptr, nullptr, &dispatch, nullptr, nullptr, nullptr};
    GSource* const source = g_source_new(&functions, sizeof(GSource));
    g_source_add_unix_fd(source, descriptor, G_IO_IN);
    return {source, std::make_unique<Callbacks>(Callbacks{std::move(work), nullptr}), place};
}

LoopSource LoopSource::whenever(std::function<bool()> isReady, Work work, LoopPlace place, int descriptor) {
    static GSourceFuncs functions{&prepare, &check, &dispatch, nullptr, nullptr, nullptr};
    auto callbacks = std::make_unique<Callbacks>(Callbacks{std::move(work), std::move(isReady)});
    GSource* const source = g_source_new(&functions, sizeof(ConditionalSource));
    reinterpret_cast<ConditionalSource*>(source)->isReady = &callbacks->isReady;
    if (descriptor >= 0) {
        g_source_add_unix_fd(source, descriptor, G_IO_IN);
    }
    return {source, std::move(callbacks), place};
}

}  // namespace vantrel
