#include "simulator/console/invoke.hpp"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstddef>

#include "simulator/console/BadLine.hpp"
#include "simulator/runtime/argument_classes.hpp"

namespace simulator {

namespace {

/// The types of a method's result and arguments; the receiver and the selector are its first two arguments.
class NSMethodSignature : public NSObject {
public:
    /// Nil when the receiver has no such method.
    static NSMethodSignature* ofMethod(id receiver, SEL selector)
    {
        return send<"methodSignatureForSelector:", NSMethodSignature*>(receiver, selector);
    }
    NSUInteger numberOfArguments() { return send<"numberOfArguments", NSUInteger>(this); }
    const char* getArgumentTypeAtIndex(NSUInteger index) { return send<"getArgumentTypeAtIndex:", const char*>(this, index); }
    const char* methodReturnType() { return send<"methodReturnType", const char*>(this); }
};

/// A message as an object.
class NSInvocation : public NSObject {
public:
    static NSInvocation* invocationWithMethodSignature(NSMethodSignature* signature)
    {
        return send<"invocationWithMethodSignature:", NSInvocation*>(classNamed<"NSInvocation">(), signature);
    }
    void setTarget(id target) { send<"setTarget:">(this, target); }
    void setSelector(SEL selector) { send<"setSelector:">(this, selector); }
    /// Copies the argument's bytes.
    void setArgument_atIndex(void* argument, NSInteger index) { send<"setArgument:atIndex:">(this, argument, index); }
    void invoke() { send<"invoke">(this); }
    void getReturnValue(void* buffer) { send<"getReturnValue:">(this, buffer); }
};

constexpr NSUInteger firstArgument = 2;

struct alignas(std::max_align_t) Storage {
    std::array<std::byte, largestValue> bytes{};
};

/// Whether a selector is of a family ("Method families" in "Automatic Reference Counting", LLVM): the name begins with the
/// family's word, underscores aside, and the word ends there.
bool isOfFamily(std::string_view selectorName, std::string_view family)
{
    selectorName.remove_prefix(std::min(selectorName.find_first_not_of('_'), selectorName.size()));
    if (!selectorName.starts_with(family))
        return false;
    const std::string_view rest = selectorName.substr(family.size());
    return rest.empty() || std::islower(static_cast<unsigned char>(rest.front())) == 0;
}

/// Whether the caller owns the method's result.
bool givesOwnership(std::string_view selectorName)
{
    constexpr std::array<std::string_view, 5> families{"alloc", "new", "copy", "mutableCopy", "init"};
    return std::ranges::any_of(families, [=](std::string_view family) { return isOfFamily(selectorName, family); });
}

/// Foundation's methods of a variable number of arguments, which their encodings do not tell.
constexpr std::array<std::string_view, 17> variadicMethods{
    "appendFormat:",
    "arrayWithObjects:",
    "dictionaryWithObjectsAndKeys:",
    "expressionWithFormat:",
    "handleFailureInFunction:file:lineNumber:description:",
    "handleFailureInMethod:object:file:lineNumber:description:",
    "initWithFormat:",
    "initWithFormat:locale:",
    "initWithObjects:",
    "initWithObjectsAndKeys:",
    "localizedStringWithFormat:",
    "orderedSetWithObjects:",
    "predicateWithFormat:",
    "raise:format:",
    "setWithObjects:",
    "stringByAppendingFormat:",
    "stringWithFormat:",
};

void refuseVariableArguments(const std::string& selectorName)
{
    if (std::ranges::find(variadicMethods, selectorName) != variadicMethods.end())
        throw BadLine('"' + selectorName + "\" takes a variable number of arguments, which cannot be written");
}

/// Throws BadLine for an object whose class is none that the method knows what to do with.
void checkClass(id argument, Class expected, std::size_t number)
{
    if (argument == nullptr || expected == nullptr || (!isClass(argument) && argument->isKindOfClass(expected)))
        return;
    throw BadLine("argument " + std::to_string(number) + " must be a " + class_getName(expected) + ", not " +
                  (isClass(argument) ? nameOf(argument) : "an object of the class " + nameOf(argument)));
}

void setArguments(NSInvocation* invocation, NSMethodSignature* signature, IMP implementation,
                  std::span<const std::string> arguments, const ObjectAtPath& objectAtPath)
{
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const NSUInteger index = firstArgument + i;
        const ValueType& type = valueType(signature->getArgumentTypeAtIndex(index));
        Storage storage;
        if (!type.write(arguments[i], storage.bytes.data(), objectAtPath))
            throw BadLine("argument " + std::to_string(i + 1) + " must be " + type.form + ", not \"" + arguments[i] + '"');
        const Value argument = type.read(storage.bytes.data());
        if (const id* const object = std::get_if<id>(&argument))
            checkClass(*object, argumentClassOf(implementation, i), i + 1);
        else if (const Class* const cls = std::get_if<Class>(&argument); cls != nullptr && type.encoding == "@")
            checkClass(reinterpret_cast<id>(*cls), argumentClassOf(implementation, i), i + 1);
        invocation->setArgument_atIndex(storage.bytes.data(), static_cast<NSInteger>(index));
    }
}

Value call(NSInvocation* invocation, const ValueType& resultType, id receiver, const std::string& selectorName)
{
    // An initialiser uses its receiver up, which stays ours here.
    if (isOfFamily(selectorName, "init"))
        objc_retain(receiver);
    invocation->invoke();

    Storage storage;
    if (resultType.size != 0)
        invocation->getReturnValue(storage.bytes.data());
    const Value result = resultType.read(storage.bytes.data());
    if (const id* const object = std::get_if<id>(&result); object != nullptr && givesOwnership(selectorName))
        objc_autorelease(*object);
    return result;
}

} // namespace

std::string nameOf(id object)
{
    if (isClass(object))
        return "the class " + std::string(class_getName(reinterpret_cast<Class>(object)));
    return class_getName(object_getClass(object));
}

Value invoke(id receiver, const std::string& selectorName, std::span<const std::string> arguments,
             const ObjectAtPath& objectAtPath)
{
    if (receiver == nullptr)
        return id{nullptr};
    const SEL selector = sel_registerName(selectorName.c_str());
    NSMethodSignature* const signature = NSMethodSignature::ofMethod(receiver, selector);
    if (signature == nullptr)
        throw BadLine(nameOf(receiver) + " does not respond to \"" + selectorName + "\"");
    const NSUInteger expected = signature->numberOfArguments() - firstArgument;
    if (arguments.size() != expected)
        throw BadLine("\"" + selectorName + "\" takes " + std::to_string(expected) +
                      (expected == 1 ? " argument" : " arguments") + ", not " + std::to_string(arguments.size()));

    refuseVariableArguments(selectorName);
    const ValueType& resultType = valueType(signature->methodReturnType());
    NSInvocation* const invocation = NSInvocation::invocationWithMethodSignature(signature);
    invocation->setTarget(receiver);
    invocation->setSelector(selector);
    setArguments(invocation, signature, class_getMethodImplementation(object_getClass(receiver), selector), arguments,
                 objectAtPath);
    return call(invocation, resultType, receiver, selectorName);
}

Value invoke(id receiver, const std::string& selectorName)
{
    const ObjectAtPath noArguments;
    return invoke(receiver, selectorName, {}, noArguments);
}

} // namespace simulator
