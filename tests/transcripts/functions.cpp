#include <algorithm>
#include <array>
#include <cmath>
#include <cstdarg>
#include <dlfcn.h>
#include <set>
#include <string>
#include <string_view>

#include "platform/Foundation/CFNotificationCenter.hpp"
#include "platform/Foundation/NSString.hpp"
#include "platform/UIKit/UIGraphics.hpp"
#include "platform/UIKit/UIImage.hpp"
#include "platform/runtime/objc.hpp"
#include "platform/runtime/send.hpp"
#include "simulator/foundation/phone_root.hpp"
#include "tests/support/Phone.hpp"
#include "tests/transcripts/Transcript.hpp"
#include "tests/transcripts/recording.hpp"

/// How the library's calls of C functions are seen: this program stands in front of them. Those of the machine's libraries it
/// finds as the next of the name; those of the simulator have names with "simulators_" before them in this program.

using recording::describe;
using recording::Value;

namespace {

template <class Function>
Function* next(const char* name)
{
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

recording::Call& note(const char* function, std::vector<Value> arguments = {})
{
    return recording::note({{}, "", function, false, std::move(arguments), {}});
}

bool comesFromLibrary(const void* returnAddress)
{
    return recording::isOn() && recording::isLibrary(returnAddress);
}

bool isOwn(std::string_view name)
{
    return name == "APLCalendar" || name == "APLCalendarDelegate" || name == "SVAppsView" || name == "SVWidget";
}

/// Set when the library begins to make its classes: before, it asks whether their names are free.
bool ownAreMade = false;

/// What a library of the phone has itself, or is linked against, is not looked up there.
bool isLinked(std::string_view name)
{
    return (ownAreMade && isOwn(name)) || std::ranges::any_of(std::to_array<std::string_view>({"NS", "UI", "_UI", "CA", "EK"}),
                                                              [&](std::string_view prefix) { return name.starts_with(prefix); });
}

std::set<std::string, std::less<>>& hidden()
{
    static auto& names = *new std::set<std::string, std::less<>>;
    return names;
}

} // namespace

void hideClass(const std::string& name)
{
    hidden().insert(name);
}

extern "C" {

Class objc_getClass(const char* name)
{
    static const auto runtimes = next<Class(const char*)>("objc_getClass");
    if (!comesFromLibrary(__builtin_return_address(0)) || isLinked(name))
        return runtimes(name);
    note("objc_getClass", {{name}});
    return hidden().contains(name) ? nullptr : runtimes(name);
}

objc_protocol* objc_getProtocol(const char* name)
{
    static const auto runtimes = next<objc_protocol*(const char*)>("objc_getProtocol");
    if (comesFromLibrary(__builtin_return_address(0)) && !isLinked(name))
        note("objc_getProtocol", {{name}});
    return runtimes(name);
}

Class objc_allocateClassPair(Class superclass, const char* name, std::size_t extraBytes)
{
    static const auto runtimes = next<Class(Class, const char*, std::size_t)>("objc_allocateClassPair");
    ownAreMade = ownAreMade || recording::isLibrary(__builtin_return_address(0));
    return runtimes(superclass, name, extraBytes);
}

const char* simulators_class_getImageName(Class cls);

const char* class_getImageName(Class cls)
{
    if (recording::isOn())
        note("class_getImageName", {describe(cls)});
    return simulators_class_getImageName(cls);
}

Ivar class_getInstanceVariable(Class cls, const char* name)
{
    static const auto runtimes = next<Ivar(Class, const char*)>("class_getInstanceVariable");
    if (comesFromLibrary(__builtin_return_address(0)) && !isOwn(class_getName(cls)))
        note("class_getInstanceVariable", {describe(cls), {name}});
    return runtimes(cls, name);
}

BOOL class_addMethod(Class cls, SEL selector, IMP implementation, const char* types)
{
    static const auto runtimes = next<BOOL(Class, SEL, IMP, const char*)>("class_addMethod");
    // A class that is not registered yet is one of the library's own.
    if (recording::isOn() && !recording::isHooking() && isInLibrary(reinterpret_cast<const void*>(implementation)) &&
        (cls == nullptr || objc_getClass(class_getName(cls)) == cls))
        note("class_addMethod", {describe(cls), describe(selector), {types}});
    return runtimes(cls, selector, implementation, types);
}

int objc_sync_enter(id object)
{
    static const auto runtimes = next<int(id)>("objc_sync_enter");
    if (comesFromLibrary(__builtin_return_address(0)))
        note("objc_sync_enter", {describe(object)});
    return runtimes(object);
}

int objc_sync_exit(id object)
{
    static const auto runtimes = next<int(id)>("objc_sync_exit");
    if (comesFromLibrary(__builtin_return_address(0)))
        note("objc_sync_exit", {describe(object)});
    return runtimes(object);
}

void* simulators_objc_autoreleasePoolPush(void);
void simulators_objc_autoreleasePoolPop(void* pool);

void* objc_autoreleasePoolPush(void)
{
    if (comesFromLibrary(__builtin_return_address(0)))
        note("objc_autoreleasePoolPush");
    return simulators_objc_autoreleasePoolPush();
}

void objc_autoreleasePoolPop(void* pool)
{
    if (comesFromLibrary(__builtin_return_address(0)))
        note("objc_autoreleasePoolPop");
    simulators_objc_autoreleasePoolPop(pool);
}

/// The phone's file tree is asked for what the library opens; so does the simulator's own, which this one replaces.
[[gnu::visibility("default")]] void* dlopen(const char* path, int mode) noexcept
{
    static const auto machines = next<void*(const char*, int)>("dlopen");
    if (path == nullptr || !isInLibrary(__builtin_return_address(0)))
        return machines(path, mode);
    if (recording::isOn())
        note("dlopen", {{path}, describe(mode)});
    return machines(simulator::onThisMachine(path).c_str(), mode);
}

CFNotificationCenterRef simulators_CFNotificationCenterGetDarwinNotifyCenter(void);
void simulators_CFNotificationCenterAddObserver(CFNotificationCenterRef center, const void* observer,
                                                CFNotificationCallback callback, NSString* name, const void* object,
                                                CFNotificationSuspensionBehavior suspensionBehavior);

CFNotificationCenterRef CFNotificationCenterGetDarwinNotifyCenter(void)
{
    if (recording::isOn())
        note("CFNotificationCenterGetDarwinNotifyCenter");
    return simulators_CFNotificationCenterGetDarwinNotifyCenter();
}

void CFNotificationCenterAddObserver(CFNotificationCenterRef center, const void* observer, CFNotificationCallback callback,
                                     NSString* name, const void* object, CFNotificationSuspensionBehavior suspensionBehavior)
{
    if (recording::isOn()) {
        const bool isDarwin = center == simulators_CFNotificationCenterGetDarwinNotifyCenter();
        note("CFNotificationCenterAddObserver",
             {{isDarwin ? "darwin" : "another center"},
              recording::describeAddress(observer, "an observer"),
              recording::describeAddress(recording::functionOfLibrary(reinterpret_cast<const void*>(callback)), "a callback"),
              describe(static_cast<id>(name)),
              recording::describeAddress(object, "an object"),
              describe(static_cast<NSInteger>(suspensionBehavior))});
    }
    simulators_CFNotificationCenterAddObserver(center, observer, callback, name, object, suspensionBehavior);
}

void simulators_UIGraphicsBeginImageContextWithOptions(CGSize size, BOOL opaque, CGFloat scale);
UIImage* simulators_UIGraphicsGetImageFromCurrentImageContext(void);
void simulators_UIGraphicsEndImageContext(void);

void UIGraphicsBeginImageContextWithOptions(CGSize size, BOOL opaque, CGFloat scale)
{
    if (recording::isOn())
        note("UIGraphicsBeginImageContextWithOptions", {describe(size), describe(opaque), describe(scale)});
    simulators_UIGraphicsBeginImageContextWithOptions(size, opaque, scale);
}

UIImage* UIGraphicsGetImageFromCurrentImageContext(void)
{
    UIImage* const image = simulators_UIGraphicsGetImageFromCurrentImageContext();
    if (recording::isOn())
        note("UIGraphicsGetImageFromCurrentImageContext").result = describe(recording::keep(image));
    return image;
}

void UIGraphicsEndImageContext(void)
{
    if (recording::isOn())
        note("UIGraphicsEndImageContext");
    simulators_UIGraphicsEndImageContext();
}

[[gnu::visibility("default")]] long lroundf(float value) noexcept
{
    static const auto machines = next<long(float)>("lroundf");
    if (recording::isOn())
        note("lroundf", {describe(value)});
    return machines(value);
}

/// NSLog ends here in every form of the library.
[[gnu::visibility("default")]] void NSLogv(NSString* format, va_list arguments)
{
    static const auto machines = next<void(NSString*, va_list)>("NSLogv");
    if (recording::isOn()) {
        va_list copy;
        va_copy(copy, arguments);
        NSString* const text = recording::formattedText(format, copy);
        va_end(copy);
        note("NSLog", {describe(static_cast<id>(text))});
        objc_release(text);
    }
    machines(format, arguments);
}
}
