#pragma once

#include "platform/Foundation/NSString.hpp"
#include "platform/UIKit/UIFont.hpp"
#include "simulator/graphics/typeface.hpp"
#include "simulator/runtime/SimulatedClass.hpp"

namespace simulator {

/// What every font holds ("UIFont", UIKit).
struct FontState {
    Owned<NSString> fontName;
    Typeface face;
    CGFloat pointSize = 0;
};

} // namespace simulator
