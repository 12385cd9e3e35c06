#include "platform/UIKit/UIViewController.hpp"

#include "platform/UIKit/UIScreen.hpp"
#include "simulator/runtime/SimulatedClass.hpp"
#include "simulator/uikit/uikit.hpp"

/// Keeps a view, which it makes when it is first asked for it.

namespace simulator {

namespace {

struct ViewControllerState {
    Owned<UIView> view;
};

/// Nothing here comes from a nib.
UIViewController* initWithNibName_bundle(UIViewController* self, SEL, NSString*, NSObject*)
{
    return self;
}

void loadView(UIViewController* self, SEL)
{
    self->setView(adopt(UIView::alloc()->initWithFrame(UIScreen::mainScreen()->bounds())));
}

UIView* view(UIViewController* self, SEL)
{
    auto& controller = ivarsOf<ViewControllerState>(self);
    if (controller.view == nullptr)
        send<"loadView">(self);
    return controller.view;
}

void setView(UIViewController* self, SEL, UIView* view)
{
    ivarsOf<ViewControllerState>(self).view = view;
}

} // namespace

void registerUIViewController()
{
    SimulatedClass<ViewControllerState>("UIViewController", "UIResponder")
        .method<"initWithNibName:bundle:">(initWithNibName_bundle)
        .method<"loadView">(loadView)
        .method<"view">(view)
        .method<"setView:">(setView)
        .registerClass();
}

} // namespace simulator
