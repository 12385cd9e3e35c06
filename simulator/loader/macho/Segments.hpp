#pragma once

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
    /// How many pointers there is room for.
    std::size_t mostPointers() const { return pages_.size() / sizeof(Word); }

    /// Where a pointer of the library lies. Throws std::runtime_error when that is outside of its segments.
    std::byte* pointerAt(Word address) const;
    std::byte* pointerAt(std::size_t segment, Word offset) const;

    /// Gives the pages over, protected as the file demands.
    Pages protect();

private:
    const MachOFile& file_;
    Pages pages_;
};

} // namespace simulator::macho
