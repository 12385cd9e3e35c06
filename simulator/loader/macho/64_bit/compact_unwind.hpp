#pragma once

#include <cstdint>
#include <vector>

#include "simulator/loader/macho/Bytes.hpp"

/// Compact unwind tables (<mach-o/compact_unwind_encoding.h>): what a library of the phone tells about the frames of its
/// functions.
namespace simulator::macho {

/// Which form a frame has; what the encoding's lower bits mean depends on it, and on the processor.
inline constexpr std::uint32_t UNWIND_MODE_MASK = 0x0f000000;

/// Offsets are from the start of the library; 0 stands for none.
struct Function {
    std::uint32_t start;
    std::uint32_t end;
    std::uint32_t encoding;
    /// Where the pointer to the personality lies.
    std::uint32_t personality;
    std::uint32_t lsda;
};

/// The functions of a library in the order in which they lie, from its section "__unwind_info". Throws std::runtime_error when
/// that is damaged.
std::vector<Function> readCompactUnwind(Bytes section);

} // namespace simulator::macho
