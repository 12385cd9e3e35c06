# The library that ships. It is linked against nothing of the platform: like on the phone, the loader finds its symbols.
include_guard()

file(GLOB library_sources CONFIGURE_DEPENDS core/*.cpp lockscreen/*.cpp text/*.cpp calendar/*.cpp appstrip/*.cpp)

add_library(Solvane MODULE ${library_sources})
target_link_libraries(Solvane PRIVATE platform)
set_target_properties(Solvane PROPERTIES PREFIX "" SUFFIX ".dylib")

# What its list of libraries has beside those that every phone has loaded: the loader brings them where they are, and does
# without those that are missing. On the desk they are found from the place that the library has in the phone's tree.
file(GLOB library_weak_stubs CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/packaging/stubs/weak/*.tbd)
foreach(stub IN LISTS library_weak_stubs)
    file(STRINGS ${stub} install_name REGEX "^install-name:")
    string(REGEX REPLACE "^install-name: *" "" install_name ${install_name})
    set_property(TARGET Solvane APPEND_STRING PROPERTY LINK_FLAGS " -Wl,--auxiliary,'$ORIGIN/../../..${install_name}'")
endforeach()
