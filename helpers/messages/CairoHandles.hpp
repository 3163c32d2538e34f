#pragma once

#include <cairo/cairo.h>
#include <pango/pangocairo.h>

#include <memory>

#include "Vantrel/Handles/GLibHandles.hpp"

namespace vantrel::overlay {

struct CairoDeleter {
    void operator()(cairo_t* context) const { cairo_destroy(context); }
};
using CairoPointer = std::unique_ptr<cairo_t, CairoDeleter>;

struct SurfaceDeleter {
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
};
using SurfacePointer = std::unique_ptr<cairo_surface_t, SurfaceDeleter>;

using LayoutPointer = GObjectPointer<PangoLayout>;
using ContextPointer = GObjectPointer<PangoContext>;
using FontMapPointer = GObjectPointer<PangoFontMap>;

struct FontDescriptionDeleter {
    void operator()(PangoFontDescription* description) const { pango_font_description_free(description); }
};
using FontDescriptionPointer = std::unique_ptr<PangoFontDescription, FontDescriptionDeleter>;

}  // namespace vantrel::overlay
