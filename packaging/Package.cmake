# What CPack makes a Debian package of; packaging/build-deb runs it. docs/packaging.md tells why a dependency is there.

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME walrim)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT "Walrim's developers <walrim@walrim.invalid>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "data loader for handheld Garmin GPS receivers")
set(CPACK_PACKAGE_DESCRIPTION
    "Walrim downloads waypoints, routes and track logs from a handheld Garmin GPS
receiver on a serial line, shows them in tables, writes them to text files and
uploads them again. It knows the GPS 12, 12XL, 12CX, 48, II+, III, III+, eMap
and eTrex. Its window is Japanese.
.
The package holds the window (walrim), a program for the terminal and for
scripts (walrim-cli), and a receiver made of software on a pseudo-terminal
for trying things out (walrim-receiver).")

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)

# The libraries are found in the programs; the others are opened at run time, or are data.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS "libqt6svg6, qt6-translations-l10n, fonts-noto-cjk | fonts-japanese-gothic")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS ca-certificates)
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "qt6-wayland, bash-completion")

set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE
                                                WORLD_READ WORLD_EXECUTE)
set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/packaging/Finish.cmake)
include(CPack)
