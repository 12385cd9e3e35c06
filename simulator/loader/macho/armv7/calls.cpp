#include "simulator/loader/macho/armv7/calls.hpp"

#include <bit>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string_view>
#include <unordered_map>

#include "platform/Foundation/NSLog.hpp"
#include "platform/Foundation/NSString.hpp"
#include "platform/Substrate/MSHookMessageEx.hpp"
#include "platform/runtime/objc.hpp"
#include "platform/runtime/send.hpp"
#include "simulator/loader/macho/made_code.hpp"

extern "C" {
int objc_alignof_type(const char* type);
int objc_sizeof_type(const char* type);
const char* objc_skip_argspec(const char* type);
const char* objc_skip_type_qualifiers(const char* type);

[[gnu::visibility("hidden")]] void phoneCallsThisMachine();
[[gnu::visibility("hidden")]] void thisMachineCallsPhone();
[[gnu::visibility("hidden")]] extern const char phoneCallsThisMachineReturns[];
}

namespace {

using Word = std::uint32_t;

/// The words of a call's arguments: on either side the first four are in r0 to r3 and the others on the stack. The phone has
/// them one behind the other; this machine ("Procedure Call Standard for the Arm Architecture") begins what is of 64 bits at an
/// even word.
class ArgumentWords {
public:
    /// What the assembly has room for.
    static constexpr std::size_t most = 32;

    void add(std::size_t words, bool atEvenWord)
    {
        end_ += atEvenWord ? end_ % 2 : 0;
        if (end_ + words > most) {
            std::fputs("springboard: a call between the phone and this machine has too many arguments\n", stderr);
            std::abort();
        }
        for (; words != 0; --words)
            places_[count_++] = static_cast<std::uint8_t>(end_++);
    }

    void toThisMachine(const Word* phone, Word* machine) const
    {
        for (std::size_t i = 0; i < count_; ++i)
            machine[places_[i]] = phone[i];
    }
    void toThePhone(const Word* machine, Word* phone) const
    {
        for (std::size_t i = 0; i < count_; ++i)
            phone[i] = machine[places_[i]];
    }

private:
    std::size_t count_ = 0;
    std::size_t end_ = 0;
    /// Where this machine has each of the phone's words.
    std::uint8_t places_[most];
};

/// For a function whose arguments are not known: enough words for any, none of them of 64 bits.
ArgumentWords unknownArguments()
{
    ArgumentWords words;
    words.add(16, false);
    return words;
}

constexpr std::size_t wordsFor(std::size_t bytes)
{
    return (bytes + sizeof(Word) - 1) / sizeof(Word);
}

ArgumentWords argumentsOf(const char* types)
{
    ArgumentWords words;
    const char* const result = objc_skip_type_qualifiers(types);
    if (*result == '{' && static_cast<std::size_t>(objc_sizeof_type(result)) > dispatch::largestResultInRegisters)
        words.add(1, false);
    for (const char* type = objc_skip_argspec(types); *type != '\0'; type = objc_skip_argspec(type)) {
        const char* const plain = objc_skip_type_qualifiers(type);
        words.add(wordsFor(static_cast<std::size_t>(objc_sizeof_type(plain))), objc_alignof_type(plain) > 4);
    }
    return words;
}

constexpr bool isOneOf(char character, std::string_view characters)
{
    return characters.find(character) != std::string_view::npos;
}

/// The arguments that a format is for ("String Format Specifiers", Apple), behind those up to it.
ArgumentWords formattedArguments(std::size_t wordsUpToFormat, NSString* format)
{
    ArgumentWords words;
    words.add(wordsUpToFormat, false);
    const std::string_view text = format->UTF8String();
    for (std::size_t at = text.find('%'); at != std::string_view::npos; at = text.find('%', at + 1)) {
        bool isLong = false;
        for (++at; at < text.size() && isOneOf(text[at], "0123456789 #+-'.*hlqLztj"); ++at) {
            if (text[at] == '*')
                words.add(1, false);
            isLong |= text[at] == 'q' || text[at] == 'j' || text.substr(at).starts_with("ll");
        }
        if (at >= text.size())
            break;
        const bool isDouble = isOneOf(text[at], "aAeEfFgG");
        if (text[at] != '%')
            words.add(isDouble || isLong ? 2 : 1, isDouble || isLong);
    }
    return words;
}

ArgumentWords argumentsOfSend(Class cls, SEL selector)
{
    // Never destroyed: objects are let go of, with sends, while their thread comes to its end.
    thread_local auto& known = *new std::unordered_map<Method, ArgumentWords>;
    const Method method = class_getInstanceMethod(cls, selector);
    // A message without a method is forwarded.
    if (method == nullptr)
        return unknownArguments();
    if (const auto found = known.find(method); found != known.end())
        return found->second;
    return known.emplace(method, argumentsOf(method_getTypeEncoding(method))).first->second;
}

/// A call from one side to the other.
struct Crossing {
    void* function;
    ArgumentWords arguments;
};

/// Code that calls the function through a frame, which gets the crossing in ip.
void* makeCrossing(void (*frame)(), void* function, const ArgumentWords& arguments)
{
    constexpr std::uint32_t loadIpFromBehind = 0xe59fc000;
    constexpr std::uint32_t branchToWhatIsBehind = 0xe59ff000;
    const auto* const crossing = new Crossing{function, arguments};
    const std::uint32_t code[] = {loadIpFromBehind, branchToWhatIsBehind, std::bit_cast<Word>(crossing),
                                  std::bit_cast<Word>(frame)};
    return simulator::macho::makeCode(code, function);
}

IMP methodOfThePhone(IMP implementation, const char* types)
{
    return implementation == nullptr ? nullptr
                                     : reinterpret_cast<IMP>(makeCrossing(
                                           &thisMachineCallsPhone, reinterpret_cast<void*>(implementation), argumentsOf(types)));
}

IMP methodOfThisMachine(IMP implementation, const char* types)
{
    return implementation == nullptr ? nullptr
                                     : reinterpret_cast<IMP>(makeCrossing(
                                           &phoneCallsThisMachine, reinterpret_cast<void*>(implementation), argumentsOf(types)));
}

/// Where a library of the phone last called this machine.
thread_local const void* lastCaller = nullptr;

void doNothing()
{
}

} // namespace

