# The Debian package. scripts/package makes it: cpack, from the preset "package".
set(ANADROME_PACKAGER "The Anadrome authors <packages@anadrome.example>" CACHE STRING
    "Who answers for the package: NAME <ADDRESS>")

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME anadrome)
set(CPACK_PACKAGE_CONTACT ${ANADROME_PACKAGER})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "make new movies that play a clip backward")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
    "Anadrome takes one clip and makes a new movie that plays backward, picture
and sound, alone or joined to the clip, each part at a speed of its own.
Everything happens on this machine, and the memory that it needs doesn't grow
with the length of the clip.
.
The package holds a window, anadrome, and a command line, anadrome-cli.")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION video)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_STRIP_FILES ON)
# The configuration lies outside of the prefix.
set(CPACK_SET_DESTDIR ON)
set(CPACK_INSTALL_PREFIX /usr)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_DEBIAN_PACKAGE_CONTROL_EXTRA ${CMAKE_CURRENT_LIST_DIR}/debian/conffiles)
if(TARGET anadrome)
    # What the window loads when it runs, and no program is linked with.
    set(window_packages qml6-module-qtqml qml6-module-qtqml-workerscript qml6-module-qtquick qml6-module-qtquick-window
        qml6-module-qtquick-templates qml6-module-qtquick-dialogs
        qml6-module-qtquick-controls qml6-module-qtquick-layouts qml6-module-qt-labs-folderlistmodel
        qml6-module-qtmultimedia)
    list(JOIN window_packages ", " CPACK_DEBIAN_PACKAGE_DEPENDS)
    # Sound, the desktop's own windows and file dialog, and the tools that hand things to other programs.
    set(CPACK_DEBIAN_PACKAGE_RECOMMENDS
        "pipewire-pulse | pulseaudio, qt6-wayland, qt6-gtk-platformtheme, xdg-desktop-portal, xdg-utils")
endif()

# Debian's own place for it, where the programs look; another prefix is somebody else's arrangement.
if(CMAKE_INSTALL_PREFIX STREQUAL "/usr")
    install(FILES deployment.conf DESTINATION /etc/anadrome)

    file(READ ${PROJECT_SOURCE_DIR}/LICENSE LICENCE_TEXT)
    string(REGEX REPLACE "^MIT License\n\n[^\n]*\n\n" "" LICENCE_TEXT "${LICENCE_TEXT}")
    string(REGEX REPLACE "\n$" "" LICENCE_TEXT "${LICENCE_TEXT}")
    string(REPLACE "\n\n" "\n.\n" LICENCE_TEXT "${LICENCE_TEXT}")
    string(REPLACE "\n" "\n " LICENCE_TEXT " ${LICENCE_TEXT}")
    configure_file(debian/copyright.in copyright @ONLY)
    configure_file(debian/changelog.in changelog @ONLY)
    set(changelog ${CMAKE_CURRENT_BINARY_DIR}/changelog.gz)
    anadrome_compressed(${changelog} ${CMAKE_CURRENT_BINARY_DIR}/changelog)
    list(APPEND documents ${changelog})
    install(FILES ${CMAKE_CURRENT_BINARY_DIR}/copyright ${changelog} DESTINATION ${CMAKE_INSTALL_DOCDIR})
endif()

include(CPack)
