#include "simulator/uikit/UIFont.hpp"

#include "simulator/foundation/strings.hpp"
#include "simulator/graphics/text.hpp"
#include "simulator/runtime/SimulatedClass.hpp"
#include "simulator/uikit/uikit.hpp"

/// A face that the phone knows by name, at a size.

namespace simulator {

namespace {

/// Nil for a name that the phone does not know.
UIFont* fontWithName_size(Class cls, SEL, NSString* name, CGFloat size)
{
    const auto face = typefaceNamed(toUTF8(name));
    if (!face)
        return nullptr;
    Owned<UIFont> font = adopt(send<"new", UIFont*>(cls));
    ivarsOf<FontState>(font.get()) = {Owned<NSString>(name), *face, size};
    return font.autorelease();
}

UIFont* systemFontOfSize(Class, SEL, CGFloat size)
{
    return UIFont::fontWithName_size(toNSString(systemFaceName), size);
}

UIFont* boldSystemFontOfSize(Class, SEL, CGFloat size)
{
    return UIFont::fontWithName_size(toNSString(boldSystemFaceName), size);
}

/// A measure of the face's lines, at the font's size.
CGFloat atSize(UIFont* font, double (*measure)(const LineMetrics&))
{
    const auto& state = ivarsOf<FontState>(font);
    return static_cast<CGFloat>(measure(state.face.lines) * static_cast<double>(state.pointSize));
}

CGFloat ascender(UIFont* self, SEL)
{
    return atSize(self, [](const LineMetrics& lines) { return lines.ascender; });
}

CGFloat descender(UIFont* self, SEL)
{
    return atSize(self, [](const LineMetrics& lines) { return -lines.descender; });
}

CGFloat leading(UIFont* self, SEL)
{
    return atSize(self, [](const LineMetrics& lines) { return lines.leading; });
}

CGFloat lineHeight(UIFont* self, SEL)
{
    return atSize(self, [](const LineMetrics& lines) { return lines.height(); });
}

} // namespace

void registerUIFont()
{
    SimulatedClass<FontState>("UIFont", "NSObject")
        .classMethod<"fontWithName:size:">(fontWithName_size)
        .classMethod<"systemFontOfSize:">(systemFontOfSize)
        .classMethod<"boldSystemFontOfSize:">(boldSystemFontOfSize)
        .readOnly<&FontState::fontName>("fontName")
        .readOnly<&FontState::pointSize>("pointSize")
        .method<"ascender">(ascender)
        .method<"descender">(descender)
        .method<"leading">(leading)
        .method<"lineHeight">(lineHeight)
        .registerClass();
}

} // namespace simulator
