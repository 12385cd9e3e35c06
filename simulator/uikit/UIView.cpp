#include "simulator/uikit/UIView.hpp"

#include "simulator/quartzcore/CALayer.hpp"
#include "simulator/uikit/UIGestureRecognizer.hpp"
#include "simulator/uikit/uikit.hpp"

/// A view: its layer, its looks and its recognisers. Its geometry and its place in the tree have files of their own.

namespace simulator {

ViewState::~ViewState()
{
    for (UIView* subview : subviews)
        ivarsOf<ViewState>(subview).superview = nullptr;
    for (UIGestureRecognizer* recognizer : gestureRecognizers)
        ivarsOf<GestureState>(recognizer).view = nullptr;
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

Class layerClass(Class, SEL)
{
    return classNamed<"CALayer">();
}

UIView* initWithFrame(UIView* self, SEL, CGRect frame)
{
    const Class layerClass = send<"layerClass", Class>(object_getClass(self));
    ivarsOf<ViewState>(self).layer = send<"layer", CALayer*>(layerClass);
    self->layer()->setDelegate(self);
    self->setFrame(frame);
    return self;
}

UIView* init(UIView* self, SEL)
{
    return self->initWithFrame({});
}

BOOL isHidden(UIView* self, SEL)
{
    return BOOL{self->layer()->isHidden()};
}

void setHidden(UIView* self, SEL, BOOL hidden)
{
    self->layer()->setHidden(hidden != NO);
}

CGFloat alpha(UIView* self, SEL)
{
    return static_cast<CGFloat>(self->layer()->opacity());
}

void setAlpha(UIView* self, SEL, CGFloat alpha)
{
    self->layer()->setOpacity(static_cast<float>(alpha));
}

void applyBackground(NSObject* self)
{
    auto* const view = static_cast<UIView*>(self);
    view->layer()->setBackgroundColor(ivarsOf<ViewState>(view).backgroundColor->CGColor());
}

BOOL clipsToBounds(UIView* self, SEL)
{
    return send<"masksToBounds", BOOL>(self->layer());
}

void setClipsToBounds(UIView* self, SEL, BOOL clips)
{
    self->layer()->setMasksToBounds(clips != NO);
}

void setNeedsDisplay(UIView* self, SEL)
{
    self->layer()->setNeedsDisplay();
}

void drawLayer_inContext(UIView* self, SEL, CALayer*, void*)
{
    self->drawRect(self->bounds());
}

void drawRect(UIView*, SEL, CGRect)
{
}

UIResponder* nextResponder(UIView* self, SEL)
{
    return self->superview();
}

void addGestureRecognizer(UIView* self, SEL, UIGestureRecognizer* recognizer)
{
    ivarsOf<ViewState>(self).gestureRecognizers.emplace_back(recognizer);
    ivarsOf<GestureState>(recognizer).view = self;
}

NSArray* gestureRecognizers(UIView* self, SEL)
{
    return toNSArray(ivarsOf<ViewState>(self).gestureRecognizers);
}

} // namespace

void registerUIView()
{
    SimulatedClass<ViewState> view("UIView", "UIResponder");
    addUIViewGeometry(view);
    addUIViewHierarchy(view);
    view.classMethod<"layerClass">(layerClass)
        .method<"initWithFrame:">(initWithFrame)
        .method<"init">(init)
        .readOnly<&ViewState::layer>("layer")
        .method<"isHidden">(isHidden)
        .method<"setHidden:">(setHidden)
        .method<"alpha">(alpha)
        .method<"setAlpha:">(setAlpha)
        .property<&ViewState::backgroundColor, applyBackground>("backgroundColor")
        .method<"clipsToBounds">(clipsToBounds)
        .method<"setClipsToBounds:">(setClipsToBounds)
        .flag<&ViewState::userInteractionEnabled>("userInteractionEnabled")
        .property<&ViewState::tag>("tag")
        .method<"setNeedsDisplay">(setNeedsDisplay)
        .method<"drawLayer:inContext:">(drawLayer_inContext)
        .method<"drawRect:">(drawRect)
        .method<"nextResponder">(nextResponder)
        .method<"addGestureRecognizer:">(addGestureRecognizer)
        .method<"gestureRecognizers">(gestureRecognizers)
        .registerClass();
}

} // namespace simulator
