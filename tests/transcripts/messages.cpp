#include <cctype>
#include <cstdarg>
#include <cstring>
#include <dlfcn.h>
#include <map>
#include <stdexcept>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "platform/Foundation/NSString.hpp"
#include "platform/Substrate/MSHookMessageEx.hpp"
#include "platform/runtime/Encoding.hpp"
#include "platform/runtime/send.hpp"
#include "tests/transcripts/recording.hpp"

/// How the messages of the library are seen.
///
/// Every send asks GNU's runtime for the method's implementation and calls what it gets. This program stands in front of that
/// question (objc_msg_lookup): when the library asks, it is given a function that notes the receiver and the arguments and then
/// calls the method. There is one such function for each signature that a method of the platform has, so that the machine's
/// convention for arguments is the compiler's business.
///
/// A library in the desk's form asks itself. For one in the phone's form the entry points of its runtime ask, on its behalf:
/// the linker puts functions of this file (__wrap_...) between those entry points' assembly and what it calls.

using recording::Call;
using recording::describe;

namespace {

/// What the function that the library was given is to call. The call comes right behind the question.
struct Asked {
    IMP implementation;
    bool isToSuper;
};
Asked asked;

/// Set while an entry point of the phone's runtime asks.
bool isAskedForTheLibrary = false;

template <class... Arguments>
std::vector<recording::Value> listed(Arguments... arguments)
{
    return {describe(arguments)...};
}

using Objects = const id*;

recording::Value list(Objects objects, NSUInteger count)
{
    recording::Value value{"a list"};
    for (NSUInteger i = 0; i < count; ++i)
        value.items.push_back(describe(objects[i]));
    return value;
}

std::vector<recording::Value> listed(Objects objects, NSUInteger count)
{
    return {list(objects, count), describe(count)};
}

std::vector<recording::Value> listed(Objects objects, Objects keys, NSUInteger count)
{
    return {list(objects, count), list(keys, count), describe(count)};
}

template <class Result>
void noteResult(Call& call, SEL selector, Result result)
{
    if constexpr (std::is_same_v<Result, id>)
        call.result = recording::describeResult(recording::keep(result), selector);
    else
        call.result = describe(result);
}

template <class Result, class... Arguments>
struct Signature {
    using Implementation = Result (*)(id, SEL, Arguments...);

    static Result calling(Implementation implementation, Call call, id self, SEL selector, Arguments... arguments)
    {
        Call& noted = recording::note(std::move(call));
        if constexpr (std::is_void_v<Result>) {
            implementation(self, selector, arguments...);
        } else {
            const Result result = implementation(self, selector, arguments...);
            if (recording::isOn())
                noteResult(noted, selector, result);
            return result;
        }
    }

    /// Stands in front of a method.
    static Result noted(id self, SEL selector, Arguments... arguments)
    {
        const auto [implementation, isToSuper] = asked;
        return calling(reinterpret_cast<Implementation>(implementation),
                       {recording::describeReceiver(self, selector),
                        isToSuper ? "super" : "",
                        sel_getName(selector),
                        true,
                        listed(arguments...),
                        {}},
                       self, selector, arguments...);
    }

