#include "platform/SpringBoard/SBLockScreen.hpp"
#include "platform/UIKit/UIColor.hpp"
#include "platform/runtime/ClassBuilder.hpp"

/// The lock screen's now-playing plug-in: a library of its own, which is loaded only when somebody asks for it and then
/// registers the view that shows the artwork of what plays. Its `initWithFrame:` is the one that it inherits.

namespace simulator {

namespace {

struct ArtViewIvars {};

/// There is no music and so no cover: a plain colour.
void layoutSubviews(_NowPlayingArtView* self, SEL)
{
    self->setBackgroundColor(UIColor::colorWithRed_green_blue_alpha(0.16, 0.2, 0.3, 1));
}

[[gnu::constructor]] void registerNowPlayingArtView()
{
    ClassBuilder<ArtViewIvars>("_NowPlayingArtView", "UIView").method<"layoutSubviews">(layoutSubviews).registerClass();
}

} // namespace

} // namespace simulator
