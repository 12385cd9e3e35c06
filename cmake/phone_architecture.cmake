# phone_architecture: what the phone calls the processor that this build is for.
include_guard()

set(phone_architecture ${CMAKE_SYSTEM_PROCESSOR})
if(phone_architecture STREQUAL aarch64)
    set(phone_architecture arm64)
endif()
