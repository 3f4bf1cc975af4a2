# SPDX-License-Identifier: MIT
# The Debian package, which Tools/package.sh makes with CPack of the release build: what was tested is what is packed.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME pixelweft)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SECTION video)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "The PixelWeft authors <maintainers@pixelweft.invalid>")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION "LED pixel mapper that sends a picture over Art-Net
PixelWeft drives LED fixtures from a picture. Fixtures are laid out as
rectangles on a canvas, each patched to an Art-Net universe and channel; the
program samples the picture under every pixel of every fixture and sends the
colours as DMX over Art-Net.

It comes with pixelweft-patch, which writes and checks the patch of a mapping,
and pixelweft-fixtures, which converts fixture definitions of other libraries.")
# What is linked, CPack asks dpkg-shlibdeps for. Pictures in formats beside the usual ones are read by plugins, and the
# words of Qt's own dialogs are in a package of Qt; ours are in the program.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS qt${PIXELWEFT_QT}-image-formats-plugins)
if(PIXELWEFT_QT EQUAL 5)
    set(translations qttranslations5-l10n)
    set(CPACK_DEBIAN_PACKAGE_SUGGESTS qtwayland5)
else()
    set(translations qt${PIXELWEFT_QT}-translations-l10n)
    set(CPACK_DEBIAN_PACKAGE_SUGGESTS qt${PIXELWEFT_QT}-wayland)
endif()
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "hicolor-icon-theme, ${translations}")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

# dpkg keeps what the administrator wrote into mode.xml.
file(WRITE ${CMAKE_BINARY_DIR}/install/conffiles "/etc/pixelweft/mode.xml\n")
set(CPACK_DEBIAN_PACKAGE_CONTROL_EXTRA ${CMAKE_BINARY_DIR}/install/conffiles)
# The files that only a package has, and the form in which it has its pages.
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_SOURCE_DIR}/cmake/PackageFiles.cmake)
set(CPACK_PROJECT_SOURCE_DIR ${CMAKE_SOURCE_DIR})
include(CPack)
