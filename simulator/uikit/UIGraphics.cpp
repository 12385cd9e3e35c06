#include "platform/UIKit/UIGraphics.hpp"

#include "platform/UIKit/UIScreen.hpp"
#include "simulator/graphics/contexts.hpp"
#include "simulator/uikit/UIImage.hpp"

/// Image contexts: bitmaps to draw into, one inside the other.

using simulator::Bitmap;
using simulator::CairoDeleter;
using simulator::GraphicsContext;

extern "C" {

void UIGraphicsBeginImageContextWithOptions(CGSize size, BOOL opaque, CGFloat scale)
{
    GraphicsContext context;
    context.bitmap = Bitmap::make(size, scale > 0 ? scale : UIScreen::mainScreen()->scale(), opaque != NO);
    if (context.bitmap != nullptr) {
        context.kept = std::shared_ptr<cairo_t>(context.bitmap->context().release(), CairoDeleter());
        context.cairo = context.kept.get();
    }
    simulator::pushGraphicsContext(context);
}

UIImage* UIGraphicsGetImageFromCurrentImageContext(void)
{
    const GraphicsContext* const context = simulator::currentGraphicsContext();
    if (context == nullptr || context->bitmap == nullptr)
        return nullptr;
    // A copy, since drawing may go on.
    const auto copy = Bitmap::make(context->bitmap->size(), context->bitmap->scale(), false);
    context->bitmap->draw(copy->context().get(), {{0, 0}, copy->size()});
    return simulator::imageWithBitmap(copy).autorelease();
}

void UIGraphicsEndImageContext(void)
{
    simulator::popGraphicsContext();
}
}
