#include "simulator/quartzcore/CALayer.hpp"

#include <algorithm>

#include "simulator/foundation/exceptions.hpp"
#include "simulator/quartzcore/damage.hpp"
#include "simulator/quartzcore/quartzcore.hpp"

/// A rectangle in the tree of those that make up the screen.

namespace simulator {

LayerState::~LayerState()
{
    for (CALayer* sublayer : sublayers)
        ivarsOf<LayerState>(sublayer).superlayer = nullptr;
}

void layerChanged(NSObject*)
{
    damageScreen();
}

namespace {

CALayer* layer(Class cls, SEL)
{
    return adopt(send<"new", CALayer*>(cls)).autorelease();
}

CGRect frame(CALayer* self, SEL)
{
    const auto& bounds = ivarsOf<LayerState>(self).bounds;
    const auto& position = ivarsOf<LayerState>(self).position;
    return {{position.x - bounds.size.width / 2, position.y - bounds.size.height / 2}, bounds.size};
}

void setFrame(CALayer* self, SEL, CGRect frame)
{
    auto& state = ivarsOf<LayerState>(self);
    state.bounds.size = frame.size;
    state.position = {frame.origin.x + frame.size.width / 2, frame.origin.y + frame.size.height / 2};
    damageScreen();
}

NSArray* sublayers(CALayer* self, SEL)
{
    std::vector<id> objects(ivarsOf<LayerState>(self).sublayers.begin(), ivarsOf<LayerState>(self).sublayers.end());
    return NSArray::arrayWithObjects_count(objects.data(), objects.size());
}

void removeFromSuperlayer(CALayer* self, SEL)
{
    CALayer* const superlayer = ivarsOf<LayerState>(self).superlayer;
    if (superlayer == nullptr)
        return;
    const Owned<CALayer> kept(self);
    ivarsOf<LayerState>(self).superlayer = nullptr;
    std::erase_if(ivarsOf<LayerState>(superlayer).sublayers,
                  [&](const Owned<CALayer>& sublayer) { return sublayer.get() == self; });
    damageScreen();
}

void insertSublayer_atIndex(CALayer* self, SEL, CALayer* sublayer, unsigned int index)
{
    if (sublayer == nullptr)
        return;
    for (CALayer* above = self; above != nullptr; above = ivarsOf<LayerState>(above).superlayer) {
        if (above == sublayer)
            raise(constantString<"CALayerInvalid">(), constantString<"a layer cannot be a part of itself">());
    }
    const Owned<CALayer> kept(sublayer);
    sublayer->removeFromSuperlayer();
    auto& all = ivarsOf<LayerState>(self).sublayers;
    all.insert(all.begin() + std::min<std::ptrdiff_t>(index, std::ssize(all)), kept);
    ivarsOf<LayerState>(sublayer).superlayer = self;
    damageScreen();
}

void addSublayer(CALayer* self, SEL, CALayer* sublayer)
{
    self->insertSublayer_atIndex(sublayer, static_cast<unsigned int>(ivarsOf<LayerState>(self).sublayers.size()));
}

void drawInContext(CALayer* self, SEL, void* context)
{
    const auto& state = ivarsOf<LayerState>(self);
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
    SimulatedClass<LayerState>("CALayer", "NSObject")
        .classMethod<"layer">(layer)
        .property<&LayerState::bounds, layerChanged>("bounds")
        .property<&LayerState::position, layerChanged>("position")
        .method<"frame">(frame)
        .method<"setFrame:">(setFrame)
        .method<"sublayers">(sublayers)
        .method<"addSublayer:">(addSublayer)
        .method<"insertSublayer:atIndex:">(insertSublayer_atIndex)
        .method<"removeFromSuperlayer">(removeFromSuperlayer)
        .readOnly<&LayerState::superlayer>("superlayer")
        .property<&LayerState::mask, layerChanged>("mask")
        .property<&LayerState::backgroundColor, layerChanged>("backgroundColor")
        .property<&LayerState::borderColor, layerChanged>("borderColor")
        .property<&LayerState::borderWidth, layerChanged>("borderWidth")
        .property<&LayerState::cornerRadius, layerChanged>("cornerRadius")
        .property<&LayerState::opacity, layerChanged>("opacity")
        .flag<&LayerState::hidden, layerChanged>("hidden")
        .property<&LayerState::masksToBounds, layerChanged>("masksToBounds")
        .property<&LayerState::compositingFilter, layerChanged>("compositingFilter")
        .property<&LayerState::delegate>("delegate")
        .method<"drawInContext:">(drawInContext)
        .method<"setNeedsDisplay">(setNeedsDisplay)
        .registerClass();
}

} // namespace simulator
