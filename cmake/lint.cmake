# `cmake --build BUILD --target lint` runs clang-tidy over every source of the library and the simulator that was compiled anew
# since the last time.
set(lint_stamps)
get_property(targets DIRECTORY . PROPERTY BUILDSYSTEM_TARGETS)
foreach(target IN LISTS targets)
    get_target_property(sources ${target} SOURCES)
    list(FILTER sources INCLUDE REGEX "\\.cpp$")
    foreach(source IN LISTS sources)
        cmake_path(ABSOLUTE_PATH source BASE_DIRECTORY ${PROJECT_SOURCE_DIR} NORMALIZE)
        cmake_path(RELATIVE_PATH source BASE_DIRECTORY ${PROJECT_SOURCE_DIR} OUTPUT_VARIABLE name)
        set(stamp ${PROJECT_BINARY_DIR}/lint/${name}.txt)
        cmake_path(GET stamp PARENT_PATH stamp_folder)
        file(MAKE_DIRECTORY ${stamp_folder})
        # The object file is as new as every header that the source includes.
        add_custom_command(
            OUTPUT ${stamp}
            COMMAND sh -c "clang-tidy-19 --quiet -p '${PROJECT_BINARY_DIR}' '${source}' >'${stamp}.found' 2>&1 \
                && mv '${stamp}.found' '${stamp}' || { cat '${stamp}.found'; exit 1; }"
            DEPENDS ${PROJECT_SOURCE_DIR}/.clang-tidy ${PROJECT_BINARY_DIR}/CMakeFiles/${target}.dir/${name}.o
            COMMENT "Linting ${name}"
            VERBATIM)
        list(APPEND lint_stamps ${stamp})
    endforeach()
endforeach()

add_custom_target(lint DEPENDS ${lint_stamps})
