#include <cstdlib>
#include <cstring>
#include <string>

#include "platform/runtime/objc.hpp"

/// Protocols that are made at run time, which GNU's runtime has no entry points for. The structures are those of its binary
/// interface.

struct objc_protocol_list {
    objc_protocol_list* next;
    std::size_t count;
    objc_protocol* list[1];
};

struct objc_method_description {
    char* name;
    char* types;
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
    // GNU's protocols know required methods only.
    if (isRequired == NO)
        return;
    auto*& list = isInstance != NO ? protocol->instanceMethods : protocol->classMethods;
    list = grown(list);
    list->list[list->count - 1] = {::strdup(sel_getName(selector)), ::strdup(types)};
}
}
