#include <map>
#include <string>

#include "platform/runtime/objc.hpp"

/// Declared properties, which GNU's runtime has no room for.

struct objc_property {
    std::string attributes;
};

namespace {

using Properties = std::map<std::string, objc_property>;

std::map<Class, Properties>& propertiesOfClasses()
{
    static auto& properties = *new std::map<Class, Properties>;
    return properties;
}

} // namespace

extern "C" {

BOOL class_addProperty(Class cls, const char* name, const objc_property_attribute_t* attributes, unsigned count)
{
    std::string joined;
    for (unsigned i = 0; i < count; ++i)
        joined.append(i == 0 ? "" : ",").append(attributes[i].name).append(attributes[i].value);
    return BOOL{propertiesOfClasses()[cls].try_emplace(name, joined).second};
}

objc_property* class_getProperty(Class cls, const char* name)
{
    for (; cls != nullptr; cls = class_getSuperclass(cls)) {
        const auto own = propertiesOfClasses().find(cls);
        if (own == propertiesOfClasses().end())
            continue;
        if (const auto found = own->second.find(name); found != own->second.end())
            return &found->second;
    }
    return nullptr;
}

const char* property_getAttributes(objc_property* property)
{
    return property->attributes.c_str();
}
}
