#pragma once

#include "simulator/loader/macho/MachOFile.hpp"

namespace simulator::macho {

/// Tells this process's unwinder how an exception passes through the functions of a library that lies at `start`, so that the
/// library's clean-ups run and its callers get the exception. The library brings compact unwind tables
/// (<mach-o/compact_unwind_encoding.h>), which the machine's unwinder cannot read: they are translated into DWARF's
/// (System V ABI, ".eh_frame"), exact wherever a function calls another. Functions of a form that compilers do not make for the
/// phone are left out: an exception that comes to one of them ends the process.
///
/// Gives the tables, which must stay as long as the process lives.
std::vector<std::byte> registerUnwindTables(const MachOFile& file, const std::byte* start);

} // namespace simulator::macho
