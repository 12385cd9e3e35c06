#include "tests/support/runtime_calls.hpp"

#include <algorithm>
#include <dlfcn.h>
#include <filesystem>
#include <set>

#include "tests/support/Phone.hpp"

namespace {

struct Calls {
    std::vector<std::string> lookups;
    std::set<std::string> hidden;
    std::vector<std::string> instanceVariables;
    std::set<std::string> hiddenInstanceVariables;
    std::vector<InstalledMethod> methods;
    std::vector<LoadedLibrary> libraries;
};

Calls& calls()
{
    static auto& noted = *new Calls;
    return noted;
}

template <class Function>
Function* next(const char* name)
{
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

} // namespace

std::vector<std::string> classLookups()
{
    return calls().lookups;
}

int lookupsOf(const std::string& className)
{
    return static_cast<int>(std::ranges::count(calls().lookups, className));
}

void hideClass(const std::string& name)
{
    calls().hidden.insert(name);
}

void showClass(const std::string& name)
{
    calls().hidden.erase(name);
}

std::vector<std::string> instanceVariableLookups()
{
    return calls().instanceVariables;
}

void hideInstanceVariable(const std::string& name)
{
    calls().hiddenInstanceVariables.insert(name);
}

std::vector<InstalledMethod> installedMethods()
{
    return calls().methods;
}

std::vector<LoadedLibrary> loadedLibraries()
{
    return calls().libraries;
}

extern "C" {

Class objc_getClass(const char* name)
{
    static const auto runtimes = next<Class(const char*)>("objc_getClass");
    if (isInLibrary(__builtin_return_address(0))) {
        calls().lookups.emplace_back(name);
        if (calls().hidden.contains(name))
            return nullptr;
    }
    return runtimes(name);
}

Ivar class_getInstanceVariable(Class cls, const char* name)
{
    static const auto runtimes = next<Ivar(Class, const char*)>("class_getInstanceVariable");
    if (isInLibrary(__builtin_return_address(0))) {
        calls().instanceVariables.emplace_back(name);
        if (calls().hiddenInstanceVariables.contains(name))
            return nullptr;
    }
    return runtimes(cls, name);
}

BOOL class_addMethod(Class cls, SEL selector, IMP implementation, const char* types)
{
    static const auto runtimes = next<BOOL(Class, SEL, IMP, const char*)>("class_addMethod");
    // A class that is not registered yet is one of the library's own.
    if (cls != nullptr && objc_getClass(class_getName(cls)) == cls && isInLibrary(reinterpret_cast<const void*>(implementation)))
        calls().methods.push_back({class_getName(cls), sel_getName(selector), types, implementation});
    return runtimes(cls, selector, implementation, types);
}

[[gnu::visibility("default")]] void noteLoadedLibrary(const char* file)
{
    const bool hooked = std::ranges::any_of(calls().methods, [](const InstalledMethod&) { return true; });
    calls().libraries.push_back({std::filesystem::path(file).filename(), hooked});
}
}
