#pragma once

#include <cairo/cairo.h>
#include <pango/pangocairo.h>

#include <memory>

namespace vantrel::overlay {

struct CairoDeleter {
    void operator()(cairo_t* context) const { cairo_destroy(context); }
};
using CairoPointer = std::unique_ptr<cairo_t, CairoDeleter>;

struct SurfaceDeleter {
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
};
using SurfacePointer = std::unique_ptr<cairo_surface_t, SurfaceDeleter>;

struct PangoObjectDeleter {
    void operator()(gpointer object) const { g_object_unref(object); }
};
using LayoutPointer = std::unique_ptr<PangoLayout, PangoObjectDeleter>;
using ContextPointer = std::unique_ptr<PangoContext, PangoObjectDeleter>;
using FontMapPointer = std::unique_ptr<PangoFontMap, PangoObjectDeleter>;

struct FontDescriptionDeleter {
    void operator()(PangoFontDescription* description) const { pango_font_description_free(description); }
};
using FontDescriptionPointer = std::unique_ptr<PangoFontDescription, FontDescriptionDeleter>;

}  // namespace vantrel::overlay
