#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <map>
#include <string>
#include <tuple>

#include "platform/runtime/objc.hpp"

/// Protocols that are made at run time, which GNU's runtime has no entry points for. The structures are those of its binary
/// interface. It knows required methods only; the optional ones are kept beside.

struct objc_protocol_list {
    objc_protocol_list* next;
    std::size_t count;
    objc_protocol* list[1];
};

struct objc_method_description_list {
    int count;
    objc_method_description list[1];
};

struct objc_protocol {
    Class isa;
    char* name;
    objc_protocol_list* adopted;
    objc_method_description_list* instanceMethods;
    objc_method_description_list* classMethods;
};

extern "C" void __objc_protocols_add_protocol(const char* name, objc_protocol* protocol);

namespace {

/// The list with room for one more. Protocols are never freed.
objc_method_description_list* grown(objc_method_description_list* list)
{
    const int count = list == nullptr ? 0 : list->count;
    const std::size_t size =
        sizeof(objc_method_description_list) + static_cast<std::size_t>(count) * sizeof(objc_method_description);
    auto* const larger = static_cast<objc_method_description_list*>(std::realloc(list, size));
    larger->count = count + 1;
    return larger;
}

/// The types of optional methods, by the protocol, whether it is objects that have the method, and the selector's name.
using OptionalMethods = std::map<std::tuple<const objc_protocol*, bool, std::string>, std::string>;

OptionalMethods& optionalMethods()
{
    static auto& methods = *new OptionalMethods;
    return methods;
}

objc_method_description ownMethod(objc_protocol* protocol, SEL selector, BOOL isRequired, BOOL isInstance)
{
    static const auto runtimes =
        reinterpret_cast<decltype(&protocol_getMethodDescription)>(dlsym(RTLD_NEXT, "protocol_getMethodDescription"));
    if (isRequired != NO)
        return runtimes(protocol, selector, isRequired, isInstance);
    const auto found = optionalMethods().find({protocol, isInstance != NO, sel_getName(selector)});
    return found == optionalMethods().end() ? objc_method_description{} : objc_method_description{selector, found->second.data()};
}

} // namespace

extern "C" {

objc_protocol* objc_allocateProtocol(const char* name)
{
    if (objc_getProtocol(name) != nullptr)
        return nullptr;
    return new objc_protocol{objc_getClass("Protocol"), ::strdup(name), nullptr, nullptr, nullptr};
}

void objc_registerProtocol(objc_protocol* protocol)
{
    __objc_protocols_add_protocol(protocol->name, protocol);
}

void protocol_addProtocol(objc_protocol* protocol, objc_protocol* adopted)
{
    protocol->adopted = new objc_protocol_list{protocol->adopted, 1, {adopted}};
}

void protocol_addMethodDescription(objc_protocol* protocol, SEL selector, const char* types, BOOL isRequired, BOOL isInstance)
{
    if (isRequired == NO) {
        optionalMethods()[{protocol, isInstance != NO, sel_getName(selector)}] = types;
        return;
    }
    auto*& list = isInstance != NO ? protocol->instanceMethods : protocol->classMethods;
    list = grown(list);
    list->list[list->count - 1] = {selector, ::strdup(types)};
}

objc_method_description protocol_getMethodDescription(objc_protocol* protocol, SEL selector, BOOL isRequired, BOOL isInstance)
{
    objc_method_description found = ownMethod(protocol, selector, isRequired, isInstance);
    for (const objc_protocol_list* list = protocol->adopted; list != nullptr; list = list->next) {
        for (std::size_t i = 0; i < list->count && found.name == nullptr; ++i)
            found = protocol_getMethodDescription(list->list[i], selector, isRequired, isInstance);
    }
    return found;
}
}
