#include "platform/UIKit/NSStringDrawing.hpp"

#include <limits>

#include "platform/UIKit/UIColor.hpp"
#include "simulator/foundation/strings.hpp"
#include "simulator/graphics/contexts.hpp"
#include "simulator/graphics/text.hpp"
#include "simulator/quartzcore/CGColor.hpp"
#include "simulator/runtime/SimulatedClass.hpp"
#include "simulator/uikit/UIFont.hpp"
#include "simulator/uikit/uikit.hpp"

/// Texts that draw themselves into the current graphics context.

/// The texts are made when the program starts: the string class is there from the beginning.
NSString* const NSFontAttributeName = constantString<"NSFont">();
NSString* const NSForegroundColorAttributeName = constantString<"NSColor">();

namespace simulator {

namespace {

/// Without a font, the phone's default: 12 points of Helvetica.
TextSetting settingOf(NSString* text, NSDictionary* attributes)
{
    constexpr double defaultSize = 12;
    auto* const font = attributes->objectForKey<UIFont>(NSFontAttributeName);
    if (font == nullptr)
        return {.text = toUTF8(text), .face = typefaceNamed("HelveticaNeue").value_or(Typeface{}), .fontSize = defaultSize};
    return {.text = toUTF8(text), .face = ivarsOf<FontState>(font).face, .fontSize = ivarsOf<FontState>(font).pointSize};
}

Colour colourIn(NSDictionary* attributes)
{
    auto* const color = attributes->objectForKey<UIColor>(NSForegroundColorAttributeName);
    return color == nullptr ? Colour{0, 0, 0, 1} : colourOf(color->CGColor());
}

void drawInRect_withAttributes(NSString* self, SEL, CGRect rect, NSDictionary* attributes)
{
    const GraphicsContext* const context = currentGraphicsContext();
    if (context == nullptr || context->cairo == nullptr)
        return;
    cairo_save(context->cairo);
    cairo_rectangle(context->cairo, rect.origin.x, rect.origin.y, rect.size.width, rect.size.height);
    cairo_clip(context->cairo);
    drawText(context->cairo, settingOf(self, attributes), rect, colourIn(attributes));
    cairo_restore(context->cairo);
}

CGSize sizeWithAttributes(NSString* self, SEL, NSDictionary* attributes)
{
    return measureText(settingOf(self, attributes), std::numeric_limits<double>::infinity());
}

} // namespace

void addStringDrawing()
{
    addMethod<"drawInRect:withAttributes:">(classNamed<"NSString">(), &drawInRect_withAttributes);
    addMethod<"sizeWithAttributes:">(classNamed<"NSString">(), &sizeWithAttributes);
}

} // namespace simulator
