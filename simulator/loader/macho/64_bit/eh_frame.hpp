#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "simulator/loader/macho/MachOFile.hpp"
#include "simulator/loader/macho/UnwindTables.hpp"

namespace simulator::macho {

/// What a function saved, in words below the frame's address (the caller's stack pointer). Registers have DWARF's numbers.
struct SavedRegister {
    std::uint8_t number;
    std::uint8_t wordsBelow;
};

struct Frame {
    /// The frame's address is so many bytes above this register.
    std::uint8_t base;
    std::uint32_t offset;
    std::vector<SavedRegister> saved;
};

/// What a processor's compact encodings mean.
struct FrameEncodings {
    std::uint8_t returnAddressRegister;
    /// Nothing for a form that compilers do not make for the phone.
    std::optional<Frame> (*frameOf)(std::uint32_t encoding);
};

/// The library that lies at `start` brings compact unwind tables, which the machine's unwinder cannot read: they are translated
/// into DWARF's (System V ABI, ".eh_frame"), exact wherever a function calls another, and registered. Functions without a frame
/// are left out: an exception that comes to one of them ends the process.
UnwindTables registerEhFrame(const MachOFile& file, const std::byte* start, const FrameEncodings& encodings);

} // namespace simulator::macho
