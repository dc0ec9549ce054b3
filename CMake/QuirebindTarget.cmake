# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

# Settings that every target of this tree is compiled with: warnings are errors (to us, not to a
# project that adds this one and may have another compiler), and a preset's
# sanitizers reach the link too. Consumers of the installed package inherit none of them.
add_library(QuirebindOptions INTERFACE)
target_compile_options(
  QuirebindOptions
  INTERFACE -Wall
            -Wextra
            -Wpedantic
            -Wconversion
            -Wshadow
            -Wnon-virtual-dtor
            -Woverloaded-virtual
            -Wcast-align
            -Wnull-dereference)
if(PROJECT_IS_TOP_LEVEL)
  set(CMAKE_COMPILE_WARNING_AS_ERROR ON)
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  # g++ 12 sees faults inside its own std::string and std::optional when it inlines them (GCC bugs
  # 105651, 80635 and others); clang's analyzer and the sanitizers look for the same.
  target_compile_options(QuirebindOptions INTERFACE -Wno-null-dereference -Wno-restrict
                                                    -Wno-maybe-uninitialized)
  # Nobody replaces one of our functions when the program is loaded, so that they may be inlined.
  target_compile_options(QuirebindOptions INTERFACE -fno-semantic-interposition)
endif()
# What makes a mistake that is still there harder to use: canaries on the stack, checked library calls
# and containers, checked jumps, addresses that nobody can foresee, relocations that nobody can change.
if(NOT QUIREBIND_SANITIZE)
  # Some distributions' compilers define _FORTIFY_SOURCE themselves.
  target_compile_options(
    QuirebindOptions INTERFACE -fstack-protector-strong -U_FORTIFY_SOURCE
                               $<$<NOT:$<CONFIG:Debug>>:-D_FORTIFY_SOURCE=2>)
  target_compile_definitions(QuirebindOptions INTERFACE _GLIBCXX_ASSERTIONS)
  if(NOT APPLE)
    target_compile_options(QuirebindOptions INTERFACE -fstack-clash-protection)
  endif()
  include(CheckCXXCompilerFlag)
  check_cxx_compiler_flag(-fcf-protection=full has_cf_protection)
  if(has_cf_protection)
    target_compile_options(QuirebindOptions INTERFACE -fcf-protection=full)
  endif()
  if(NOT APPLE)
    target_link_options(QuirebindOptions INTERFACE -Wl,-z,relro,-z,now,-z,noexecstack)
  endif()
endif()
if(QUIREBIND_SANITIZE)
  target_compile_options(QuirebindOptions INTERFACE -fsanitize=${QUIREBIND_SANITIZE}
                                                    -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(QuirebindOptions INTERFACE -fsanitize=${QUIREBIND_SANITIZE})
endif()

# quirebind_library(NAME ALIAS SOURCES... ) defines a static library whose headers are included by
# their path from the root of the tree, both here and once installed.
function(quirebind_library name alias)
  add_library(${name} STATIC ${ARGN})
  add_library(Quirebind::${alias} ALIAS ${name})
  set_target_properties(${name} PROPERTIES EXPORT_NAME ${alias})
  target_compile_features(${name} PUBLIC cxx_std_20)
  target_include_directories(
    ${name} PUBLIC $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>
                   $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/quirebind>)
  target_link_libraries(${name} PRIVATE $<BUILD_INTERFACE:QuirebindOptions>)
  if(QUIREBIND_INSTALL)
    install(TARGETS ${name} EXPORT QuirebindTargets COMPONENT Development)
  endif()
endfunction()

# quirebind_test(NAME SOURCES... [LIBRARIES ...]) defines a GoogleTest program whose every test CTest
# lists by its own name. What is tested is compiled as it is shipped; the tests themselves are not
# optimised and share one reading of GoogleTest's headers, which takes a third of the time.
function(quirebind_test name)
  cmake_parse_arguments(arg "" "" "LIBRARIES" ${ARGN})
  add_executable(${name} ${arg_UNPARSED_ARGUMENTS})
  target_link_libraries(${name} PRIVATE QuirebindOptions ${arg_LIBRARIES} GTest::gmock_main)
  # Fortified functions need optimisation.
  target_compile_options(${name} PRIVATE -O0 -U_FORTIFY_SOURCE)
  list(LENGTH arg_UNPARSED_ARGUMENTS count)
  if(count GREATER 4)
    target_precompile_headers(${name} PRIVATE <gmock/gmock.h> <gtest/gtest.h>)
  endif()
  gtest_discover_tests(${name} PROPERTIES TIMEOUT 400 DISCOVERY_TIMEOUT 60)
endfunction()
