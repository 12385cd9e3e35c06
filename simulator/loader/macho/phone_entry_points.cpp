#include "simulator/loader/macho/phone_entry_points.hpp"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include "platform/runtime/objc.hpp"
#include "simulator/loader/macho/Processor.hpp"

namespace simulator::macho {

namespace {

std::uintptr_t stackGuard = 0x0a0dff00;

[[noreturn]] void stackWasSmashed()
{
    std::fputs("springboard: a library of the phone wrote beyond its stack frame\n", stderr);
    std::abort();
}

[[noreturn]] void bindLazily()
{
    std::fputs("springboard: a library of the phone calls a function that was not bound\n", stderr);
    std::abort();
}

std::vector<EntryPoint> allEntryPoints()
{
    std::vector<EntryPoint> all = thisProcessor.entryPoints();
    all.insert(all.end(), {
                              // The symbol stands where the class does.
                              entryPoint("__CFConstantStringClassReference", objc_getClass("__NSCFConstantString")),
                              entryPoint("__stack_chk_guard", &stackGuard),
                              entryPoint("__stack_chk_fail", &stackWasSmashed),
                              // The loader binds every symbol at once.
                              entryPoint("dyld_stub_binder", &bindLazily),
                          });
    return all;
}

} // namespace

void* phoneEntryPoint(std::string_view name)
{
    static const auto& all = *new std::vector<EntryPoint>(allEntryPoints());
    const auto found = std::ranges::find(all, name, &EntryPoint::name);
    return found != all.end() ? found->address : nullptr;
}

} // namespace simulator::macho
