# SPDX-License-Identifier: MIT
# What is installed, and where: the programs, and what the desktop and `man` know them by. Nothing else of the build is.
include(GNUInstallDirs)

# The program looks for mode.xml beside itself. Both lie in a folder of their own, and PATH leads there by a link.
set(PIXELWEFT_PROGRAM_DIR lib/pixelweft)

# The newest version in CHANGELOG.md is the one that is built, and came out on its day.
file(STRINGS ${CMAKE_SOURCE_DIR}/CHANGELOG.md released LIMIT_COUNT 1 REGEX "^## [0-9.]+ \\(")
if(NOT released MATCHES "^## ([0-9.]+) \\(([0-9-]+)\\)" OR NOT CMAKE_MATCH_1 STREQUAL PROJECT_VERSION)
    message(FATAL_ERROR "CHANGELOG.md begins with '${released}', and not with version ${PROJECT_VERSION}.")
endif()
set(PIXELWEFT_RELEASE_DATE ${CMAKE_MATCH_2})
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/CHANGELOG.md)

set(made ${CMAKE_BINARY_DIR}/install)
file(MAKE_DIRECTORY ${made})

install(TARGETS PixelWeft RUNTIME DESTINATION ${PIXELWEFT_PROGRAM_DIR})
file(RELATIVE_PATH to_program /${CMAKE_INSTALL_BINDIR} /${PIXELWEFT_PROGRAM_DIR}/PixelWeft)
file(CREATE_LINK ${to_program} ${made}/pixelweft SYMBOLIC)
install(FILES ${made}/pixelweft DESTINATION ${CMAKE_INSTALL_BINDIR})
install(TARGETS pixelweft-patch FixtureTool RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})

install(FILES Sources/Application/mode.xml DESTINATION ${PIXELWEFT_PROGRAM_DIR})

foreach(page pixelweft pixelweft-patch pixelweft-fixtures)
    configure_file(Docs/man/${page}.1.in ${made}/${page}.1 @ONLY)
    install(FILES ${made}/${page}.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
endforeach()

set(metainfo invalid.pixelweft.PixelWeft.metainfo.xml)
configure_file(Resources/Desktop/pixelweft.metainfo.xml.in ${made}/${metainfo} @ONLY)
install(FILES ${made}/${metainfo} DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
install(FILES Resources/Desktop/pixelweft.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES Resources/Desktop/pixelweft-mime.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages RENAME pixelweft.xml)
install(DIRECTORY Resources/Desktop/icons/ DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor)
