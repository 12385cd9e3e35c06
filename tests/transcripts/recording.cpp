#include "tests/transcripts/recording.hpp"
#include "tests/support/objects.hpp"

#include <unordered_map>
#include <utility>

#include "platform/Foundation/NSString.hpp"
#include "simulator/loader/macho/Processor.hpp"
#include "tests/support/Phone.hpp"

extern "C" BOOL class_isMetaClass(Class cls);

namespace recording {

namespace {

bool on = false;
bool hooking = false;

std::deque<Call>& calls()
{
    static auto& noted = *new std::deque<Call>;
    return noted;
}

std::string quoted(const std::string& text)
{
    return '\'' + text + '\'';
}

bool isText(id object)
{
    static const Class string = objc_getClass("NSString");
    for (Class cls = object_getClass(object); cls != nullptr; cls = class_getSuperclass(cls)) {
        if (cls == string)
            return true;
    }
    return false;
}

Value describe(id object, bool isInitialised)
{
    if (object == nullptr)
        return {"nil"};
    const Class cls = object_getClass(object);
    if (class_isMetaClass(cls) != NO)
        return {class_getName(reinterpret_cast<Class>(object))};
    if (isInitialised && isText(object))
        return {quoted(textOf(object))};
    return {std::string("a ") + class_getName(cls), object};
}

} // namespace

bool isOn()
{
    return on;
}

void start()
{
    calls().clear();
    on = true;
}

std::deque<Call> stop()
{
    on = false;
    return std::exchange(calls(), {});
}

Call& note(Call call)
{
    return calls().emplace_back(std::move(call));
}

id keep(id object)
{
    static auto& kept = *new std::vector<Owned<NSObject>>;
    kept.emplace_back(object);
    return object;
}

bool isHooking()
{
    return hooking;
}

void setHooking(bool isHooking)
{
    hooking = isHooking;
}

bool isLibrary(const void* returnAddress)
{
    static auto& known = *new std::unordered_map<const void*, bool>;
    const auto found = known.find(returnAddress);
    return found != known.end() ? found->second : known.emplace(returnAddress, isInLibrary(returnAddress)).first->second;
}

const void* functionOfLibrary(const void* code)
{
    return simulator::macho::thisProcessor.implementationBehind(code);
}

std::string number(double value)
{
    char text[32];
    std::snprintf(text, sizeof text, "%g", value);
    return text;
}

Value describe(id object)
{
    return describe(object, true);
}

Value describeReceiver(id object, SEL selector)
{
    return describe(object, !std::string_view(sel_getName(selector)).starts_with("init"));
}

Value describeResult(id object, SEL selector)
{
    return describe(object, std::string_view(sel_getName(selector)) != "alloc");
}

Value describe(Class cls)
{
    return {cls == nullptr ? "nil" : class_getName(cls)};
}

Value describe(SEL selector)
{
    return {selector == nullptr ? "nil" : sel_getName(selector)};
}

Value describe(void* room)
{
    return {room == nullptr ? "nil" : "room"};
}

Value describe(const char* text)
{
    return {text == nullptr ? "nil" : quoted(text)};
}

Value describeAddress(const void* address, const std::string& text)
{
    return {address == nullptr ? "nil" : text, address};
}

Value describe(CGPoint point)
{
    return {'(' + number(point.x) + ' ' + number(point.y) + ')'};
}

Value describe(CGSize size)
{
    return {'(' + number(size.width) + ' ' + number(size.height) + ')'};
}

Value describe(CGRect rect)
{
    return {'(' + number(rect.origin.x) + ' ' + number(rect.origin.y) + ' ' + number(rect.size.width) + ' ' +
            number(rect.size.height) + ')'};
}

Value describe(NSRange range)
{
    return {'(' + std::to_string(range.location) + ' ' + std::to_string(range.length) + ')'};
}

NSString* formattedText(NSString* format, std::va_list arguments)
{
    // Called by its address: a list of arguments is nothing that a checked send could name.
    using Initialise = NSString* (*)(NSString*, SEL, NSString*, std::va_list);
    const SEL message = selector<"initWithFormat:arguments:">();
    NSString* const text = NSString::alloc();
    const auto initialise = reinterpret_cast<Initialise>(class_getMethodImplementation(object_getClass(text), message));
    return initialise(text, message, format, arguments);
}

} // namespace recording
