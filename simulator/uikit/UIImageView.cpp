#include "platform/UIKit/UIImageView.hpp"

#include "simulator/uikit/UIView.hpp"
#include "simulator/uikit/uikit.hpp"

/// A view that draws its image over all of its bounds.

namespace simulator {

namespace {

struct ImageViewState {
    Owned<UIImage> image;
};

UIImageView* initWithFrame(UIImageView* self, SEL, CGRect frame)
{
    superOf<ImageViewState, "initWithFrame:", UIImageView*>(self, frame);
    self->setUserInteractionEnabled(false);
    return self;
}

void drawRect(UIImageView* self, SEL, CGRect rect)
{
    self->image()->drawInRect(rect);
}

} // namespace

void registerUIImageView()
{
    SimulatedClass<ImageViewState>("UIImageView", "UIView")
        .method<"initWithFrame:">(initWithFrame)
        .property<&ImageViewState::image, redraw>("image")
        .method<"drawRect:">(drawRect)
        .registerClass();
}

} // namespace simulator