    /// Stands in front of an implementation that a hook has replaced.
    static Result previous(id self, SEL selector, Arguments... arguments);
};

struct Functions {
    IMP noted;
    IMP previous;
};

/// A type encoding without what two compilers write differently: offsets, qualifiers, names of classes and structures, and the
/// sign of a BOOL.
std::string plain(std::string_view types)
{
    std::string text;
    for (std::size_t i = 0; i < types.size(); ++i) {
        const char type = types[i];
        if (std::isdigit(static_cast<unsigned char>(type)) != 0 ||
            std::string_view("+rnNoORV").find(type) != std::string_view::npos)
            continue;
        if (type == '"') {
            i = types.find('"', i + 1);
        } else if (type == '{') {
            text += '{';
            i = types.find('=', i);
        } else if (type == '^') {
            text += '^';
            i = types.find_first_not_of("r^", i);
            if (types[i] == '{')
                i = types.rfind('}');
        } else if (type == 'c' || type == 'B') {
            text += 'C';
        } else if (type == 'l' || type == 'L') {
            text += type == 'l' ? encode<long>().text : encode<unsigned long>().text;
        } else {
            text += type;
        }
    }
    return text;
}

template <class Result, class... Arguments>
std::pair<const std::string, Functions> row()
{
    using Noted = Signature<Result, Arguments...>;
    return {plain(methodEncoding<Result, Arguments...>.text),
            {reinterpret_cast<IMP>(&Noted::noted), reinterpret_cast<IMP>(&Noted::previous)}};
}

const Functions& functionsFor(const char* types)
{
    static const std::map<std::string, Functions> known{
        row<void>(),
        row<void, id>(),
        row<void, id, id>(),
        row<void, id, NSInteger>(),
        row<void, id, NSUInteger>(),
        row<void, id, unsigned int>(),
        row<void, id, SEL, NSUInteger>(),
        row<void, BOOL>(),
        row<void, float>(),
        row<void, double>(),
        row<void, NSInteger>(),
        row<void, NSUInteger>(),
        row<void, NSInteger, NSInteger, NSInteger, BOOL>(),
        row<void, CGPoint>(),
        row<void, CGSize>(),
        row<void, CGRect>(),
        row<void, CGRect, id>(),
        row<id>(),
        row<id, id>(),
        row<id, id, id>(),
        row<id, id, id, id>(),
        row<id, id, id, NSUInteger>(),
        row<id, id, SEL>(),
        row<id, id, int, CGFloat>(),
        row<id, int>(),
        row<id, NSInteger>(),
        row<id, NSUInteger>(),
        row<id, NSUInteger, id>(),
        row<id, id, CGFloat>(),
        row<id, CGFloat>(),
        row<id, CGFloat, CGFloat>(),
        row<id, CGFloat, CGFloat, CGFloat, CGFloat>(),
        row<id, CGRect>(),
        row<id, CGRect, NSUInteger, CGSize>(),
        row<id, Objects, NSUInteger>(),
        row<id, Objects, Objects, NSUInteger>(),
        row<BOOL>(),
        row<BOOL, id>(),
        row<BOOL, id, id>(),
        row<BOOL, Class>(),
        row<BOOL, SEL>(),
        row<int>(),
        row<NSInteger>(),
        row<NSUInteger>(),
        row<NSUInteger, void*, void*, NSUInteger>(),
        row<float>(),
        row<double>(),
        row<CGPoint>(),
        row<CGSize>(),
        row<CGRect>(),
        row<NSRange, NSUInteger, NSUInteger, id>(),
    };
    const auto found = known.find(plain(types));
    if (found == known.end())
        throw std::logic_error("no function notes a method of the types " + plain(types));
    return found->second;
}

// Implementations that hooks have replaced

std::map<std::pair<Class, SEL>, IMP>& replaced()
{
    static auto& all = *new std::map<std::pair<Class, SEL>, IMP>;
    return all;
}

IMP replacedOf(id self, SEL selector)
{
    for (Class cls = object_getClass(self); cls != nullptr; cls = class_getSuperclass(cls)) {
        if (const auto found = replaced().find({cls, selector}); found != replaced().end())
            return found->second;
    }
    throw std::logic_error(std::string("no hook has replaced ") + sel_getName(selector));
}

template <class Result, class... Arguments>
Result Signature<Result, Arguments...>::previous(id self, SEL selector, Arguments... arguments)
{
    const auto implementation = reinterpret_cast<Implementation>(replacedOf(self, selector));
    if (!recording::isOn())
        return implementation(self, selector, arguments...);
    return calling(
        implementation,
        {recording::describeReceiver(self, selector), "previous", sel_getName(selector), true, listed(arguments...), {}}, self,
        selector, arguments...);
}

// Texts with variable arguments: what comes of them is noted.

void noteFormat(NSString* format, NSString* text)
{
    recording::note({{"NSString"}, "", "stringWithFormat:", true, {describe(static_cast<id>(format))}, {}}).result =
        describe(static_cast<id>(text));
}

NSString* stringWithFormat(Class, SEL, NSString* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    NSString* const made = adopt(recording::formattedText(format, arguments)).autorelease();
    va_end(arguments);
    noteFormat(format, made);
    return made;
}

// The question

/// A constant text is made at its first use here; a compiler of the phone puts it into the library.
bool makesConstantText(id receiver, SEL selector)
{
    static const id string = reinterpret_cast<id>(objc_getClass("NSString"));
    return (receiver == string && std::strcmp(sel_getName(selector), "alloc") == 0) ||
           std::strcmp(sel_getName(selector), "initWithUTF8String:") == 0;
}

IMP noting(IMP found, Class cls, id receiver, SEL selector, bool isToSuper)
{
    if (makesConstantText(receiver, selector))
        return found;
    if (std::strcmp(sel_getName(selector), "stringWithFormat:") == 0)
        return reinterpret_cast<IMP>(&stringWithFormat);
    const Method method = class_getInstanceMethod(cls, selector);
    if (method == nullptr) {
        recording::note({describe(receiver), "", std::string(sel_getName(selector)) + " (which it has not)", true, {}, {}});
        return found;
    }
    asked = {found, isToSuper};
    return functionsFor(method_getTypeEncoding(method)).noted;
}

bool asksForTheLibrary(const void* returnAddress)
{
    return recording::isOn() && (std::exchange(isAskedForTheLibrary, false) || recording::isLibrary(returnAddress));
}

template <class Function>
Function* next(const char* name)
{
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

template <class Function>
auto forTheLibrary(Function function)
{
    isAskedForTheLibrary = recording::isOn();
    const auto result = function();
    isAskedForTheLibrary = false;
    return result;
}

} // namespace

extern "C" {

[[gnu::visibility("default")]] IMP objc_msg_lookup(id receiver, SEL selector)
{
    static const auto runtimes = next<IMP(id, SEL)>("objc_msg_lookup");
    // The first message to a class makes the runtime send some of its own.
    const bool isNoted = asksForTheLibrary(__builtin_return_address(0)) && receiver != nullptr;
    const IMP found = runtimes(receiver, selector);
    return isNoted ? noting(found, object_getClass(receiver), receiver, selector, false) : found;
}

[[gnu::visibility("default")]] IMP objc_msg_lookup_super(objc_super* receiver, SEL selector)
{
    static const auto runtimes = next<IMP(objc_super*, SEL)>("objc_msg_lookup_super");
    const bool isNoted = asksForTheLibrary(__builtin_return_address(0));
    const IMP found = runtimes(receiver, selector);
    return isNoted ? noting(found, receiver->superclass, receiver->receiver, selector, true) : found;
}

/// The simulator's own, under the name that it has in this program.
void simulators_MSHookMessageEx(Class cls, SEL selector, IMP replacement, IMP* previous);

void MSHookMessageEx(Class cls, SEL selector, IMP replacement, IMP* previous)
{
    if (recording::isOn())
        recording::note({{}, "", "MSHookMessageEx", false, listed(cls, selector), {}});
    recording::setHooking(true);
    simulators_MSHookMessageEx(cls, selector, replacement, previous);
    recording::setHooking(false);
    const Method method = cls == nullptr ? nullptr : class_getInstanceMethod(cls, selector);
    if (method == nullptr || previous == nullptr)
        return;
    replaced()[{cls, selector}] = *previous;
    *previous = functionsFor(method_getTypeEncoding(method)).previous;
}

#if defined(__x86_64__) || defined(__aarch64__)

struct Target {
    IMP implementation;
    std::uintptr_t extension;
};
Target __real_phoneSendTarget(id receiver, SEL selector);
Target __real_phoneSuperSendTarget(objc_super* receiver, SEL selector);

Target __wrap_phoneSendTarget(id receiver, SEL selector)
{
    return forTheLibrary([&] { return __real_phoneSendTarget(receiver, selector); });
}

Target __wrap_phoneSuperSendTarget(objc_super* receiver, SEL selector)
{
    return forTheLibrary([&] { return __real_phoneSuperSendTarget(receiver, selector); });
}

#endif

#if defined(__aarch64__)

NSString* __real_phoneStringWithFormatArguments(Class cls, SEL selector, NSString* format, void* stack);

NSString* __wrap_phoneStringWithFormatArguments(Class cls, SEL selector, NSString* format, void* stack)
{
    NSString* const text = __real_phoneStringWithFormatArguments(cls, selector, format, stack);
    if (recording::isOn())
        noteFormat(format, text);
    return text;
}

#endif

#if defined(__arm__)

#define ARRANGE(name)                                                                                                            \
    void* __real_##name(const void* crossing, const std::uint32_t* phone, std::uint32_t* machine);                               \
    void* __wrap_##name(const void* crossing, const std::uint32_t* phone, std::uint32_t* machine)                                \
    {                                                                                                                            \
        return forTheLibrary([&] { return __real_##name(crossing, phone, machine); });                                           \
    }

ARRANGE(arrangeSend)
ARRANGE(arrangeSendForStructure)
ARRANGE(arrangeSendToSuper)
ARRANGE(arrangeSendToSuperForStructure)

#undef ARRANGE

#endif
}
