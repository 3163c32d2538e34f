#pragma once

#include <glib.h>

#include <memory>

namespace vantrel::desktop {

struct SourceDestroyer {
    void operator()(GSource* source) const {
        g_source_destroy(source);
        g_source_unref(source);
    }
};

/// A source of a main context; releasing it takes it out of the context.
using SourceHandle = std::unique_ptr<GSource, SourceDestroyer>;

struct MainContextReleaser {
    void operator()(GMainContext* context) const { g_main_context_unref(context); }
};
using MainContextHandle = std::unique_ptr<GMainContext, MainContextReleaser>;

}  // namespace vantrel::desktop
