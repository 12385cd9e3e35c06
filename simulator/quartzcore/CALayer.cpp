#include <algorithm>

#include "simulator/quartzcore/LayerState.hpp"
#include "simulator/quartzcore/colours.hpp"
#include "simulator/quartzcore/damage.hpp"
#include "simulator/quartzcore/quartzcore.hpp"

namespace simulator {

LayerState::~LayerState()
{
    for (CALayer* sublayer : sublayers)
        stateOf(sublayer).superlayer = nullptr;
}

void layerChanged(NSObject*)
{
    damageScreen();
}

namespace {

using Layer = LayerState;

CALayer* layer(Class cls, SEL)
{
    return adopt(send<"new", CALayer*>(cls)).autorelease();
}

CGRect frame(CALayer* self, SEL)
{
    const CGRect& bounds = stateOf(self).bounds;
    const CGPoint& position = stateOf(self).position;
    return {{position.x - bounds.size.width / 2, position.y - bounds.size.height / 2}, bounds.size};
}

void setFrame(CALayer* self, SEL, CGRect frame)
{
    Layer& state = stateOf(self);
    state.bounds.size = frame.size;
    state.position = {frame.origin.x + frame.size.width / 2, frame.origin.y + frame.size.height / 2};
    damageScreen();
}

NSArray* sublayers(CALayer* self, SEL)
{
    std::vector<id> objects(stateOf(self).sublayers.begin(), stateOf(self).sublayers.end());
    return NSArray::arrayWithObjects_count(objects.data(), objects.size());
}

void removeFromSuperlayer(CALayer* self, SEL)
{
    CALayer* const superlayer = stateOf(self).superlayer;
    if (superlayer == nullptr)
        return;
    const Owned<CALayer> kept(self);
    stateOf(self).superlayer = nullptr;
    std::erase_if(stateOf(superlayer).sublayers, [&](const Owned<CALayer>& sublayer) { return sublayer.get() == self; });
    damageScreen();
}

void insertSublayerAtIndex(CALayer* self, SEL, CALayer* sublayer, unsigned int index)
{
    const Owned<CALayer> kept(sublayer);
    sublayer->removeFromSuperlayer();
    auto& all = stateOf(self).sublayers;
    all.insert(all.begin() + std::min<std::ptrdiff_t>(index, std::ssize(all)), kept);
    stateOf(sublayer).superlayer = self;
    damageScreen();
}

void addSublayer(CALayer* self, SEL, CALayer* sublayer)
{
    self->insertSublayer_atIndex(sublayer, static_cast<unsigned int>(stateOf(self).sublayers.size()));
}

void drawInContext(CALayer* self, SEL, void* context)
{
    const Layer& state = stateOf(self);
    if (state.contents != nullptr)
        state.contents->draw(static_cast<cairo_t*>(context), state.bounds);
    send<"drawLayer:inContext:">(state.delegate, self, context);
}

void setNeedsDisplay(CALayer*, SEL)
{
    damageScreen();
}

} // namespace

void registerCALayer()
{
    SimulatedClass<Layer>("CALayer", "NSObject")
        .classMethod<"layer">(layer)
        .property<&Layer::bounds, layerChanged>("bounds")
        .property<&Layer::position, layerChanged>("position")
        .method<"frame">(frame)
        .method<"setFrame:">(setFrame)
        .method<"sublayers">(sublayers)
        .method<"addSublayer:">(addSublayer)
        .method<"insertSublayer:atIndex:">(insertSublayerAtIndex)
        .method<"removeFromSuperlayer">(removeFromSuperlayer)
        .readOnly<&Layer::superlayer>("superlayer")
        .property<&Layer::mask, layerChanged>("mask")
        .property<&Layer::backgroundColor, layerChanged>("backgroundColor")
        .property<&Layer::borderColor, layerChanged>("borderColor")
        .property<&Layer::borderWidth, layerChanged>("borderWidth")
        .property<&Layer::cornerRadius, layerChanged>("cornerRadius")
        .property<&Layer::opacity, layerChanged>("opacity")
        .flag<&Layer::hidden, layerChanged>("hidden")
        .property<&Layer::masksToBounds, layerChanged>("masksToBounds")
        .property<&Layer::compositingFilter, layerChanged>("compositingFilter")
        .property<&Layer::delegate>("delegate")
        .method<"drawInContext:">(drawInContext)
        .method<"setNeedsDisplay">(setNeedsDisplay)
        .registerClass();
}

} // namespace simulator
