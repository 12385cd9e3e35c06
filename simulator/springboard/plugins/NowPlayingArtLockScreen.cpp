#include "platform/UIKit/UIView.hpp"
#include "simulator/runtime/SimulatedClass.hpp"

/// The lock screen's now-playing plug-in: a library of its own, which is loaded only when somebody asks for it and then
/// registers the view that shows the artwork of what plays.

namespace simulator {

namespace {

struct ArtViewState {};

UIView* initWithFrame(UIView* self, SEL, CGRect frame)
{
    superOf<ArtViewState, "initWithFrame:", UIView*>(self, frame);
    self->setBackgroundColor(UIColor::colorWithRed_green_blue_alpha(0.16, 0.2, 0.3, 1));
    self->setUserInteractionEnabled(false);
    return self;
}

[[gnu::constructor]] void registerNowPlayingArtView()
{
    SimulatedClass<ArtViewState>("_NowPlayingArtView", "UIView").method<"initWithFrame:">(initWithFrame).registerClass();
}

} // namespace

} // namespace simulator
