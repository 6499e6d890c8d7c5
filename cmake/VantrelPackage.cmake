# The Debian package, built by ./dev package with CPack: build/vantrel_<version>_<arch>.deb.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME vantrel)
set(CPACK_PACKAGE_VENDOR Glessik)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "timecode calculator for film and video post-production")
set(CPACK_PACKAGE_DESCRIPTION
    "Vantrel is a calculator for editors and assistants. Type arithmetic over
timecodes, frame counts and plain numbers, such as the sum of two shot
durations or a running time times a number of reels, and read every result in
two readings side by side: as real running time and as a count of frames. It
reads timecodes as EDLs and editing systems write them, counts at 13 frame
rates from 23.976 to 60 with and without drop frame, and turns results into
disk space, transfer time and film length.
.
The package holds the calculator window (vantrel) and the command-line
calculator vantrel-calc for scripts and batch work.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "Glessik <vantrel@glessik.com>")
set(CPACK_DEBIAN_PACKAGE_SECTION video)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE "https://glessik.com/vantrel/")
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# Qt loads its platform plugin (xcb) at run time, not through the linker, so dpkg-shlibdeps cannot
# see it; the same goes for the SVG image plug-in, which draws the help page's drawings and the
# pictures at sizes not drawn while building.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "qt6-qpa-plugins, libqt6svg6")
include(CPack)
