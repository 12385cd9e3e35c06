# The library as Mach-O files, linked against text stubs of the phone's libraries. `cmake --build BUILD --target phone` makes
#   BUILD/phone-library/Solvane.dylib         what ships: for the phone's two processors, in one file
#   BUILD/phone-library/x86_64/Solvane.dylib  the same for a desk's processor
find_package(Python3 REQUIRED COMPONENTS Interpreter)

set(mach_o_compiler clang++-19)
set(mach_o_flags -ffreestanding -nostdlibinc -nostdinc++ -isystem /usr/lib/llvm-19/include/c++/v1 -std=c++20 -O2 -Wall -Wextra
    -Werror -fvisibility=hidden -fvisibility-inlines-hidden -fno-delete-null-pointer-checks -I${PROJECT_SOURCE_DIR})
set(install_name /Library/MobileSubstrate/DynamicLibraries/Solvane.dylib)
set(packaging_tools ${PROJECT_SOURCE_DIR}/packaging/tools)
set(mach_o_folder ${PROJECT_BINARY_DIR}/phone-library)
file(GLOB stubs CONFIGURE_DEPENDS packaging/stubs/*.tbd)

# What the phone's processors have in common with each other: how one source is compiled, and what is done to a linked slice.
function(add_mach_o_object architecture triple source)
    file(RELATIVE_PATH name ${PROJECT_SOURCE_DIR} ${source})
    set(object ${mach_o_folder}/${architecture}/objects/${name}.o)
    cmake_path(GET object PARENT_PATH folder)
    file(MAKE_DIRECTORY ${folder})
    set(compile ${mach_o_compiler} --target=${triple})
    if(architecture STREQUAL armv7)
        set(commands
            COMMAND ${compile} ${mach_o_flags} -MD -MF ${object}.d -MT ${object} -S ${source} -o ${object}.compiled.s
            COMMAND ${Python3_EXECUTABLE} ${packaging_tools}/armv7_pointers.py ${object}.compiled.s ${object}.s
            COMMAND ${compile} -c ${object}.s -o ${object})
    else()
        set(commands COMMAND ${compile} ${mach_o_flags} -MD -MF ${object}.d -c ${source} -o ${object})
    endif()
    add_custom_command(
        OUTPUT ${object}
        ${commands}
        DEPENDS ${source} ${packaging_tools}/armv7_pointers.py
        DEPFILE ${object}.d
        COMMENT "Compiling ${name} for ${architecture}"
        VERBATIM)
endfunction()

function(add_mach_o_slice architecture triple)
    cmake_parse_arguments(PARSE_ARGV 2 arg "" "" "LINK;FINISH")
    set(objects)
    foreach(source IN LISTS library_sources)
        add_mach_o_object(${architecture} ${triple} ${source})
        file(RELATIVE_PATH name ${PROJECT_SOURCE_DIR} ${source})
        list(APPEND objects ${mach_o_folder}/${architecture}/objects/${name}.o)
    endforeach()
    set(slice ${mach_o_folder}/${architecture}/Solvane.dylib)
    add_custom_command(
        OUTPUT ${slice}
        COMMAND ${arg_LINK} -dylib -install_name ${install_name} -no_function_starts -no_data_in_code_info -o ${slice} ${objects}
        COMMAND ${arg_FINISH} ${slice}
        COMMAND ${Python3_EXECUTABLE} ${packaging_tools}/sign.py org.solvane.Solvane ${slice}
        DEPENDS ${objects} ${stubs} ${armv7_stubs} ${packaging_tools}/armv7_finish.py ${packaging_tools}/sign.py
        COMMENT "Linking and signing Solvane.dylib for ${architecture}"
        VERBATIM)
endfunction()

# armv7: a linker of an earlier generation, the last one that knows the processor. What lies between two constants it copies
# from memory that it has not set: malloc fills that with zeros (the complement of 255), so that each build is the same.
set(armv7_stubs)
foreach(stub IN LISTS stubs)
    cmake_path(GET stub STEM stem)
    list(APPEND armv7_stubs ${mach_o_folder}/armv7/stubs/${stem}.yaml)
endforeach()
file(MAKE_DIRECTORY ${mach_o_folder}/armv7/stubs)
add_custom_command(
    OUTPUT ${armv7_stubs}
    COMMAND ${Python3_EXECUTABLE} ${packaging_tools}/armv7_stubs.py ${mach_o_folder}/armv7/stubs ${stubs}
    DEPENDS ${stubs} ${packaging_tools}/armv7_stubs.py
    VERBATIM)

add_mach_o_slice(armv7 armv7-apple-ios7.0
    LINK ${CMAKE_COMMAND} -E env MALLOC_PERTURB_=255 ld64.lld.darwinold-13 -arch armv7 -ios_version_min 7.0 -sdk_version 7.0 ${armv7_stubs}
    FINISH ${Python3_EXECUTABLE} ${packaging_tools}/armv7_finish.py)

# The others: today's linker. A library outside of the shop is not encrypted, so its code needs no pages of its own.
set(modern_link -dead_strip -no_adhoc_codesign -no_encryption ${stubs})
add_mach_o_slice(arm64 arm64-apple-ios7.0
    LINK ld64.lld-19 -arch arm64 -platform_version ios 7.0 7.0 ${modern_link}
    FINISH llvm-strip-19 -x)
add_mach_o_slice(x86_64 x86_64-apple-ios7.0-simulator
    LINK ld64.lld-19 -arch x86_64 -platform_version ios-simulator 7.0 7.0 ${modern_link}
    FINISH llvm-strip-19 -x)

set(phone_slices ${mach_o_folder}/armv7/Solvane.dylib ${mach_o_folder}/arm64/Solvane.dylib)
set(phone_library ${mach_o_folder}/Solvane.dylib)
add_custom_command(
    OUTPUT ${phone_library}
    COMMAND llvm-lipo-19 -create ${phone_slices} -output ${phone_library}
    DEPENDS ${phone_slices}
    COMMENT "Joining Solvane.dylib for the phone"
    VERBATIM)

add_custom_target(phone DEPENDS ${phone_library} ${mach_o_folder}/x86_64/Solvane.dylib)
