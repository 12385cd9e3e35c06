#include "platform/UIKit/UIResponder.hpp"

#include "simulator/runtime/SimulatedClass.hpp"
#include "simulator/uikit/uikit.hpp"

/// The chain along which a touch passes until somebody takes it.

namespace simulator {

namespace {

struct ResponderState {};

UIResponder* nextResponder(UIResponder*, SEL)
{
    return nullptr;
}

/// A responder that does nothing with a touch hands it on.
template <FixedString Name>
void handOn(UIResponder* self, SEL, NSSet* touches, UIEvent* event)
{
    send<Name>(self->nextResponder(), touches, event);
}

} // namespace

void registerUIResponder()
{
    SimulatedClass<ResponderState>("UIResponder", "NSObject")
        .method<"nextResponder">(nextResponder)
        .method<"touchesBegan:withEvent:">(handOn<"touchesBegan:withEvent:">)
        .method<"touchesMoved:withEvent:">(handOn<"touchesMoved:withEvent:">)
        .method<"touchesEnded:withEvent:">(handOn<"touchesEnded:withEvent:">)
        .method<"touchesCancelled:withEvent:">(handOn<"touchesCancelled:withEvent:">)
        .registerClass();
}

} // namespace simulator
