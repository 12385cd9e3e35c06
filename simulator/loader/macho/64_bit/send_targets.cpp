#include "simulator/loader/macho/64_bit/send_targets.hpp"

#include <functional>
#include <unordered_map>
#include <utility>

#include "platform/runtime/objc.hpp"

extern "C" const char* objc_skip_type_qualifiers(const char* type);

namespace simulator::macho {

namespace {

Extension extensionFor(const char* resultType)
{
    switch (*objc_skip_type_qualifiers(resultType)) {
    case 'B':
    case 'C':
        return Extension::unsigned8;
    case 'c':
        return Extension::signed8;
    case 'S':
        return Extension::unsigned16;
    case 's':
        return Extension::signed16;
    default:
        return Extension::none;
    }
}

/// Compilers fold functions of the same code into one, so an implementation may be that of methods with other types.
using MethodKey = std::pair<IMP, SEL>;

struct MethodHash {
    std::size_t operator()(const MethodKey& key) const { return std::hash<IMP>()(key.first) * 31 + std::hash<SEL>()(key.second); }
};

Target targetFor(IMP implementation, Class cls, SEL selector)
{
    // Never destroyed: objects are let go of, with sends, while their thread comes to its end.
    thread_local auto& known = *new std::unordered_map<MethodKey, Extension, MethodHash>;
    const auto found = known.find({implementation, selector});
    if (found != known.end())
        return {implementation, found->second};
    const Method method = class_getInstanceMethod(cls, selector);
    // One implementation forwards all the messages that have no method; what it hands back stays as it is.
    if (method == nullptr)
        return {implementation, Extension::none};
    const Extension extension = extensionFor(method_getTypeEncoding(method));
    known.emplace(MethodKey(implementation, selector), extension);
    return {implementation, extension};
}

} // namespace

} // namespace simulator::macho

using simulator::macho::Target;
using simulator::macho::targetFor;

Target phoneSendTarget(id receiver, SEL selector)
{
    return targetFor(objc_msg_lookup(receiver, selector), object_getClass(receiver), selector);
}

Target phoneSuperSendTarget(objc_super* receiver, SEL selector)
{
    return targetFor(objc_msg_lookup_super(receiver, selector), receiver->superclass, selector);
}
