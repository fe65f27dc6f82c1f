# Where everything goes: the program with its library, add-ons and help page in a folder of its own
# below lib, found by the others through links and entries that the desktop knows.
include(GNUInstallDirs)
set(place ${CMAKE_INSTALL_LIBDIR}/norvane)

# Each finds the library from where it lies, wherever the whole is moved.
set_target_properties(norvane PROPERTIES INSTALL_RPATH "$ORIGIN")
install(TARGETS norvane RUNTIME DESTINATION ${place} COMPONENT program)
install(TARGETS norvane-kits-public LIBRARY DESTINATION ${place}
    COMPONENT program NAMELINK_COMPONENT development)
get_property(add_ons GLOBAL PROPERTY norvane_add_ons)
foreach(add_on IN LISTS add_ons)
    set_target_properties(${add_on} PROPERTIES INSTALL_RPATH "$ORIGIN/../..")
    install(TARGETS ${add_on} LIBRARY DESTINATION ${place}/add-ons/Tracker COMPONENT program)
endforeach()
install(FILES data/Help.html DESTINATION ${place} COMPONENT program)
install(DIRECTORY docs/pictures/ DESTINATION ${place}/pictures COMPONENT program
    FILES_MATCHING PATTERN "*.png")

file(RELATIVE_PATH program_from_bin
    /${CMAKE_INSTALL_BINDIR} /${place}/norvane)
install(CODE "
    set(bin \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_BINDIR}\")
    file(MAKE_DIRECTORY \"\${bin}\")
    file(CREATE_LINK ${program_from_bin} \"\${bin}/norvane\" SYMBOLIC)
    message(STATUS \"Installing: \${bin}/norvane\")" COMPONENT program)

# The desktop
install(FILES data/norvane.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications
    COMPONENT program)
install(FILES data/org.norvane.Norvane.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo
    COMPONENT program)
set(icons ${CMAKE_INSTALL_DATADIR}/icons/hicolor)
install(FILES data/norvane.svg DESTINATION ${icons}/scalable/apps COMPONENT program)
install(FILES data/norvane-symbolic.svg DESTINATION ${icons}/symbolic/apps COMPONENT program)
foreach(size 16 22 24 32 48 64 128 256 512)
    install(FILES data/icons/norvane-${size}.png DESTINATION ${icons}/${size}x${size}/apps
        RENAME norvane.png COMPONENT program)
endforeach()

# A manual page, packed as systems want it.
find_program(GZIP gzip REQUIRED)
set(page ${CMAKE_CURRENT_SOURCE_DIR}/data/norvane.1)
set(packed_page ${CMAKE_BINARY_DIR}/norvane.1.gz)
add_custom_command(OUTPUT ${packed_page} DEPENDS ${page}
    COMMAND ${GZIP} -9nc ${page} > ${packed_page} VERBATIM)
add_custom_target(manual-page ALL DEPENDS ${packed_page})
install(FILES ${packed_page} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT program)

# What add-ons are built with
install(DIRECTORY kits/include/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/norvane
    COMPONENT development FILES_MATCHING PATTERN "*.h")
include(CMakePackageConfigHelpers)
configure_package_config_file(cmake/NorvaneKitsConfig.cmake.in
    ${CMAKE_BINARY_DIR}/NorvaneKitsConfig.cmake
    INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/NorvaneKits
    PATH_VARS CMAKE_INSTALL_INCLUDEDIR place)
write_basic_package_version_file(${CMAKE_BINARY_DIR}/NorvaneKitsConfigVersion.cmake
    COMPATIBILITY ExactVersion)
install(FILES ${CMAKE_BINARY_DIR}/NorvaneKitsConfig.cmake cmake/add-on.map
        ${CMAKE_BINARY_DIR}/NorvaneKitsConfigVersion.cmake
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/NorvaneKits COMPONENT development)
