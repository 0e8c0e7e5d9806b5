# SPDX-License-Identifier: MIT
include(CheckCXXCompilerFlag)

# The flags by which a processor refuses jumps to where no jump should lead, for processors that can: x86 and 64-bit ARM.
# For others clang only warns.
if(QUXML_HARDENING)
  set(CMAKE_REQUIRED_FLAGS -Werror)
  foreach(flag -fcf-protection -mbranch-protection=standard)
    string(MAKE_C_IDENTIFIER QUXML_HAS${flag} has_flag)
    check_cxx_compiler_flag(${flag} ${has_flag})
    if(${has_flag})
      list(APPEND jump_protection ${flag})
    endif()
  endforeach()
  unset(CMAKE_REQUIRED_FLAGS)
endif()

# Makes optimised builds of a target detect overwritten stacks and buffers, and lets the loader protect its tables.
function(quxml_harden target)
  set(optimised $<OR:$<CONFIG:Release>,$<CONFIG:RelWithDebInfo>,$<CONFIG:MinSizeRel>>)
  set(flags -fstack-protector-strong -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2 ${jump_protection})
  target_compile_options(${target} PRIVATE "$<${optimised}:${flags}>")
  target_link_options(${target} PRIVATE "$<${optimised}:LINKER:-z,relro;LINKER:-z,now>")
endfunction()

# What holds for quxml's own code and for nobody else's: warnings, sanitizers, hardening, plain ISO C++.
function(quxml_compile_rules target)
  set_target_properties(${target} PROPERTIES CXX_EXTENSIONS OFF)
  if(CMAKE_SIZEOF_VOID_P EQUAL 4)
    # Otherwise files with sizes or numbers of more than 32 bits could not be looked at.
    target_compile_definitions(${target} PRIVATE _FILE_OFFSET_BITS=64)
  endif()
  target_compile_options(${target} PRIVATE
    -Wall -Wextra -Wpedantic
    -Wcast-align -Wcast-qual -Wconversion -Wdouble-promotion -Wextra-semi -Wformat=2 -Wmissing-declarations
    -Wnon-virtual-dtor -Wold-style-cast -Woverloaded-virtual -Wredundant-decls -Wshadow -Wsign-conversion -Wundef
    -Wunused -Wzero-as-null-pointer-constant)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    target_compile_options(${target} PRIVATE -Wduplicated-branches -Wduplicated-cond -Wlogical-op -Wsuggest-override)
  endif()
  if(CMAKE_CXX_COMPILER_ID MATCHES "Clang")
    target_compile_options(${target} PRIVATE -Winconsistent-missing-override -Wunreachable-code)
  endif()
  if(QUXML_WERROR)
    target_compile_options(${target} PRIVATE -Werror)
  endif()
  if(QUXML_SANITIZE)
    target_compile_options(${target} PRIVATE
      -fsanitize=${QUXML_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(${target} PRIVATE -fsanitize=${QUXML_SANITIZE})
  elseif(QUXML_HARDENING)
    quxml_harden(${target})
  endif()
endfunction()
