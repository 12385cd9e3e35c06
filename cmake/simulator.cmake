# The phone on a desk: a SpringBoard process that libraries are injected into, and the tools that reach it from outside.
include_guard()
include(${CMAKE_CURRENT_LIST_DIR}/phone_architecture.cmake)
include(${CMAKE_CURRENT_LIST_DIR}/precompiled_headers.cmake)

file(GLOB simulator_sources CONFIGURE_DEPENDS
    simulator/files/*.cpp simulator/runtime/*.cpp simulator/graphics/*.cpp simulator/foundation/*.cpp
    simulator/loader/*.cpp simulator/loader/macho/*.cpp
    simulator/quartzcore/*.cpp simulator/services/*.cpp simulator/uikit/*.cpp simulator/springboard/*.cpp)
file(GLOB console_sources CONFIGURE_DEPENDS simulator/console/*.cpp)

# The Mach-O reader has a folder for each processor, and one for what those of 64 bits share.
set(processor_folders simulator/loader/macho/${phone_architecture})
if(CMAKE_SIZEOF_VOID_P EQUAL 8)
    list(APPEND processor_folders simulator/loader/macho/64_bit)
endif()
list(TRANSFORM processor_folders APPEND /*.cpp OUTPUT_VARIABLE processor_patterns)
file(GLOB processor_sources CONFIGURE_DEPENDS ${processor_patterns} simulator/loader/macho/${phone_architecture}/*.S)

# An object library, so that every entry point of the platform is in each process that links it.
add_library(simulator OBJECT ${simulator_sources} ${processor_sources})
# Classes are looked up by name, so the linker sees no use of Foundation. The loader looks for every symbol of every library in all
# of them in turn: those that most symbols are in come first.
target_link_libraries(simulator PUBLIC platform -Wl,--no-as-needed -l:libc.so.6 stdc++ gnustep-base objc -Wl,--as-needed
    PkgConfig::icu PkgConfig::pango PkgConfig::libdeflate PkgConfig::libical ${CMAKE_DL_LIBS})
set(common_headers <algorithm> <filesystem> <functional> <map> <optional> <stdexcept> <string> <vector>)
precompile_headers(simulator ${common_headers})
# Knows times beyond 2038, where words have 32 bits, too.
set_source_files_properties(simulator/foundation/c_library_zone.cpp PROPERTIES
    COMPILE_DEFINITIONS "_FILE_OFFSET_BITS=64;_TIME_BITS=64" SKIP_PRECOMPILE_HEADERS ON)
# Walks every pixel of the screen.
set_source_files_properties(simulator/graphics/blur.cpp simulator/graphics/saturation.cpp PROPERTIES
    COMPILE_OPTIONS -O3 SKIP_PRECOMPILE_HEADERS ON)

add_executable(springboard ${console_sources})
target_link_libraries(springboard PRIVATE simulator nlohmann_json::nlohmann_json)
set_target_properties(springboard PROPERTIES ENABLE_EXPORTS ON BUILD_RPATH "$ORIGIN")
precompile_headers(springboard ${common_headers} <iostream> <nlohmann/json.hpp>)
target_compile_definitions(springboard PRIVATE SOLVANE_VERSION="${PROJECT_VERSION}")
foreach(script IN ITEMS scene window tour)
    configure_file(simulator/console/scripts/${script}.txt share/${script}.txt COPYONLY)
endforeach()

# Loaded for a window only.
file(GLOB display_sources CONFIGURE_DEPENDS simulator/display/*.cpp)
add_library(display MODULE ${display_sources})
target_link_libraries(display PRIVATE platform PkgConfig::sdl)
set_target_properties(display PROPERTIES PREFIX "" LIBRARY_OUTPUT_DIRECTORY $<TARGET_FILE_DIR:springboard>)
add_dependencies(springboard display)

add_executable(notifypost tools/notifypost/main.cpp)
target_link_libraries(notifypost PRIVATE simulator)

# The Settings, an application beside SpringBoard.
file(GLOB preferences_sources CONFIGURE_DEPENDS simulator/preferences/*.cpp)
add_library(preferences OBJECT ${preferences_sources})
target_link_libraries(preferences PUBLIC platform PkgConfig::pango)
precompile_headers(preferences ${common_headers})

add_executable(solvane-settings tools/solvane-settings/main.cpp tools/solvane-settings/options.cpp)
target_link_libraries(solvane-settings PRIVATE simulator preferences)
set_target_properties(solvane-settings PROPERTIES ENABLE_EXPORTS ON)

# A program for another processor is started by a script of its name, which has the emulator run it.
if(CMAKE_CROSSCOMPILING_EMULATOR)
    list(JOIN CMAKE_CROSSCOMPILING_EMULATOR "' '" launcher_emulator)
    foreach(program IN ITEMS springboard notifypost solvane-settings)
        set(launcher_program ${PROJECT_BINARY_DIR}/emulated/${program})
        set_target_properties(${program} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/emulated)
        configure_file(cmake/launcher.in ${program} @ONLY)
    endforeach()
endif()

# What the phone's tree has for those who ask for it.
add_library(NowPlayingArtLockScreen MODULE simulator/springboard/plugins/NowPlayingArtLockScreen.cpp)
add_library(Weather MODULE simulator/services/plugins/Weather.cpp)
foreach(plugin IN ITEMS NowPlayingArtLockScreen Weather)
    target_link_libraries(${plugin} PRIVATE platform)
    set_target_properties(${plugin} PROPERTIES PREFIX "" SUFFIX "")
    add_dependencies(springboard ${plugin})
endforeach()