// For the assembly. Each arranges the arguments and gives the function to call.
extern "C" {

/// A send to nil: zero in the registers that results come back in.
[[gnu::visibility("hidden")]] std::uint64_t phoneZero()
{
    return 0;
}

[[gnu::visibility("hidden")]] void* arrangeCallOfThisMachine(const Crossing* crossing, const Word* phone, Word* machine)
{
    // The frame keeps the return address below the arguments.
    lastCaller = std::bit_cast<const void*>(phone[-1]);
    crossing->arguments.toThisMachine(phone, machine);
    return crossing->function;
}

[[gnu::visibility("hidden")]] void* arrangeCallOfThePhone(const Crossing* crossing, const Word* machine, Word* phone)
{
    crossing->arguments.toThePhone(machine, phone);
    return crossing->function;
}

[[gnu::visibility("hidden")]] void* arrangeSend(const void*, const Word* phone, Word* machine)
{
    const auto receiver = std::bit_cast<id>(phone[0]);
    const auto selector = std::bit_cast<SEL>(phone[1]);
    if (receiver == nullptr)
        return reinterpret_cast<void*>(&phoneZero);
    const IMP implementation = objc_msg_lookup(receiver, selector);
    static const SEL stringWithFormat = ::selector<"stringWithFormat:">();
    const ArgumentWords words = selector == stringWithFormat ? formattedArguments(3, std::bit_cast<NSString*>(phone[2]))
                                                             : argumentsOfSend(object_getClass(receiver), selector);
    words.toThisMachine(phone, machine);
    return reinterpret_cast<void*>(implementation);
}

[[gnu::visibility("hidden")]] void* arrangeSendForStructure(const void*, const Word* phone, Word* machine)
{
    const auto receiver = std::bit_cast<id>(phone[1]);
    const auto selector = std::bit_cast<SEL>(phone[2]);
    if (receiver == nullptr)
        return reinterpret_cast<void*>(&doNothing);
    const IMP implementation = objc_msg_lookup(receiver, selector);
    argumentsOfSend(object_getClass(receiver), selector).toThisMachine(phone, machine);
    return reinterpret_cast<void*>(implementation);
}

[[gnu::visibility("hidden")]] void* arrangeSendToSuper(const void*, const Word* phone, Word* machine)
{
    auto* const super = std::bit_cast<objc_super*>(phone[0]);
    const auto selector = std::bit_cast<SEL>(phone[1]);
    const IMP implementation = objc_msg_lookup_super(super, selector);
    argumentsOfSend(super->superclass, selector).toThisMachine(phone, machine);
    machine[0] = std::bit_cast<Word>(super->receiver);
    return reinterpret_cast<void*>(implementation);
}

[[gnu::visibility("hidden")]] void* arrangeSendToSuperForStructure(const void*, const Word* phone, Word* machine)
{
    auto* const super = std::bit_cast<objc_super*>(phone[1]);
    const auto selector = std::bit_cast<SEL>(phone[2]);
    const IMP implementation = objc_msg_lookup_super(super, selector);
    argumentsOfSend(super->superclass, selector).toThisMachine(phone, machine);
    machine[1] = std::bit_cast<Word>(super->receiver);
    return reinterpret_cast<void*>(implementation);
}

[[gnu::visibility("hidden")]] void* arrangeLog(const void*, const Word* phone, Word* machine)
{
    formattedArguments(1, std::bit_cast<NSString*>(phone[0])).toThisMachine(phone, machine);
    return reinterpret_cast<void*>(&NSLog);
}
}

namespace simulator::macho::armv7 {

void* callableByThePhone(void* function)
{
    return makeCrossing(&phoneCallsThisMachine, function, unknownArguments());
}

void* callableByThisMachine(void* function)
{
    return makeCrossing(&thisMachineCallsPhone, function, unknownArguments());
}

const void* implementationBehind(const void* code)
{
    return code == phoneCallsThisMachineReturns ? lastCaller : functionBehind(code);
}

BOOL addMethod(Class cls, SEL selector, IMP implementation, const char* types)
{
    return class_addMethod(cls, selector, methodOfThePhone(implementation, types), types);
}

void hookMessage(Class cls, SEL selector, IMP replacement, IMP* previous)
{
    const Method method = cls == nullptr ? nullptr : class_getInstanceMethod(cls, selector);
    // What a missing method means is the hook's business.
    if (method == nullptr) {
        MSHookMessageEx(cls, selector, replacement, previous);
        return;
    }
    const char* const types = method_getTypeEncoding(method);
    MSHookMessageEx(cls, selector, methodOfThePhone(replacement, types), previous);
    if (previous != nullptr)
        *previous = methodOfThisMachine(*previous, types);
}

void addObserver(CFNotificationCenterRef center, const void* observer, CFNotificationCallback callback, NSString* name,
                 const void* object, CFNotificationSuspensionBehavior suspensionBehavior)
{
    auto* const callable = callableByThisMachine(reinterpret_cast<void*>(callback));
    CFNotificationCenterAddObserver(center, observer, reinterpret_cast<CFNotificationCallback>(callable), name, object,
                                    suspensionBehavior);
}

} // namespace simulator::macho::armv7
