#include <algorithm>

#include "platform/UIKit/UIWindow.hpp"
#include "simulator/foundation/exceptions.hpp"
#include "simulator/quartzcore/CALayer.hpp"
#include "simulator/quartzcore/damage.hpp"
#include "simulator/uikit/UIView.hpp"

/// The tree of views, and its layout from the root to the leaves.

namespace simulator {

namespace {

NSArray* subviews(UIView* self, SEL)
{
    return toNSArray(ivarsOf<ViewState>(self).subviews);
}

UIWindow* window(UIView* self, SEL)
{
    return self->superview()->window();
}

void removeFromSuperview(UIView* self, SEL)
{
    UIView* const superview = ivarsOf<ViewState>(self).superview;
    if (superview == nullptr)
        return;
    const Owned<UIView> kept(self);
    ivarsOf<ViewState>(self).superview = nullptr;
    std::erase_if(ivarsOf<ViewState>(superview).subviews, [&](const Owned<UIView>& subview) { return subview.get() == self; });
    self->layer()->removeFromSuperlayer();
    superview->setNeedsLayout();
}

/// Layers that are no view's stay where they are: the new view's layer goes right under that of the view above it.
unsigned int layerIndexBelow(UIView* superview, UIView* above)
{
    if (superview->layer() == nullptr)
        return 0;
    const auto& layers = ivarsOf<LayerState>(superview->layer()).sublayers;
    const auto found = std::ranges::find(layers, above->layer(), &Owned<CALayer>::get);
    return static_cast<unsigned int>(found - layers.begin());
}

void insertSubview_atIndex(UIView* self, SEL, UIView* view, NSInteger index)
{
    if (view == nullptr)
        return;
    for (UIView* above = self; above != nullptr; above = ivarsOf<ViewState>(above).superview) {
        if (above == view)
            raise(constantString<"NSInvalidArgumentException">(), constantString<"a view cannot be a part of itself">());
    }
    const Owned<UIView> kept(view);
    view->removeFromSuperview();
    auto& all = ivarsOf<ViewState>(self).subviews;
    const auto place = all.begin() + std::clamp<NSInteger>(index, 0, std::ssize(all));
    if (place == all.end())
        self->layer()->addSublayer(view->layer());
    else
        self->layer()->insertSublayer_atIndex(view->layer(), layerIndexBelow(self, *place));
    all.insert(place, kept);
    ivarsOf<ViewState>(view).superview = self;
    self->setNeedsLayout();
    view->didMoveToSuperview();
}

void didMoveToSuperview(UIView*, SEL)
{
}

/// A view that is already there comes to the front.
void addSubview(UIView* self, SEL, UIView* view)
{
    self->insertSubview_atIndex(view, std::ssize(ivarsOf<ViewState>(self).subviews));
}

void setNeedsLayout(UIView* self, SEL)
{
    ivarsOf<ViewState>(self).needsLayout = true;
    damageScreen();
}

void layoutIfNeeded(UIView* self, SEL)
{
    const Owned<UIView> kept(self);
    if (ivarsOf<ViewState>(self).needsLayout) {
        ivarsOf<ViewState>(self).needsLayout = false;
        self->layoutSubviews();
    }
    // A copy, since a layout may move views about.
    for (UIView* subview : std::vector<Owned<UIView>>(ivarsOf<ViewState>(self).subviews))
        subview->layoutIfNeeded();
}

void layoutSubviews(UIView*, SEL)
{
}

} // namespace

void addUIViewHierarchy(SimulatedClass<ViewState>& view)
{
    view.readOnly<&ViewState::superview>("superview")
        .method<"subviews">(subviews)
        .method<"window">(window)
        .method<"addSubview:">(addSubview)
        .method<"insertSubview:atIndex:">(insertSubview_atIndex)
        .method<"removeFromSuperview">(removeFromSuperview)
        .method<"didMoveToSuperview">(didMoveToSuperview)
        .method<"setNeedsLayout">(setNeedsLayout)
        .method<"layoutIfNeeded">(layoutIfNeeded)
        .method<"layoutSubviews">(layoutSubviews);
}

} // namespace simulator
