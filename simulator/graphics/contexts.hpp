#pragma once

#include <memory>

#include "simulator/graphics/Bitmap.hpp"
#include "simulator/graphics/Colour.hpp"

namespace simulator {

/// Where drawing goes, with the colour it is done in.
struct GraphicsContext {
    /// Null for a context without area, which takes no drawing.
    cairo_t* cairo = nullptr;
    Colour fill{0, 0, 0, 1};
    /// The pixels of an image context.
    std::shared_ptr<Bitmap> bitmap = nullptr;
    /// Keeps the drawing context of an image context.
    std::shared_ptr<cairo_t> kept = nullptr;
};

/// The innermost context; null when there is none.
GraphicsContext* currentGraphicsContext();

void pushGraphicsContext(GraphicsContext context);
/// Without a context, nothing.
void popGraphicsContext();

} // namespace simulator
