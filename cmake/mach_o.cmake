# add_mach_o_library(FILE ARCHITECTURE SOURCES SOURCE... STUBS STUB... WEAK_STUBS STUB... [FOLDER FOLDER] [IDENTIFIER NAME]) makes
# FILE, a signed Mach-O library: for one of the phone's processors, armv7 or arm64, or for that of the phone's simulator on a
# desk, x86_64. It is linked against text stubs of the phone's libraries; the libraries of the weak stubs may be missing on a
# phone, and so may symbols that the sources call weak. The folder is where it lies on the phone, the loader's unless it is given;
# the identifier, that of its signature.
include_guard()

find_package(Python3 REQUIRED COMPONENTS Interpreter)

set(mach_o_flags -ffreestanding -nostdlibinc -nostdinc++ -isystem /usr/lib/llvm-19/include/c++/v1 -std=c++20 -O2 -Wall -Wextra
    -Werror -fvisibility=hidden -fvisibility-inlines-hidden -fno-delete-null-pointer-checks -I${PROJECT_SOURCE_DIR})
set(mach_o_triple_armv7 armv7-apple-ios7.0)
set(mach_o_triple_arm64 arm64-apple-ios7.0)
set(mach_o_triple_x86_64 x86_64-apple-ios7.0-simulator)
set(mach_o_platform_arm64 ios)
set(mach_o_platform_x86_64 ios-simulator)
set(packaging_tools ${PROJECT_SOURCE_DIR}/packaging/tools)
# One for each of the phone's libraries that ours uses.
file(GLOB phone_stubs CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/packaging/stubs/*.tbd)

function(add_mach_o_object object architecture source)
    cmake_path(GET object PARENT_PATH folder)
    file(MAKE_DIRECTORY ${folder})
    file(RELATIVE_PATH name ${PROJECT_SOURCE_DIR} ${source})
    set(compile clang++-19 --target=${mach_o_triple_${architecture}})
    if(architecture STREQUAL armv7)
        set(commands
            COMMAND ${compile} ${mach_o_flags} -MD -MF ${object}.d -MT ${object} -S ${source} -o ${object}.compiled.s
            COMMAND ${Python3_EXECUTABLE} ${packaging_tools}/armv7_assembly.py ${object}.compiled.s ${object}.s
            COMMAND ${compile} -c ${object}.s -o ${object}
            COMMAND ${Python3_EXECUTABLE} ${packaging_tools}/armv7_addends.py ${object})
    else()
        set(commands COMMAND ${compile} ${mach_o_flags} -MD -MF ${object}.d -c ${source} -o ${object})
    endif()
    add_custom_command(
        OUTPUT ${object}
        ${commands}
        DEPENDS ${source} ${packaging_tools}/armv7_assembly.py ${packaging_tools}/armv7_addends.py
        DEPFILE ${object}.d
        COMMENT "Compiling ${name} for ${architecture}"
        VERBATIM)
endfunction()

function(add_mach_o_library file architecture)
    cmake_parse_arguments(PARSE_ARGV 2 arg "" "FOLDER;IDENTIFIER" "SOURCES;STUBS;WEAK_STUBS")
    set(objects)
    foreach(source IN LISTS arg_SOURCES)
        cmake_path(ABSOLUTE_PATH source)
        file(RELATIVE_PATH name ${PROJECT_SOURCE_DIR} ${source})
        set(object ${file}.parts/${name}.o)
        add_mach_o_object(${object} ${architecture} ${source})
        list(APPEND objects ${object})
    endforeach()

    if(architecture STREQUAL armv7)
        # A linker of an earlier generation, the last one that knows the processor. What lies between two constants it copies
        # from memory that it has not set: malloc fills that with zeros (the complement of 255), so that each build is the same.
        # Code for this processor has constants between its instructions; the library tells where, so that tools can tell.
        set(stubs)
        foreach(stub IN LISTS arg_STUBS arg_WEAK_STUBS)
            cmake_path(GET stub STEM stem)
            list(APPEND stubs ${file}.parts/${stem}.yaml)
        endforeach()
        add_custom_command(
            OUTPUT ${stubs}
            COMMAND ${Python3_EXECUTABLE} ${packaging_tools}/armv7_stubs.py ${file}.parts ${arg_STUBS} ${arg_WEAK_STUBS}
            DEPENDS ${arg_STUBS} ${arg_WEAK_STUBS} ${packaging_tools}/armv7_stubs.py
            VERBATIM)
        set(link ${CMAKE_COMMAND} -E env MALLOC_PERTURB_=255
            ld64.lld.darwinold-13 -arch armv7 -ios_version_min 7.0 -sdk_version 7.0)
        set(linked ${stubs})
        set(finish ${Python3_EXECUTABLE} ${packaging_tools}/armv7_finish.py ${file} ${objects} --weak ${arg_WEAK_STUBS})
    else()
        # A library outside the App Store is not encrypted, so its code needs no pages of its own.
        set(stubs ${arg_STUBS} ${arg_WEAK_STUBS})
        set(linked ${arg_STUBS})
        foreach(stub IN LISTS arg_WEAK_STUBS)
            list(APPEND linked -weak_library ${stub})
        endforeach()
        set(link ld64.lld-19 -arch ${architecture} -platform_version ${mach_o_platform_${architecture}} 7.0 7.0
            -dead_strip -no_data_in_code_info -no_adhoc_codesign -no_encryption)
        set(finish llvm-strip-19 -x ${file})
    endif()
    cmake_path(GET file FILENAME name)
    cmake_path(GET file STEM stem)
    if(NOT arg_FOLDER)
        set(arg_FOLDER /Library/MobileSubstrate/DynamicLibraries)
    endif()
    if(NOT arg_IDENTIFIER)
        set(arg_IDENTIFIER org.solvane.${stem})
    endif()
    add_custom_command(
        OUTPUT ${file}
        COMMAND ${Python3_EXECUTABLE} ${packaging_tools}/strict_link.py ${link} -dylib
            -install_name ${arg_FOLDER}/${name} -no_function_starts -o ${file} ${objects} ${linked}
        COMMAND ${finish}
        COMMAND ${Python3_EXECUTABLE} ${packaging_tools}/sign.py ${arg_IDENTIFIER} ${file}
        DEPENDS ${objects} ${stubs} ${arg_WEAK_STUBS} ${packaging_tools}/strict_link.py ${packaging_tools}/armv7_finish.py
            ${packaging_tools}/sign.py
        COMMENT "Linking and signing ${name} for ${architecture}"
        VERBATIM)
endfunction()
