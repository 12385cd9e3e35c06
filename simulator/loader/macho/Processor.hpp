#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "simulator/loader/macho/MachOFile.hpp"
#include "simulator/loader/macho/UnwindTables.hpp"
#include "simulator/loader/macho/made_code.hpp"

namespace simulator::macho {

/// What a library of the phone finds under a name (a C name, without the underscore that symbols have).
struct EntryPoint {
    std::string_view name;
    void* address;
};

template <class Function>
EntryPoint entryPoint(std::string_view name, Function* function)
{
    return {name, reinterpret_cast<void*>(function)};
}

/// In what libraries of the phone differ from one processor to the other. Each processor has a folder of its own here, with
/// one of these in it; the build takes the folder of the processor that it is for.
struct Processor {
    std::uint32_t cputype;

    /// The phone's entry points whose form depends on the processor. To be called once.
    std::vector<EntryPoint> (*entryPoints)();

    /// Tells this process's unwinder how an exception passes through the functions of a library that lies at `start`, so that
    /// the library's clean-ups run and its callers get the exception.
    UnwindTables (*registerUnwindTables)(const MachOFile& file, const std::byte* start);

    /// For a function of this machine, what a library of the phone calls for it.
    void* (*callableByThePhone)(void* function) = [](void* function) { return function; };
    /// For a function of a library of the phone, what this machine calls for it.
    void* (*callableByThisMachine)(void* function) = [](void* function) { return function; };
    /// The implementation that a library of the phone gave, for one that needs code before it; any other code itself.
    /// For the address to which a function of this machine returns, the place in the library that called it.
    const void* (*implementationBehind)(const void* code) = &functionBehind;
};

/// This build's.
extern const Processor thisProcessor;

} // namespace simulator::macho
