#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "platform/Foundation/NSDictionary.hpp"
#include "platform/Foundation/NSString.hpp"
#include "simulator/runtime/argument_classes.hpp"

namespace simulator {

/// A property list (XML, binary or in the old text form) on this machine whose root is a dictionary; anything else gives
/// nil, without a word, and so does a list of more than a phone has room for (16 MiB of bytes, 512 containers within one
/// another, and as many objects as ListAllowance has). Autoreleased.
NSDictionary* readPropertyList(const std::filesystem::path& file);

/// The same for who is going to write the list anew: throws std::system_error when there is a file and it cannot be read, since
/// what else it holds would be lost.
NSDictionary* readPropertyListToChange(const std::filesystem::path& file);

/// The same of a file's bytes.
NSDictionary* propertyListIn(std::string_view bytes);

/// The value of that key, nil when it is of another class: people write lists by hand.
template <class T>
T* valueOfClass(NSDictionary* list, NSString* key)
{
    NSObject* const value = list->objectForKey(key);
    const Class expected = objc_getClass(std::string(typeName<T>()).c_str());
    return value->isKindOfClass(expected) ? static_cast<T*>(value) : nullptr;
}

/// Writes a binary property list, with the folders on the way to it. The file is replaced whole: no reader ever sees half of it.
/// Throws std::runtime_error when it cannot be written.
void writePropertyList(NSDictionary* root, const std::filesystem::path& file);

} // namespace simulator
