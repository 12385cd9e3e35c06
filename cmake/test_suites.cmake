# add_test_suites(PROGRAM [PROPERTY VALUE...]) makes each suite of a GoogleTest program one test of CTest's, with these properties:
# the program runs each case of a suite in a process of its own. The suites are asked of the program when it has been linked.
include_guard()

set(list_suites ${CMAKE_CURRENT_LIST_DIR}/list_suites.cmake)

function(add_test_suites program)
    set(listed ${CMAKE_CURRENT_BINARY_DIR}/${program}_suites.cmake)
    add_custom_command(TARGET ${program} POST_BUILD
        COMMAND ${CMAKE_COMMAND} "-DPROGRAM=$<TARGET_PROPERTY:${program},CROSSCOMPILING_EMULATOR>;$<TARGET_FILE:${program}>"
            "-DPROPERTIES=${ARGN}" -DLISTED=${listed} -P ${list_suites}
        BYPRODUCTS ${listed} VERBATIM)
    set(included ${CMAKE_CURRENT_BINARY_DIR}/${program}_tests.cmake)
    file(WRITE ${included}
        "if(EXISTS \"${listed}\")\n  include(\"${listed}\")\nelse()\n  add_test(${program}_NOT_BUILT ${program}_NOT_BUILT)\nendif()\n")
    set_property(DIRECTORY APPEND PROPERTY TEST_INCLUDE_FILES ${included})
endfunction()
