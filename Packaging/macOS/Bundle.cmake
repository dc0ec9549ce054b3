# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

# The application as macOS knows it: a bundle with its icon, and the helper beside the program, which is
# where this looks first. It has not been built on a Mac yet. To hand it on, `macdeployqt` has to put
# the toolkit into it, and it has to be signed.
set(bundle Quirebind.app/Contents)

set_target_properties(
  quirebind
  PROPERTIES OUTPUT_NAME Quirebind
             MACOSX_BUNDLE TRUE
             MACOSX_BUNDLE_INFO_PLIST ${CMAKE_CURRENT_LIST_DIR}/Info.plist.in)
set_target_properties(
  quirebind-renderer PROPERTIES RUNTIME_OUTPUT_DIRECTORY
                                ${PROJECT_BINARY_DIR}/Quirebind/${bundle}/MacOS)

# Every size twice: for screens of twice the dots, a picture of twice the pixels.
set(iconset ${CMAKE_CURRENT_BINARY_DIR}/quirebind.iconset)
set(draw_all)
foreach(size 16 32 128 256 512)
  math(EXPR twice "2 * ${size}")
  list(APPEND draw_all COMMAND draw-icon ${application_icon} ${size}
       ${iconset}/icon_${size}x${size}.png)
  list(APPEND draw_all COMMAND draw-icon ${application_icon} ${twice}
       ${iconset}/icon_${size}x${size}@2x.png)
endforeach()
set(icon ${CMAKE_CURRENT_BINARY_DIR}/quirebind.icns)
add_custom_command(
  OUTPUT ${icon}
  COMMAND ${CMAKE_COMMAND} -E make_directory ${iconset} ${draw_all}
  COMMAND iconutil --convert icns --output ${icon} ${iconset}
  DEPENDS ${application_icon}
  VERBATIM)
add_custom_target(icons ALL DEPENDS ${icon})

install(TARGETS quirebind BUNDLE DESTINATION . COMPONENT Application)
install(TARGETS quirebind-renderer RUNTIME DESTINATION ${bundle}/MacOS COMPONENT Application)
install(FILES ${icon} DESTINATION ${bundle}/Resources COMPONENT Application)
