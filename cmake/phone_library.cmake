# The library and the page in the Settings as Mach-O files. `cmake --build BUILD --target phone` makes
#   BUILD/phone-library/Solvane.dylib         what ships: for the phone's two processors, in one file
#   BUILD/phone-library/x86_64/Solvane.dylib  the same for a desk's processor
#   BUILD/phone-settings/Solvane              and both of the page's bundle
#   BUILD/phone-settings/x86_64/Solvane
include_guard()
include(${CMAKE_CURRENT_LIST_DIR}/library.cmake)
include(${CMAKE_CURRENT_LIST_DIR}/mach_o.cmake)

set(phone_library ${PROJECT_BINARY_DIR}/phone-library/Solvane.dylib)
set(phone_settings ${PROJECT_BINARY_DIR}/phone-settings/Solvane)
# The page needs neither the loader's facility nor the frameworks of the lock screen.
set(settings_stubs ${phone_stubs})
list(FILTER settings_stubs INCLUDE REGEX "/(CoreFoundation|Foundation|libSystem|libc\\+\\+|libobjc)\\.tbd$")

# join_mach_o_library(FILE ...): the two slices of the phone in FILE, the desk's in a folder beside it.
function(join_mach_o_library file)
    cmake_path(GET file PARENT_PATH folder)
    cmake_path(GET file FILENAME name)
    foreach(architecture IN ITEMS armv7 arm64 x86_64)
        add_mach_o_library(${folder}/${architecture}/${name} ${architecture} ${ARGN})
    endforeach()
    set(slices ${folder}/armv7/${name} ${folder}/arm64/${name})
    add_custom_command(
        OUTPUT ${file}
        COMMAND llvm-lipo-19 -create ${slices} -output ${file}
        DEPENDS ${slices}
        COMMENT "Joining ${name} for the phone"
        VERBATIM)
    set_property(GLOBAL APPEND PROPERTY phone_files ${file} ${folder}/x86_64/${name})
endfunction()

join_mach_o_library(${phone_library} SOURCES ${library_sources} STUBS ${phone_stubs} WEAK_STUBS ${library_weak_stubs})
join_mach_o_library(${phone_settings} SOURCES ${settings_sources} STUBS ${settings_stubs}
    FOLDER /Library/PreferenceBundles/Solvane.bundle IDENTIFIER org.solvane.Solvane.settings)

get_property(phone_files GLOBAL PROPERTY phone_files)
add_custom_target(phone DEPENDS ${phone_files})
