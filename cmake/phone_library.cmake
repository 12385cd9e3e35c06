# The library as Mach-O files. `cmake --build BUILD --target phone` makes
#   BUILD/phone-library/Solvane.dylib         what ships: for the phone's two processors, in one file
#   BUILD/phone-library/x86_64/Solvane.dylib  the same for a desk's processor
include_guard()
include(${CMAKE_CURRENT_LIST_DIR}/library.cmake)
include(${CMAKE_CURRENT_LIST_DIR}/mach_o.cmake)

set(phone_library_folder ${PROJECT_BINARY_DIR}/phone-library)

foreach(architecture IN ITEMS armv7 arm64 x86_64)
    add_mach_o_library(${phone_library_folder}/${architecture}/Solvane.dylib ${architecture}
        SOURCES ${library_sources} STUBS ${phone_stubs} WEAK_STUBS ${library_weak_stubs})
endforeach()

set(phone_slices ${phone_library_folder}/armv7/Solvane.dylib ${phone_library_folder}/arm64/Solvane.dylib)
set(phone_library ${phone_library_folder}/Solvane.dylib)
add_custom_command(
    OUTPUT ${phone_library}
    COMMAND llvm-lipo-19 -create ${phone_slices} -output ${phone_library}
    DEPENDS ${phone_slices}
    COMMENT "Joining Solvane.dylib for the phone"
    VERBATIM)

add_custom_target(phone DEPENDS ${phone_library} ${phone_library_folder}/x86_64/Solvane.dylib)
