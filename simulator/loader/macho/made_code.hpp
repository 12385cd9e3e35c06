#pragma once

#include <cstdint>
#include <span>

/// Instructions that are made while the process runs, to go before a function whose caller has another calling convention.
namespace simulator::macho {

/// Makes the instructions executable for good, and remembers before which function they go.
std::uint32_t* makeCode(std::span<const std::uint32_t> instructions, const void* function);

/// The function before which that code goes; any other code itself.
const void* functionBehind(const void* code);

} // namespace simulator::macho
