# The library that ships. It is linked against nothing of the platform: like on the phone, the loader finds its symbols.
include_guard()

file(GLOB library_sources CONFIGURE_DEPENDS core/*.cpp lockscreen/*.cpp text/*.cpp calendar/*.cpp appstrip/*.cpp)

add_library(Solvane MODULE ${library_sources})
target_link_libraries(Solvane PRIVATE platform)
set_target_properties(Solvane PROPERTIES PREFIX "" SUFFIX ".dylib")
