# The library that ships, and the code of its page in the Settings. They are linked against nothing of the platform: like on the
# phone, the loader finds their symbols.
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

file(GLOB settings_sources CONFIGURE_DEPENDS settings/*.cpp)

add_library(settings_bundle MODULE ${settings_sources})
target_link_libraries(settings_bundle PRIVATE platform)
set_target_properties(settings_bundle PROPERTIES PREFIX "" OUTPUT_NAME Solvane SUFFIX ""
    LIBRARY_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/settings-bundle)
