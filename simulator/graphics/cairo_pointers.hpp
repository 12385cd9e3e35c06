#pragma once

#include <memory>

#include <cairo.h>
#include <pango/pango.h>

namespace simulator {

struct CairoDeleter {
    void operator()(cairo_t* cairo) const { cairo_destroy(cairo); }
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
    void operator()(cairo_pattern_t* pattern) const { cairo_pattern_destroy(pattern); }
    void operator()(cairo_font_options_t* options) const { cairo_font_options_destroy(options); }
    void operator()(PangoFontDescription* description) const { pango_font_description_free(description); }
    void operator()(PangoLayout* layout) const { g_object_unref(layout); }
    void operator()(PangoLayoutIter* line) const { pango_layout_iter_free(line); }
    void operator()(PangoContext* context) const { g_object_unref(context); }
};

/// Owns an object of Cairo or Pango.
template <class T>
using CairoPointer = std::unique_ptr<T, CairoDeleter>;

} // namespace simulator
