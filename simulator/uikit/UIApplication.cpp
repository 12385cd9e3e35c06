#include "platform/UIKit/UIApplication.hpp"

#include "simulator/runtime/SimulatedClass.hpp"
#include "simulator/uikit/uikit.hpp"

/// The running application, which is SpringBoard.

namespace simulator {

namespace {

struct ApplicationState {};

/// The one instance of the class "SpringBoard", once that is registered.
UIApplication* sharedApplication(Class, SEL)
{
    static UIApplication* application = nullptr;
    if (application == nullptr)
        application = send<"new", UIApplication*>(classNamed<"SpringBoard">());
    return application;
}

} // namespace

void registerUIApplication()
{
    SimulatedClass<ApplicationState>("UIApplication", "UIResponder")
        .classMethod<"sharedApplication">(sharedApplication)
        .registerClass();
}

} // namespace simulator
