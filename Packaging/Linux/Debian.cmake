# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

# A package of the application for Debian: `cpack --config build/release/CPackConfig.cmake`, or the
# target `package`. No static library, no headers, no developers' tool.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME quirebind)
set(CPACK_PACKAGE_VENDOR "The Quirebind authors")
set(CPACK_PACKAGE_CONTACT "The Quirebind authors <authors@quirebind.example>")
set(CPACK_PACKAGE_HOMEPAGE_URL ${QUIREBIND_ADDRESS})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "join PDF documents into one")
set(CPACK_RESOURCE_FILE_LICENSE ${PROJECT_SOURCE_DIR}/LICENSE)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_VERBATIM_VARIABLES ON)

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL Application)
set(CPACK_DEBIAN_APPLICATION_PACKAGE_NAME quirebind)
set(CPACK_DEBIAN_APPLICATION_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_APPLICATION_PACKAGE_SECTION text)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_APPLICATION_DESCRIPTION
    "Quirebind joins several PDF documents into one: every page of every document,
in the order that is chosen in its window, written in one step into a new
file. Pages are copied, never redrawn; links, forms, layers and tags go on
working.
.
Nothing leaves the machine. An original is never overwritten, and a document
of which not every page can be read is refused rather than joined in part.")
# Libraries are found by what the programs are linked with; the window system's part of the toolkit is
# loaded at run time, where the one for X11 comes with those libraries.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_APPLICATION_PACKAGE_RECOMMENDS
    "qt6-wayland, qt6-translations-l10n")
set(CPACK_DEBIAN_APPLICATION_PACKAGE_SUGGESTS "xdg-desktop-portal")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

# What only a package for Debian has.
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_LIST_DIR}/Debian/Finish.cmake)

include(CPack)
cpack_add_component(Application DISPLAY_NAME "Quirebind" DESCRIPTION
                    "${CPACK_DEBIAN_APPLICATION_DESCRIPTION}")
