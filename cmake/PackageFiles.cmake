# SPDX-License-Identifier: MIT
# Run by CPack over the installed files, before they are packed: gives them the form that Debian wants.
set(source ${CPACK_PROJECT_SOURCE_DIR})
set(root ${CPACK_TEMPORARY_INSTALL_DIRECTORY})
set(documents ${root}/usr/share/doc/pixelweft)
file(MAKE_DIRECTORY ${documents})

function(run)
    execute_process(COMMAND ${ARGN} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

configure_file(${source}/Tools/Package/copyright ${documents}/copyright COPYONLY)
configure_file(${source}/CHANGELOG.md ${documents}/changelog COPYONLY)
run(python3 -B ${source}/Tools/Package/debian_changelog.py
    ${source}/CHANGELOG.md ${CPACK_DEBIAN_PACKAGE_RELEASE} "${CPACK_DEBIAN_PACKAGE_MAINTAINER}"
    OUTPUT_FILE ${documents}/changelog.Debian)
file(GLOB pages ${root}/usr/share/man/man1/*.1)
# Without name and time, so that the same files give the same package.
run(gzip -9n ${documents}/changelog ${documents}/changelog.Debian ${pages})
file(COPY ${source}/Tools/Package/lintian-overrides DESTINATION ${root}/usr/share/lintian/overrides)
file(RENAME ${root}/usr/share/lintian/overrides/lintian-overrides ${root}/usr/share/lintian/overrides/pixelweft)

# What an administrator may change is below /etc. The program finds it beside itself all the same.
file(MAKE_DIRECTORY ${root}/etc/pixelweft)
file(RENAME ${root}/usr/lib/pixelweft/mode.xml ${root}/etc/pixelweft/mode.xml)
file(CREATE_LINK /etc/pixelweft/mode.xml ${root}/usr/lib/pixelweft/mode.xml SYMBOLIC)
