# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

# Builds the project in consumer/ against this one, in the given way, and joins two samples with it.

function(step)
  execute_process(COMMAND ${ARGN} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

file(REMOVE_RECURSE ${work})
file(MAKE_DIRECTORY ${work})
set(options -G ${generator} -D CMAKE_CXX_COMPILER=${compiler} -D CMAKE_BUILD_TYPE=Release)
if(way STREQUAL "find_package")
  step(${CMAKE_COMMAND} --install ${build} --prefix ${work}/installed --component Development)
  list(APPEND options -D CMAKE_PREFIX_PATH=${work}/installed)
else()
  list(APPEND options -D QUIREBIND_SOURCE=${source})
endif()
step(${CMAKE_COMMAND} -S ${CMAKE_CURRENT_LIST_DIR}/consumer -B ${work}/build ${options})
step(${CMAKE_COMMAND} --build ${work}/build)
step(${work}/build/join ${work}/joined.pdf ${source}/Samples/1\ Welcome.pdf
     ${source}/Samples/2\ Letter.pdf)

execute_process(COMMAND qpdf --show-npages ${work}/joined.pdf OUTPUT_VARIABLE pages
                OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
if(NOT pages EQUAL 3)
  message(FATAL_ERROR "expected 3 pages, qpdf sees ${pages}")
endif()
