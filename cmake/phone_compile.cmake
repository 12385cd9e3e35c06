# `cmake --build BUILD --target phone` compiles the library's sources for the phone's two processors.
set(phone_compiler clang++-19)
set(phone_architectures arm64 armv7)
set(phone_flags -ffreestanding -nostdlibinc -nostdinc++ -isystem /usr/lib/llvm-19/include/c++/v1 -std=c++20 -O2 -Wall -Wextra
    -Werror -fvisibility=hidden -fvisibility-inlines-hidden -fno-delete-null-pointer-checks -I${PROJECT_SOURCE_DIR})

set(phone_objects)
foreach(architecture IN LISTS phone_architectures)
    foreach(source IN LISTS library_sources)
        file(RELATIVE_PATH name ${PROJECT_SOURCE_DIR} ${source})
        set(object ${PROJECT_BINARY_DIR}/phone-objects/${architecture}/${name}.o)
        cmake_path(GET object PARENT_PATH folder)
        file(MAKE_DIRECTORY ${folder})
        add_custom_command(
            OUTPUT ${object}
            COMMAND ${phone_compiler} --target=${architecture}-apple-ios7.0 ${phone_flags} -MD -MF ${object}.d -c ${source} -o ${object}
            DEPENDS ${source}
            DEPFILE ${object}.d
            COMMENT "Compiling ${name} for ${architecture}"
            VERBATIM)
        list(APPEND phone_objects ${object})
    endforeach()
endforeach()

add_custom_target(phone DEPENDS ${phone_objects})
