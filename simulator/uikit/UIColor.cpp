#include "platform/UIKit/UIColor.hpp"

#include "simulator/graphics/contexts.hpp"
#include "simulator/quartzcore/CGColor.hpp"
#include "simulator/runtime/SimulatedClass.hpp"
#include "simulator/uikit/uikit.hpp"

/// A colour of Core Graphics as an object of UIKit, and those that have a name.

namespace simulator {

namespace {

struct ColorState {
    Owned<CGColor> color;
};

UIColor* initWithRed_green_blue_alpha(UIColor* self, SEL, CGFloat red, CGFloat green, CGFloat blue, CGFloat alpha)
{
    ivarsOf<ColorState>(self).color = makeColor({red, green, blue, alpha});
    return self;
}

UIColor* colorWithRed_green_blue_alpha(Class cls, SEL, CGFloat red, CGFloat green, CGFloat blue, CGFloat alpha)
{
    return adopt(send<"alloc", UIColor*>(cls)->initWithRed_green_blue_alpha(red, green, blue, alpha)).autorelease();
}

UIColor* colorWithWhite_alpha(Class, SEL, CGFloat white, CGFloat alpha)
{
    return UIColor::colorWithRed_green_blue_alpha(white, white, white, alpha);
}

/// One of the colours that have a name; it is made once and kept.
template <Colour Named>
UIColor* namedColor(Class, SEL)
{
    static UIColor* const color =
        Owned(UIColor::colorWithRed_green_blue_alpha(Named.red, Named.green, Named.blue, Named.alpha)).leak();
    return color;
}

void set(UIColor* self, SEL)
{
    if (GraphicsContext* const context = currentGraphicsContext())
        context->fill = colourOf(self->CGColor());
}

BOOL getRed_green_blue_alpha(UIColor* self, SEL, CGFloat* red, CGFloat* green, CGFloat* blue, CGFloat* alpha)
{
    const Colour colour = colourOf(self->CGColor());
    const auto give = [](CGFloat* where, CGFloat component) {
        if (where != nullptr)
            *where = component;
    };
    give(red, colour.red);
    give(green, colour.green);
    give(blue, colour.blue);
    give(alpha, colour.alpha);
    return YES;
}

BOOL isEqual(UIColor* self, SEL, NSObject* other)
{
    if (!other->isKindOfClass(classNamed<"UIColor">()))
        return NO;
    return BOOL{colourOf(self->CGColor()) == colourOf(static_cast<UIColor*>(other)->CGColor())};
}

} // namespace

void registerUIColor()
{
    SimulatedClass<ColorState>("UIColor", "NSObject")
        .classMethod<"colorWithRed:green:blue:alpha:">(colorWithRed_green_blue_alpha)
        .classMethod<"colorWithWhite:alpha:">(colorWithWhite_alpha)
        .classMethod<"whiteColor">(namedColor<Colour{1, 1, 1, 1}>)
        .classMethod<"blackColor">(namedColor<Colour{0, 0, 0, 1}>)
        .classMethod<"clearColor">(namedColor<Colour{0, 0, 0, 0}>)
        .classMethod<"grayColor">(namedColor<Colour{0.5, 0.5, 0.5, 1}>)
        .classMethod<"greenColor">(namedColor<Colour{0, 1, 0, 1}>)
        .classMethod<"redColor">(namedColor<Colour{1, 0, 0, 1}>)
        .classMethod<"blueColor">(namedColor<Colour{0, 0, 1, 1}>)
        .method<"initWithRed:green:blue:alpha:">(initWithRed_green_blue_alpha)
        .readOnly<&ColorState::color>("CGColor")
        .method<"set">(set)
        .method<"getRed:green:blue:alpha:">(getRed_green_blue_alpha)
        .method<"isEqual:">(isEqual)
        .registerClass();
}

} // namespace simulator
