# `cmake --install BUILD --prefix DIR` lays out DIR as the simulated phone's file tree.
include_guard()
include(${CMAKE_CURRENT_LIST_DIR}/library.cmake)
include(${CMAKE_CURRENT_LIST_DIR}/simulator.cmake)
find_package(Python3 REQUIRED COMPONENTS Interpreter)

set(CMAKE_INSTALL_MESSAGE LAZY)
set(CMAKE_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(library_folder Library/MobileSubstrate/DynamicLibraries)

# The loader's filter, in the binary form in which filters ship.
set(library_filter ${PROJECT_BINARY_DIR}/filter.plist)
set(binary_property_list ${PROJECT_SOURCE_DIR}/packaging/tools/binary_property_list.py)
add_custom_command(
    OUTPUT ${library_filter}
    COMMAND ${Python3_EXECUTABLE} ${binary_property_list} ${PROJECT_SOURCE_DIR}/packaging/filter.plist ${library_filter}
    DEPENDS packaging/filter.plist ${binary_property_list}
    VERBATIM)
add_custom_target(library_filter DEPENDS ${library_filter})
add_dependencies(Solvane library_filter)

# The library, what the loader asks for beside it, and its pictures.
install(TARGETS Solvane LIBRARY DESTINATION ${library_folder})
function(install_beside_the_library)
    install(FILES ${library_filter} DESTINATION ${library_folder} RENAME Solvane.plist ${ARGN})
    install(DIRECTORY assets/Solvane/ DESTINATION "Library/Application Support/Solvane" ${ARGN} FILES_MATCHING PATTERN "*.png")
endfunction()
install_beside_the_library()

# Its page in the Settings: what the preference loader asks for, and the bundle that it enters.
set(bundle_folder Library/PreferenceBundles/Solvane.bundle)
set(bundle_description ${PROJECT_BINARY_DIR}/settings-bundle/Info.plist)
configure_file(settings/bundle/Info.plist.in ${bundle_description} @ONLY)
install(TARGETS settings_bundle LIBRARY DESTINATION ${bundle_folder})
function(install_beside_the_bundle)
    install(FILES settings/entry.plist DESTINATION Library/PreferenceLoader/Preferences RENAME Solvane.plist ${ARGN})
    install(FILES ${bundle_description} settings/bundle/Solvane.plist DESTINATION ${bundle_folder} ${ARGN})
    install(DIRECTORY assets/Settings/ DESTINATION ${bundle_folder} ${ARGN} FILES_MATCHING PATTERN "*.png")
endfunction()
install_beside_the_bundle()

# The rest of the simulated phone.
install(TARGETS NowPlayingArtLockScreen
    LIBRARY DESTINATION System/Library/SpringBoardPlugins/NowPlayingArtLockScreen.lockbundle)
install(TARGETS Weather LIBRARY DESTINATION System/Library/PrivateFrameworks/Weather.framework)
install(DIRECTORY assets/Applications/ DESTINATION Applications PATTERN "generic" EXCLUDE)
install(FILES assets/Applications/generic/Icon.png
    DESTINATION System/Library/CoreServices/SpringBoard.app RENAME GenericIcon.png)
install(FILES assets/Applications/generic/Icon@2x.png
    DESTINATION System/Library/CoreServices/SpringBoard.app RENAME GenericIcon@2x.png)
install(FILES assets/wallpaper/wallpaper.png
    DESTINATION System/Library/CoreServices/SpringBoard.app RENAME Wallpaper.png)
install(DIRECTORY DESTINATION User/Library/Preferences)
install(DIRECTORY DESTINATION User/Library/Calendar)
