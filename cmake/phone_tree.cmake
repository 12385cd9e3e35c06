# `cmake --install BUILD --prefix DIR` lays out DIR as the phone's file tree.
set(CMAKE_INSTALL_MESSAGE LAZY)
install(TARGETS Solvane LIBRARY DESTINATION Library/MobileSubstrate/DynamicLibraries)
install(FILES packaging/Solvane.plist DESTINATION Library/MobileSubstrate/DynamicLibraries)
install(DIRECTORY assets/Solvane/ DESTINATION "Library/Application Support/Solvane" FILES_MATCHING PATTERN "*.png")
install(TARGETS NowPlayingArtLockScreen
    LIBRARY DESTINATION System/Library/SpringBoardPlugins/NowPlayingArtLockScreen.lockbundle)
install(DIRECTORY assets/Applications/ DESTINATION Applications PATTERN "generic" EXCLUDE)
install(FILES assets/Applications/generic/Icon.png
    DESTINATION System/Library/CoreServices/SpringBoard.app RENAME GenericIcon.png)
install(FILES assets/Applications/generic/Icon@2x.png
    DESTINATION System/Library/CoreServices/SpringBoard.app RENAME GenericIcon@2x.png)
install(FILES assets/wallpaper/wallpaper.png
    DESTINATION System/Library/CoreServices/SpringBoard.app RENAME Wallpaper.png)
install(DIRECTORY DESTINATION User/Library/Preferences)
install(DIRECTORY DESTINATION User/Library/Calendar)
