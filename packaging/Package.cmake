# The Debian package: both programs, the desktop entry, the MIME type of
# universe map files and the icon, under /usr. Built from a configured build
# folder with `cpack -G DEB` (see the README).
#
# dpkg-shlibdeps (dpkg-dev) works out the Qt 6 and C++ runtime packages from
# the programs' libraries. The font is only recommended: without Liberation
# Sans the map's labels fall back to another font.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME veltro)
set(CPACK_PACKAGE_VENDOR "Veltro Marches")
set(CPACK_PACKAGE_CONTACT "Veltro Marches developers")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Map and territory viewer for the game Stars!")
string(CONCAT CPACK_PACKAGE_DESCRIPTION
       "Reads a Stars! game's universe map file and the planet reports each player\n"
       "exports, merges them into one planet table, works out every planet's strength\n"
       "of influence and the territory each race holds, and draws the universe with\n"
       "the races' borders and overlays. Holds the desktop program veltro and the\n"
       "command-line front end veltro-cli, which exports the merged data as JSON or\n"
       "CSV and renders the map to PNG or BMP.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION games)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS fonts-liberation)
include(CPack)
