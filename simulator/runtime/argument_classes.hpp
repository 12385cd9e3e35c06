#pragma once

#include <span>
#include <string_view>
#include <type_traits>
#include <vector>

#include "platform/runtime/objc.hpp"

/// What a method's encoding does not tell: of which class each argument is to be. A method of the simulator takes its word for
/// it, so whoever sends what a person has written asks here first.
namespace simulator {

/// The name of a C++ type; a class of the platform has that of its objects' class.
template <class T>
constexpr std::string_view typeName()
{
    constexpr std::string_view mark = "T = ";
    const std::string_view function = __PRETTY_FUNCTION__;
    const std::size_t start = function.find(mark) + mark.size();
    return function.substr(start, function.find_first_of(";]", start) - start);
}

/// Empty for an argument that is no object.
template <class T>
constexpr std::string_view argumentClass()
{
    if constexpr (std::is_pointer_v<T> && std::is_class_v<std::remove_pointer_t<T>>)
        return typeName<std::remove_cv_t<std::remove_pointer_t<T>>>();
    else
        return {};
}

/// Plugins of the simulator call it too, from outside of the program.
[[gnu::visibility("default")]] void noteArgumentClasses(IMP implementation, std::vector<std::string_view> classes);

template <class... Arguments>
void noteArgumentClasses(IMP implementation)
{
    noteArgumentClasses(implementation, {argumentClass<Arguments>()...});
}

/// The class that the argument of that number is to be of, nil when any will do.
Class argumentClassOf(IMP implementation, std::size_t argument);

} // namespace simulator
