#pragma once

#include <string>
#include <vector>

#include "platform/runtime/objc.hpp"

/// What the library asks of the object runtime. This program's own entry points stand in front of the runtime's and note
/// what comes from the library.

/// The class names that the library has looked up, in order.
std::vector<std::string> classLookups();
/// How often it has looked that one up.
int lookupsOf(const std::string& className);

/// From now on the library does not find that class.
void hideClass(const std::string& name);
/// The library finds it again.
void showClass(const std::string& name);

/// The names of the instance variables that the library has looked up, in order.
std::vector<std::string> instanceVariableLookups();
/// From now on the library finds no instance variable of that name in any class.
void hideInstanceVariable(const std::string& name);

/// A method that was put into a class, as replacement or as addition.
struct InstalledMethod {
    std::string className;
    std::string selector;
    std::string types;
    IMP implementation;
};

/// The methods whose implementation lies in the library and that it put into classes that are not its own, in order.
std::vector<InstalledMethod> installedMethods();

/// The libraries that have told of their loading, in order, and whether the library's hooks were in place by then.
struct LoadedLibrary {
    std::string name;
    bool hooksWereInPlace;
};
std::vector<LoadedLibrary> loadedLibraries();
