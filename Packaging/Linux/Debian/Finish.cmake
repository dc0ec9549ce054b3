# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

# Run by CPack once the files of the package lie in a folder of their own: adds and compresses what
# Debian's policy asks for.
set(usr ${CPACK_TEMPORARY_DIRECTORY}/Application${CPACK_PACKAGING_INSTALL_PREFIX})
set(share ${usr}/share)

# Copies a file of this folder into the package, to be read by everybody.
function(add name place as)
  file(MAKE_DIRECTORY ${place})
  file(COPY_FILE ${CMAKE_CURRENT_LIST_DIR}/${name} ${place}/${as})
  file(CHMOD ${place}/${as} PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
endfunction()
add(copyright ${share}/doc/quirebind copyright)
add(changelog ${share}/doc/quirebind changelog.Debian)
add(lintian-overrides ${share}/lintian/overrides quirebind)

# -n: the same files give the same package.
execute_process(COMMAND gzip -9n ${share}/doc/quirebind/changelog.Debian
                        ${share}/man/man1/quirebind.1 COMMAND_ERROR_IS_FATAL ANY)

# The umask of whoever builds is no matter of the package's.
file(CHMOD_RECURSE ${usr} DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ
                                                GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
