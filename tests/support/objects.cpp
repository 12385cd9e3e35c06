#include "tests/support/objects.hpp"

#include "platform/runtime/each.hpp"
#include "simulator/foundation/strings.hpp"

std::string textOf(NSObject* object)
{
    return object == nullptr ? "nil" : simulator::toUTF8(object->description());
}

NSString* text(const std::string& utf8)
{
    return simulator::toNSString(utf8);
}

std::string classNameOf(NSObject* object)
{
    return object == nullptr ? "nil" : class_getName(object_getClass(object));
}

NSObject* newObject(const char* className)
{
    return send<"new", NSObject*>(objc_getClass(className));
}

NSUInteger retainCount(NSObject* object)
{
    return send<"retainCount", NSUInteger>(object);
}

std::vector<UIView*> subviewsOf(UIView* view)
{
    std::vector<UIView*> all;
    for (UIView* subview : each<UIView>(view->subviews()))
        all.push_back(subview);
    return all;
}
