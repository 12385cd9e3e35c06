#include "simulator/uikit/UIScreen.hpp"

#include "simulator/runtime/SimulatedClass.hpp"
#include "simulator/uikit/uikit.hpp"

/// The one screen, whose size and scale the simulated phone decides.

namespace simulator {

namespace {

struct ScreenState {
    CGRect bounds{};
    CGFloat scale = 1;
};

UIScreen* mainScreen(Class, SEL)
{
    static auto* const screen = send<"new", UIScreen*>(classNamed<"UIScreen">());
    return screen;
}

} // namespace

void setMainScreen(CGSize size, CGFloat scale)
{
    ivarsOf<ScreenState>(UIScreen::mainScreen()) = {{{0, 0}, size}, scale};
}

void registerUIScreen()
{
    SimulatedClass<ScreenState>("UIScreen", "NSObject")
        .classMethod<"mainScreen">(mainScreen)
        .readOnly<&ScreenState::bounds>("bounds")
        .readOnly<&ScreenState::scale>("scale")
        .registerClass();
}

} // namespace simulator
