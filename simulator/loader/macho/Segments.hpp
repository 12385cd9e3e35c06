#pragma once

#include <algorithm>

#include "simulator/loader/macho/MachOFile.hpp"

namespace simulator::macho {

/// A pointer of a library in memory, which need not be aligned.
Word load(const std::byte* pointer);
void store(std::byte* pointer, Word value);

/// The segments of a file in memory, writable as long as they are being prepared.
class Segments {
public:
    /// Maps them. Throws std::runtime_error when they do not fit into memory.
    explicit Segments(const MachOFile& file);

    /// A library is linked to be at address 0.
    std::byte* at(Word address) const { return pages_.data() + address; }
    /// How many pointers are fixed up at the most.
    std::size_t mostPointers() const { return std::min(pages_.size() / sizeof(Word), std::size_t{1} << 20); }

    /// Where a pointer of the library lies. Throws std::runtime_error when that is outside of its segments; by the second, which
    /// is for pointers that are yet to be written, also when the segment is not writable.
    std::byte* pointerAt(Word address) const;
    std::byte* pointerAt(std::size_t segment, Word offset) const;

    /// Whether so many bytes lie within a segment that has that protection.
    bool holds(Word address, Word size, std::uint32_t protection) const;
    /// The text whose first byte an adjusted pointer points to. Throws std::runtime_error when it has no end within its segment.
    const char* textBehind(Word pointer) const;
    /// Whether a function of the library can be there: in a section of instructions, which can be executed.
    bool holdsInstructions(Word address) const;

    /// Gives the pages over, protected as the file demands.
    Pages protect();

private:
    const MachOFile& file_;
    Pages pages_;
};

} // namespace simulator::macho
