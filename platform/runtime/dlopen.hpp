#pragma once

/// dlopen(3), as far as the library needs it.
inline constexpr int RTLD_NOW_MODE = 2;

extern "C" [[gnu::visibility("default")]] void* dlopen(const char* path, int mode) noexcept;
