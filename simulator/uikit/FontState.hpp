#pragma once

#include "platform/Foundation/NSString.hpp"
#include "platform/UIKit/UIFont.hpp"
#include "platform/runtime/ClassBuilder.hpp"
#include "simulator/graphics/typeface.hpp"

namespace simulator {

struct FontState {
    Owned<NSString> fontName;
    Typeface face;
    CGFloat pointSize = 0;
};

inline const FontState& stateOf(UIFont* font)
{
    return ivarsOf<FontState>(font);
}

} // namespace simulator
