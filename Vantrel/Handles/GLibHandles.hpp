#pragma once

#include <gio/gio.h>

#include <memory>

namespace vantrel {

struct GObjectDeleter {
    void operator()(gpointer object) const { g_object_unref(object); }
};
/// A reference to a GObject.
template <typename Object>
using GObjectPointer = std::unique_ptr<Object, GObjectDeleter>;

/// A further reference to the object that someone else holds; null gives null.
template <typename Object>
GObjectPointer<Object> shareObject(Object* object) {
    return GObjectPointer<Object>(object == nullptr ? nullptr : static_cast<Object*>(g_object_ref(object)));
}

struct GVariantDeleter {
    void operator()(GVariant* value) const { g_variant_unref(value); }
};
using GVariantPointer = std::unique_ptr<GVariant, GVariantDeleter>;

struct GErrorDeleter {
    void operator()(GError* error) const { g_error_free(error); }
};
using GErrorPointer = std::unique_ptr<GError, GErrorDeleter>;

struct GMainContextDeleter {
    void operator()(GMainContext* context) const { g_main_context_unref(context); }
};
using GMainContextPointer = std::unique_ptr<GMainContext, GMainContextDeleter>;

struct GFreeDeleter {
    void operator()(gpointer memory) const { g_free(memory); }
};
using GCharPointer = std::unique_ptr<gchar, GFreeDeleter>;

}  // namespace vantrel
