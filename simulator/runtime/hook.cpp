#include "platform/Substrate/MSHookMessageEx.hpp"
#include "platform/runtime/objc.hpp"

/// A missing class or method is passed over. A method that the class inherits is replaced in that class alone, and the
/// inherited implementation is handed back.
void MSHookMessageEx(Class cls, SEL selector, IMP replacement, IMP* previous)
{
    // GNU's runtime gives a class that has had no message yet a table of methods that others share; this gives it its own.
    class_respondsToSelector(cls, selector);
    const Method method = cls == nullptr ? nullptr : class_getInstanceMethod(cls, selector);
    if (method == nullptr)
        return;
    const IMP inForce = method_getImplementation(method);
    if (class_addMethod(cls, selector, replacement, method_getTypeEncoding(method)) == NO)
        method_setImplementation(method, replacement);
    if (previous != nullptr)
        *previous = inForce;
}
