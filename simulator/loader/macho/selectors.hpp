#pragma once

#include "simulator/loader/macho/Segments.hpp"

namespace simulator::macho {

/// What the phone's object runtime does for a library when it is mapped: where the library has an image info, each of its
/// references to a selector, which hold the name till then, gets the selector ("objc4", Apple: `_read_images`). To be called
/// after the pointers have been adjusted. Throws std::runtime_error with the reason when a reference points astray.
void fixSelectors(const MachOFile& file, const Segments& segments);

} // namespace simulator::macho
