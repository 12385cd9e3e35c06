# `cmake --build BUILD --target phone_package` makes the package that a phone installs: what
# `cmake --install BUILD --component package --prefix DIR` lays out in DIR.
include_guard()
include(${CMAKE_CURRENT_LIST_DIR}/mach_o.cmake)
include(${CMAKE_CURRENT_LIST_DIR}/phone_library.cmake)
include(${CMAKE_CURRENT_LIST_DIR}/phone_tree.cmake)

set(in_package COMPONENT package EXCLUDE_FROM_ALL)
install(PROGRAMS ${phone_library} DESTINATION ${library_folder} ${in_package})
install_beside_the_library(${in_package})
install(PROGRAMS ${phone_settings} DESTINATION ${bundle_folder} ${in_package})
install_beside_the_bundle(${in_package})

set(package_control ${PROJECT_BINARY_DIR}/package/control)
configure_file(packaging/control.in ${package_control} @ONLY)
set(phone_package ${PROJECT_BINARY_DIR}/package/Solvane_${PROJECT_VERSION}_iphoneos-arm.deb)
file(GLOB package_pictures CONFIGURE_DEPENDS assets/Solvane/*.png assets/Settings/*.png)

add_custom_command(
    OUTPUT ${phone_package}
    COMMAND ${packaging_tools}/build_package ${PROJECT_BINARY_DIR} ${package_control} ${phone_package}
    DEPENDS ${phone_library} ${phone_settings} ${package_control} ${package_pictures} ${library_filter} settings/entry.plist
        settings/bundle/Solvane.plist ${bundle_description} ${packaging_tools}/build_package
    COMMENT "Packing Solvane_${PROJECT_VERSION}_iphoneos-arm.deb"
    VERBATIM)
add_custom_target(phone_package DEPENDS ${phone_package})
