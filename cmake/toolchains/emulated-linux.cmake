# Builds for one of the phone's processors on Linux, against the tree that scripts/device-sysroot makes, and runs under
# emulation. The file that includes this one has set the processor, Debian's name for it, the tree and the emulator.
set(CMAKE_SYSTEM_NAME Linux)
if(NOT EXISTS ${CMAKE_SYSROOT})
    message(FATAL_ERROR "${CMAKE_SYSROOT} is missing: scripts/device-sysroot makes it")
endif()

set(CMAKE_CXX_COMPILER ${CMAKE_LIBRARY_ARCHITECTURE}-g++-12)
# The Objective-C runtime lies with the compiler of its own processor.
set(CMAKE_EXE_LINKER_FLAGS_INIT -L${CMAKE_SYSROOT}/usr/lib/gcc/${CMAKE_LIBRARY_ARCHITECTURE}/12)
list(APPEND CMAKE_CROSSCOMPILING_EMULATOR -L ${CMAKE_SYSROOT})

set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(ENV{PKG_CONFIG_SYSROOT_DIR} ${CMAKE_SYSROOT})
set(ENV{PKG_CONFIG_LIBDIR}
    ${CMAKE_SYSROOT}/usr/lib/${CMAKE_LIBRARY_ARCHITECTURE}/pkgconfig:${CMAKE_SYSROOT}/usr/share/pkgconfig)
