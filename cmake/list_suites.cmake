# Writes the file LISTED, for CTest: a test for each suite of the GoogleTest program PROGRAM (with what runs it before it, as a
# list), with these PROPERTIES.
cmake_minimum_required(VERSION 3.25)

list(REMOVE_ITEM PROGRAM "")
execute_process(COMMAND ${PROGRAM} --gtest_list_tests OUTPUT_VARIABLE listing RESULT_VARIABLE status)
if(NOT status EQUAL 0)
    message(FATAL_ERROR "${PROGRAM} --gtest_list_tests: ${status}")
endif()
string(REGEX MATCHALL "\n[^ \n]+\\." suites "\n${listing}")
list(TRANSFORM PROGRAM REPLACE "(.+)" "[==[\\1]==]" OUTPUT_VARIABLE words)
list(JOIN words " " command)
list(JOIN PROPERTIES " " properties)
set(tests "")
foreach(suite IN LISTS suites)
    string(REGEX REPLACE "^\n|\\.$" "" suite "${suite}")
    string(APPEND tests
        "add_test([==[${suite}]==] ${command} [==[--gtest_filter=${suite}.*]==])\n"
        "set_tests_properties([==[${suite}]==] PROPERTIES ${properties})\n")
endforeach()
file(WRITE ${LISTED} "${tests}")
