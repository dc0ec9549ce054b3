# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

# Looks into a program for what the compiler and the linker were told to put there.

function(look result)
  execute_process(COMMAND readelf ${ARGN} OUTPUT_VARIABLE text COMMAND_ERROR_IS_FATAL ANY)
  set(${result} "${text}" PARENT_SCOPE)
endfunction()

function(expect text pattern what)
  if(NOT text MATCHES "${pattern}")
    message(SEND_ERROR "${program}: ${what}")
  endif()
endfunction()

look(header -hW ${program})
expect("${header}" "Type: +DYN" "it stands at an address that can be foreseen")
look(segments -lW ${program})
expect("${segments}" "GNU_RELRO" "its relocations can be written to")
expect("${segments}" "GNU_STACK[^\n]* RW +0x" "its stack can be executed")
look(dynamic -dW ${program})
expect("${dynamic}" "BIND_NOW|FLAGS.* NOW" "it binds functions while it runs")
look(symbols -sW --dyn-syms ${program})
expect("${symbols}" "__stack_chk_fail" "its stack has no canaries")
