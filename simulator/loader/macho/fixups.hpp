#pragma once

#include "simulator/loader/macho/Segments.hpp"

/// What the loading instructions of a library make of its pointers. Each throws std::runtime_error with the reason when an
/// instruction is unknown or out of place.
namespace simulator::macho {

/// Adds to each pointer into the library where the library has come to lie.
void rebase(const MachOFile& file, const Segments& segments);

/// Writes the addresses of the symbols that the library takes from others, those too that it could do without until it calls
/// them. A symbol that nobody defines, and that the library does not do without, throws std::runtime_error with its name.
void bind(const MachOFile& file, const Segments& segments);

} // namespace simulator::macho
