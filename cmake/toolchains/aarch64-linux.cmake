# Builds for the phone's processor on Linux, against the tree that scripts/device-sysroot makes, and runs under emulation.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR aarch64)

cmake_path(SET CMAKE_SYSROOT NORMALIZE ${CMAKE_CURRENT_LIST_DIR}/../../build/sysroot)
if(NOT EXISTS ${CMAKE_SYSROOT})
    message(FATAL_ERROR "${CMAKE_SYSROOT} is missing: scripts/device-sysroot makes it")
endif()

set(CMAKE_CXX_COMPILER aarch64-linux-gnu-g++-12)
set(CMAKE_LIBRARY_ARCHITECTURE aarch64-linux-gnu)
# The Objective-C runtime lies with the compiler of its own processor.
set(CMAKE_EXE_LINKER_FLAGS_INIT -L${CMAKE_SYSROOT}/usr/lib/gcc/aarch64-linux-gnu/12)
set(CMAKE_CROSSCOMPILING_EMULATOR qemu-aarch64 -L ${CMAKE_SYSROOT})

set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(ENV{PKG_CONFIG_SYSROOT_DIR} ${CMAKE_SYSROOT})
set(ENV{PKG_CONFIG_LIBDIR} ${CMAKE_SYSROOT}/usr/lib/aarch64-linux-gnu/pkgconfig:${CMAKE_SYSROOT}/usr/share/pkgconfig)
