# For the 64-bit phones' processor.
set(CMAKE_SYSTEM_PROCESSOR aarch64)
set(CMAKE_LIBRARY_ARCHITECTURE aarch64-linux-gnu)
cmake_path(SET CMAKE_SYSROOT NORMALIZE ${CMAKE_CURRENT_LIST_DIR}/../../build/sysroot)
set(CMAKE_CROSSCOMPILING_EMULATOR qemu-aarch64)
include(${CMAKE_CURRENT_LIST_DIR}/emulated-linux.cmake)
