#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string_view>

/// What a target is made of: it takes one input after the other, and gives 0.

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size);

inline std::string_view textIn(const std::uint8_t* bytes, std::size_t size)
{
    return {reinterpret_cast<const char*>(bytes), size};
}

/// Says what is wrong and ends the process, which makes the input a finding.
[[noreturn]] inline void fail(const char* what)
{
    std::fprintf(stderr, "%s\n", what);
    std::abort();
}
