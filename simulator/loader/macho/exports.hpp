#pragma once

#include <vector>

#include "simulator/loader/Image.hpp"
#include "simulator/loader/macho/Segments.hpp"

namespace simulator::macho {

/// What the library defines for others: C names, and functions as this machine may call them. Throws std::runtime_error with
/// the reason when its table of exports is damaged.
std::vector<ExportedSymbol> readExports(const MachOFile& file, const Segments& segments);

} // namespace simulator::macho
