# Packages for Debian: `cpack -G DEB` in a build folder of the preset `release`.
set(CPACK_PACKAGE_NAME norvane)
set(CPACK_PACKAGE_VENDOR "Norvane")
set(CPACK_PACKAGE_CONTACT "Norvane maintainers <maintainers@norvane.invalid>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "keyboard-driven file manager with one to ten panes")
set(CPACK_PACKAGE_DESCRIPTION
"One window with one to ten panes side by side, and a key for everything:
copying, moving, the Trash, renaming, viewing, searching whole volumes,
FTP servers and add-ons. Copies ask before they replace anything, and
moves delete nothing but what was copied whole.")
set(CPACK_GENERATOR DEB)
set(CPACK_STRIP_FILES ON)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_COMPONENTS_ALL program development)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

set(CPACK_DEBIAN_PROGRAM_PACKAGE_NAME norvane)
set(CPACK_DEBIAN_PROGRAM_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PROGRAM_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_BINARY_DIR}/public)
set(CPACK_DEBIAN_PROGRAM_PACKAGE_DEPENDS "shared-mime-info, libqt6svg6")
set(CPACK_DEBIAN_PROGRAM_PACKAGE_RECOMMENDS
    "qt6-image-formats-plugins, qt6-wayland, adwaita-icon-theme | breeze-icon-theme, fonts-dejavu-core")
set(CPACK_DEBIAN_PROGRAM_PACKAGE_SUGGESTS "x-terminal-emulator, www-browser")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME norvane-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION devel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "norvane (= ${PROJECT_VERSION}-1), g++, cmake")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION
"What add-ons of Norvane are built with.
Headers and a CMake package for the library that Norvane's add-ons stand on.")
set(CPACK_COMPONENT_PROGRAM_DESCRIPTION "${CPACK_PACKAGE_DESCRIPTION}")

# What every package of the system has.
set(doc ${CMAKE_INSTALL_DATADIR}/doc)
set(packed_changes ${CMAKE_BINARY_DIR}/changelog.Debian.gz)
add_custom_command(OUTPUT ${packed_changes} DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/data/changelog
    COMMAND ${GZIP} -9nc ${CMAKE_CURRENT_SOURCE_DIR}/data/changelog > ${packed_changes} VERBATIM)
add_custom_target(packed-changes ALL DEPENDS ${packed_changes})
foreach(component program development)
    set(name norvane)
    if(component STREQUAL development)
        set(name norvane-dev)
    endif()
    install(FILES ${packed_changes} DESTINATION ${doc}/${name} COMPONENT ${component})
    install(FILES data/copyright DESTINATION ${doc}/${name} COMPONENT ${component})
endforeach()
include(CPack)
