# cpack -G DEB. scripts/package calls it with what has to be built and set before.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME ${package_name})
set(CPACK_PACKAGE_VENDOR Tovask)
set(CPACK_PACKAGE_CONTACT "Tovask service department <support@tovask.example>")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_INSTALL_CMAKE_PROJECTS
    ${CMAKE_BINARY_DIR} ${PROJECT_NAME} program /
    ${CMAKE_BINARY_DIR} ${PROJECT_NAME} documents /)
# The folders of the package are root's to write, whatever the builder's umask.
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
# cpack would build every test before it packs.
set(CMAKE_SKIP_INSTALL_ALL_DEPENDENCY ON CACHE INTERNAL "")
set(CPACK_CMAKE_BUILD_TARGET preinstall)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION non-free/admin)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
# xz would take ten times as long, most of it for the debug information.
set(CPACK_DEBIAN_COMPRESSION_TYPE gzip)
# Its first line is the project's description.
string(CONCAT CPACK_DEBIAN_PACKAGE_DESCRIPTION
    "Started by the appliance's main application when that has crashed: saves a\n"
    "crash dump package to internal storage or a USB key, tells the operator what\n"
    "happened, keeps the hardware watchdog fed, and ends in a restart or a safe\n"
    "shutdown.\n"
    ".\n"
    "It runs as root and restarts the machine. It is of no use on any other\n"
    "machine than the appliance.")

# Libraries are found out from the program; the platform plugins (linuxfb, xcb, offscreen)
# come in the package of Qt's GUI library. Fonts are loaded by name, which no tool sees.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS fonts-dejavu-core)
# Debug information for the crash reporter's own crashes, in a package of its own: the
# appliance has no use for it, a developer with a core image has.
set(CPACK_DEBIAN_DEBUGINFO_PACKAGE ON)
set(CPACK_BUILD_SOURCE_DIRS ${CMAKE_SOURCE_DIR} ${CMAKE_BINARY_DIR})

set(CPACK_OUTPUT_CONFIG_FILE ${CMAKE_BINARY_DIR}/CPackConfig.cmake)
include(CPack)
