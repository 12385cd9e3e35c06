# For the 32-bit phones' processor. Like the phone, Debian's armel passes floating-point numbers in the general registers.
set(CMAKE_SYSTEM_PROCESSOR armv7)
set(CMAKE_LIBRARY_ARCHITECTURE arm-linux-gnueabi)
# What gcc says of a calling convention that it changed in 2017 concerns nobody here.
set(CMAKE_CXX_FLAGS_INIT "-march=armv7-a+neon -mfloat-abi=softfp -Wno-psabi")
set(CMAKE_ASM_FLAGS_INIT "${CMAKE_CXX_FLAGS_INIT}")
cmake_path(SET CMAKE_SYSROOT NORMALIZE ${CMAKE_CURRENT_LIST_DIR}/../../build/sysroot-armv7)
set(CMAKE_CROSSCOMPILING_EMULATOR qemu-arm)
include(${CMAKE_CURRENT_LIST_DIR}/emulated-linux.cmake)
