#include "platform/UIKit/UIView.hpp"

#include <algorithm>
#include <ranges>

#include "platform/UIKit/UIWindow.hpp"
#include "simulator/quartzcore/LayerState.hpp"
#include "simulator/quartzcore/damage.hpp"
#include "simulator/uikit/ViewState.hpp"
#include "simulator/uikit/uikit.hpp"

namespace simulator {

ViewState::~ViewState()
{
    for (UIView* subview : subviews)
        stateOf(subview).superview = nullptr;
    for (UIGestureRecognizer* recognizer : gestureRecognizers)
        send<"setView:">(recognizer, static_cast<UIView*>(nullptr));
    if (layer != nullptr) {
        layer->setDelegate(nullptr);
        layer->removeFromSuperlayer();
    }
}

void redraw(NSObject* view)
{
    static_cast<UIView*>(view)->setNeedsDisplay();
}

namespace {

using View = ViewState;

Class layerClass(Class, SEL)
{
    return classNamed<"CALayer">();
}

UIView* initWithFrame(UIView* self, SEL, CGRect frame)
{
    const Class layerClass = send<"layerClass", Class>(object_getClass(self));
    stateOf(self).layer = send<"layer", CALayer*>(layerClass);
    self->layer()->setDelegate(self);
    self->setFrame(frame);
    return self;
}

UIView* init(UIView* self, SEL)
{
    return self->initWithFrame({});
}

CGRect frame(UIView* self, SEL)
{
    return self->layer()->frame();
}

void growWithSuperview(UIView* view, CGSize growth)
{
    const NSUInteger mask = stateOf(view).autoresizingMask;
    if (mask == 0)
        return;
    CGRect frame = view->frame();
    if ((mask & flexibleWidth) != 0)
        frame.size.width += growth.width;
    if ((mask & flexibleHeight) != 0)
        frame.size.height += growth.height;
    view->setFrame(frame);
}

/// A new size asks for a new layout of what is inside.
void sizeChanged(UIView* self, CGSize before)
{
    const CGSize size = self->layer()->bounds().size;
    if (size == before)
        return;
    self->setNeedsLayout();
    for (UIView* subview : stateOf(self).subviews)
        growWithSuperview(subview, {size.width - before.width, size.height - before.height});
}

void setFrame(UIView* self, SEL, CGRect frame)
{
    const CGSize before = self->layer()->bounds().size;
    self->layer()->setFrame(frame);
    sizeChanged(self, before);
}

CGRect bounds(UIView* self, SEL)
{
    return self->layer()->bounds();
}

void setBounds(UIView* self, SEL, CGRect bounds)
{
    const CGSize before = self->layer()->bounds().size;
    self->layer()->setBounds(bounds);
    sizeChanged(self, before);
}

CGPoint center(UIView* self, SEL)
{
    return self->layer()->position();
}

void setCenter(UIView* self, SEL, CGPoint center)
{
    self->layer()->setPosition(center);
}

NSArray* subviews(UIView* self, SEL)
{
    return toNSArray(stateOf(self).subviews);
}

UIWindow* window(UIView* self, SEL)
{
    return self->superview()->window();
}

void removeFromSuperview(UIView* self, SEL)
{
    UIView* const superview = stateOf(self).superview;
    if (superview == nullptr)
        return;
    const Owned<UIView> kept(self);
    stateOf(self).superview = nullptr;
    std::erase_if(stateOf(superview).subviews, [&](const Owned<UIView>& subview) { return subview.get() == self; });
    self->layer()->removeFromSuperlayer();
    superview->setNeedsLayout();
}

/// Layers that are no view's stay where they are: the new view's layer goes right under that of the view above it.
unsigned int layerIndexBelow(UIView* superview, UIView* above)
{
    const auto& layers = stateOf(superview->layer()).sublayers;
    const auto found = std::ranges::find(layers, above->layer(), &Owned<CALayer>::get);
    return static_cast<unsigned int>(found - layers.begin());
}

void insertSubviewAtIndex(UIView* self, SEL, UIView* view, NSInteger index)
{
    if (view == nullptr)
        return;
    const Owned<UIView> kept(view);
    view->removeFromSuperview();
    auto& all = stateOf(self).subviews;
    const auto place = all.begin() + std::clamp<NSInteger>(index, 0, std::ssize(all));
    if (place == all.end())
        self->layer()->addSublayer(view->layer());
    else
        self->layer()->insertSublayer_atIndex(view->layer(), layerIndexBelow(self, *place));
    all.insert(place, kept);
    stateOf(view).superview = self;
    self->setNeedsLayout();
    send<"didMoveToSuperview">(view);
}

void didMoveToSuperview(UIView*, SEL)
{
}

/// A view that is already there comes to the front.
void addSubview(UIView* self, SEL, UIView* view)
{
    self->insertSubview_atIndex(view, std::ssize(stateOf(self).subviews));
}

BOOL isHidden(UIView* self, SEL)
{
    return BOOL{stateOf(self->layer()).hidden};
}

void setHidden(UIView* self, SEL, BOOL hidden)
{
    self->layer()->setHidden(hidden != NO);
}

CGFloat alpha(UIView* self, SEL)
{
    return static_cast<CGFloat>(stateOf(self->layer()).opacity);
}

void setAlpha(UIView* self, SEL, CGFloat alpha)
{
    self->layer()->setOpacity(static_cast<float>(alpha));
}

void applyBackground(NSObject* self)
{
    auto* const view = static_cast<UIView*>(self);
    view->layer()->setBackgroundColor(stateOf(view).backgroundColor->CGColor());
}

BOOL clipsToBounds(UIView* self, SEL)
{
    return BOOL{stateOf(self->layer()).masksToBounds};
}

void setClipsToBounds(UIView* self, SEL, BOOL clips)
{
    self->layer()->setMasksToBounds(clips != NO);
}

void setNeedsLayout(UIView* self, SEL)
{
    stateOf(self).needsLayout = true;
    damageScreen();
}

void layoutIfNeeded(UIView* self, SEL)
{
    const Owned<UIView> kept(self);
    if (stateOf(self).needsLayout) {
        stateOf(self).needsLayout = false;
        self->layoutSubviews();
    }
    // A copy, since a layout may move views about.
    for (UIView* subview : std::vector<Owned<UIView>>(stateOf(self).subviews))
        subview->layoutIfNeeded();
}

void layoutSubviews(UIView*, SEL)
{
}

void setNeedsDisplay(UIView* self, SEL)
{
    self->layer()->setNeedsDisplay();
}

void drawLayerInContext(UIView* self, SEL, CALayer*, void*)
{
    send<"drawRect:">(self, self->bounds());
}

void drawRect(UIView*, SEL, CGRect)
{
}

CGSize sizeThatFits(UIView* self, SEL, CGSize)
{
    return self->bounds().size;
}

void sizeToFit(UIView* self, SEL)
{
    const CGRect frame = self->frame();
    self->setFrame({frame.origin, self->sizeThatFits(self->bounds().size)});
}

CGPoint toSuperview(UIView* view, CGPoint point)
{
    const CGRect frame = view->frame();
    const CGRect bounds = view->bounds();
    return {point.x - bounds.origin.x + frame.origin.x, point.y - bounds.origin.y + frame.origin.y};
}

CGPoint fromSuperview(UIView* view, CGPoint point)
{
    const CGRect frame = view->frame();
    const CGRect bounds = view->bounds();
    return {point.x - frame.origin.x + bounds.origin.x, point.y - frame.origin.y + bounds.origin.y};
}

CGPoint toRoot(UIView* view, CGPoint point)
{
    for (; view != nullptr && view->superview() != nullptr; view = view->superview())
        point = toSuperview(view, point);
    return point;
}

CGPoint fromRoot(UIView* view, CGPoint point)
{
    if (view == nullptr || view->superview() == nullptr)
        return point;
    return fromSuperview(view, fromRoot(view->superview(), point));
}

/// A nil view stands for the root of the tree.
CGPoint convertPointToView(UIView* self, SEL, CGPoint point, UIView* view)
{
    return fromRoot(view, toRoot(self, point));
}

CGPoint convertPointFromView(UIView* self, SEL, CGPoint point, UIView* view)
{
    return fromRoot(self, toRoot(view, point));
}

BOOL pointInside(UIView* self, SEL, CGPoint point, UIEvent*)
{
    const CGRect bounds = self->bounds();
    return BOOL{point.x >= bounds.origin.x && point.x < bounds.origin.x + bounds.size.width && point.y >= bounds.origin.y &&
                point.y < bounds.origin.y + bounds.size.height};
}

/// Hidden and nearly transparent views, those that take no touches, and all below them are passed over.
UIView* hitTest(UIView* self, SEL, CGPoint point, UIEvent* event)
{
    constexpr CGFloat leastAlpha = 0.01;
    if (self->isHidden() || self->alpha() < leastAlpha || !self->isUserInteractionEnabled() ||
        send<"pointInside:withEvent:", BOOL>(self, point, event) == NO)
        return nullptr;
    const auto& all = stateOf(self).subviews;
    for (const auto& subview : all | std::views::reverse) {
        if (UIView* const hit = subview->hitTest_withEvent(fromSuperview(subview, point), event))
            return hit;
    }
    return self;
}

UIResponder* nextResponder(UIView* self, SEL)
{
    return self->superview();
}

void addGestureRecognizer(UIView* self, SEL, UIGestureRecognizer* recognizer)
{
    stateOf(self).gestureRecognizers.emplace_back(recognizer);
    send<"setView:">(recognizer, self);
}

NSArray* gestureRecognizers(UIView* self, SEL)
{
    return toNSArray(stateOf(self).gestureRecognizers);
}

} // namespace

void registerUIView()
{
    SimulatedClass<View>("UIView", "UIResponder")
        .classMethod<"layerClass">(layerClass)
        .method<"initWithFrame:">(initWithFrame)
        .method<"init">(init)
        .readOnly<&View::layer>("layer")
        .method<"frame">(frame)
        .method<"setFrame:">(setFrame)
        .method<"bounds">(bounds)
        .method<"setBounds:">(setBounds)
        .method<"center">(center)
        .method<"setCenter:">(setCenter)
        .readOnly<&View::superview>("superview")
        .method<"subviews">(subviews)
        .method<"window">(window)
        .method<"addSubview:">(addSubview)
        .method<"insertSubview:atIndex:">(insertSubviewAtIndex)
        .method<"removeFromSuperview">(removeFromSuperview)
        .method<"didMoveToSuperview">(didMoveToSuperview)
        .property<&View::autoresizingMask>("autoresizingMask")
        .method<"isHidden">(isHidden)
        .method<"setHidden:">(setHidden)
        .method<"alpha">(alpha)
        .method<"setAlpha:">(setAlpha)
        .property<&View::backgroundColor, applyBackground>("backgroundColor")
        .method<"clipsToBounds">(clipsToBounds)
        .method<"setClipsToBounds:">(setClipsToBounds)
        .flag<&View::userInteractionEnabled>("userInteractionEnabled")
        .property<&View::tag>("tag")
        .method<"setNeedsLayout">(setNeedsLayout)
        .method<"layoutIfNeeded">(layoutIfNeeded)
        .method<"layoutSubviews">(layoutSubviews)
        .method<"setNeedsDisplay">(setNeedsDisplay)
        .method<"drawLayer:inContext:">(drawLayerInContext)
        .method<"drawRect:">(drawRect)
        .method<"sizeThatFits:">(sizeThatFits)
        .method<"sizeToFit">(sizeToFit)
        .method<"convertPoint:toView:">(convertPointToView)
        .method<"convertPoint:fromView:">(convertPointFromView)
        .method<"pointInside:withEvent:">(pointInside)
        .method<"hitTest:withEvent:">(hitTest)
        .method<"nextResponder">(nextResponder)
        .method<"addGestureRecognizer:">(addGestureRecognizer)
        .method<"gestureRecognizers">(gestureRecognizers)
        .registerClass();
}

} // namespace simulator
