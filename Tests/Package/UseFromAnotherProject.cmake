# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

# Builds the example against this project, in the given way, and joins two samples with it. What is
# installed is moved before it is used, since a package may be unpacked anywhere.

function(step)
  execute_process(COMMAND ${ARGN} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

function(output_of result)
  execute_process(COMMAND ${ARGN} OUTPUT_VARIABLE text COMMAND_ERROR_IS_FATAL ANY)
  set(${result} "${text}" PARENT_SCOPE)
endfunction()

file(REMOVE_RECURSE ${work})
file(MAKE_DIRECTORY ${work})
set(example ${source}/Documentation/Examples)
set(options -G ${generator} -D CMAKE_CXX_COMPILER=${compiler})
if(way STREQUAL "add_subdirectory")
  set(example ${CMAKE_CURRENT_LIST_DIR}/consumer)
  # The whole library is built here: in a third of the time where it is not optimised.
  list(APPEND options -D CMAKE_BUILD_TYPE=Debug -D QUIREBIND_SOURCE=${source})
else()
  list(APPEND options -D CMAKE_BUILD_TYPE=Release)
  step(${CMAKE_COMMAND} --install ${build} --prefix ${work}/installed --component Development)
  file(RENAME ${work}/installed ${work}/moved)
  list(APPEND options -D CMAKE_PREFIX_PATH=${work}/moved)
endif()
if(way STREQUAL "pkg_config")
  file(GLOB_RECURSE description ${work}/moved/quirebind.pc)
  cmake_path(GET description PARENT_PATH folder)
  set(ENV{PKG_CONFIG_PATH} ${folder})
  output_of(flags pkg-config --static --cflags --libs quirebind)
  separate_arguments(flags UNIX_COMMAND "${flags}")
  file(MAKE_DIRECTORY ${work}/build)
  step(${compiler} -std=c++20 ${example}/join.cpp -o ${work}/build/join ${flags})
else()
  step(${CMAKE_COMMAND} -S ${example} -B ${work}/build ${options})
  step(${CMAKE_COMMAND} --build ${work}/build)
endif()

# Every page, in its order, is what other readers have to find.
set(sources ${source}/Samples/2\ Letter.pdf ${source}/Samples/1\ Welcome.pdf)
step(${work}/build/join ${work}/joined.pdf ${sources})
output_of(pages qpdf --show-npages ${work}/joined.pdf)
if(NOT pages STREQUAL "3\n")
  message(FATAL_ERROR "expected 3 pages, qpdf sees ${pages}")
endif()
set(expected)
foreach(document ${sources})
  output_of(text pdftotext ${document} -)
  string(APPEND expected "${text}")
endforeach()
output_of(text pdftotext ${work}/joined.pdf -)
if(NOT text STREQUAL expected)
  message(FATAL_ERROR "expected the pages\n${expected}\nand found\n${text}")
endif()

# What is refused says why, and writes nothing.
execute_process(COMMAND ${work}/build/join ${work}/refused.pdf ${work}/missing.pdf
                RESULT_VARIABLE status ERROR_VARIABLE reason)
if(NOT status EQUAL 1 OR NOT reason STREQUAL "Could not read every page of missing.pdf.\n")
  message(FATAL_ERROR "status ${status}: ${reason}")
endif()
if(EXISTS ${work}/refused.pdf)
  message(FATAL_ERROR "a refused merge has written a file")
endif()
