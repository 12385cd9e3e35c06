# precompile_headers(TARGET HEADER...) compiles the headers that most of the target's sources include once for all of them. The
# sources name what they include all the same: the builds with sanitizers and for the phone's processors go without.
include_guard()

option(SOLVANE_PRECOMPILE "Precompile headers" ON)

function(precompile_headers target)
    if(SOLVANE_PRECOMPILE)
        target_precompile_headers(${target} PRIVATE ${ARGN})
        # For a compiler cache.
        target_compile_options(${target} PRIVATE $<$<COMPILE_LANGUAGE:CXX>:-fpch-preprocess>)
    endif()
endfunction()
