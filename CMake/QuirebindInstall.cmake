# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

# The library for other programs: find_package(Quirebind), then link Quirebind::Core. Headers keep
# their path in the tree, below a folder of their own. The component is Development: a package of the
# application ships none of this.
include(CMakePackageConfigHelpers)

set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/Quirebind)
foreach(header ${QUIREBIND_HEADERS})
  get_filename_component(folder ${header} DIRECTORY)
  install(FILES ${PROJECT_SOURCE_DIR}/${header}
          DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/quirebind/${folder} COMPONENT Development)
endforeach()
install(EXPORT QuirebindTargets NAMESPACE Quirebind:: DESTINATION ${package_folder}
        COMPONENT Development)
configure_package_config_file(CMake/QuirebindConfig.cmake.in
                              ${PROJECT_BINARY_DIR}/QuirebindConfig.cmake
                              INSTALL_DESTINATION ${package_folder})
# Until 1.0.0 a minor version may break the interface (Documentation/API.md).
write_basic_package_version_file(${PROJECT_BINARY_DIR}/QuirebindConfigVersion.cmake
                                 COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/QuirebindConfig.cmake
              ${PROJECT_BINARY_DIR}/QuirebindConfigVersion.cmake
        DESTINATION ${package_folder} COMPONENT Development)

# The same for those who build without CMake.
cmake_path(RELATIVE_PATH CMAKE_INSTALL_PREFIX BASE_DIRECTORY ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig
           OUTPUT_VARIABLE pkg_config_prefix)
set(pkg_config_includedir "\${prefix}")
cmake_path(APPEND pkg_config_includedir ${CMAKE_INSTALL_INCLUDEDIR})
set(pkg_config_libdir "\${prefix}")
cmake_path(APPEND pkg_config_libdir ${CMAKE_INSTALL_LIBDIR})
configure_file(CMake/quirebind.pc.in ${PROJECT_BINARY_DIR}/quirebind.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/quirebind.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig
        COMPONENT Development)
