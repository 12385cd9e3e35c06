#include "platform/UIKit/UIFont.hpp"

#include "simulator/foundation/strings.hpp"
#include "simulator/graphics/text.hpp"
#include "simulator/runtime/SimulatedClass.hpp"
#include "simulator/uikit/FontState.hpp"
#include "simulator/uikit/uikit.hpp"

namespace simulator {

namespace {

/// Nil for a name that the phone does not know.
UIFont* fontWithName(Class cls, SEL, NSString* name, CGFloat size)
{
    const auto face = typefaceNamed(toUTF8(name));
    if (!face)
        return nullptr;
    const Owned<UIFont> font = adopt(send<"new", UIFont*>(cls));
    ivarsOf<FontState>(font.get()) = {Owned<NSString>(name), *face, size};
    return Owned<UIFont>(font).autorelease();
}

UIFont* systemFontOfSize(Class, SEL, CGFloat size)
{
    return UIFont::fontWithName_size(toNSString(systemFaceName), size);
}

UIFont* boldSystemFontOfSize(Class, SEL, CGFloat size)
{
    return UIFont::fontWithName_size(toNSString(boldSystemFaceName), size);
}

CGFloat lineHeightOf(UIFont* self, SEL)
{
    return lineHeight(stateOf(self).face, stateOf(self).pointSize);
}

} // namespace

void registerUIFont()
{
    SimulatedClass<FontState>("UIFont", "NSObject")
        .classMethod<"fontWithName:size:">(fontWithName)
        .classMethod<"systemFontOfSize:">(systemFontOfSize)
        .classMethod<"boldSystemFontOfSize:">(boldSystemFontOfSize)
        .readOnly<&FontState::fontName>("fontName")
        .readOnly<&FontState::pointSize>("pointSize")
        .method<"lineHeight">(lineHeightOf)
        .registerClass();
}

} // namespace simulator
