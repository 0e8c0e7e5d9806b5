# SPDX-License-Identifier: MIT

# Whoever vouches for a device asks what is in it. With what is installed comes a list of it, an SBOM in the form of SPDX 2.3.
# Here it is found out what the library is built with; the script made of write_sbom.cmake.in writes the list.
separate_arguments(compiler_options UNIX_COMMAND "${CMAKE_CXX_FLAGS}")
if(CMAKE_SYSROOT)
  list(APPEND compiler_options --sysroot=${CMAKE_SYSROOT})
endif()
if(CMAKE_CXX_COMPILER_TARGET)
  list(APPEND compiler_options --target=${CMAKE_CXX_COMPILER_TARGET})
endif()

# Adds to `dependencies` what the library runs with: NAME|VERSION|LICENCE|FILE.
macro(quxml_depends_on name version licence file)
  string(REPLACE " " "" number "${version}")
  list(APPEND dependencies "${name}|${number}|${licence}|${file}")
endmacro()

find_package(LibXml2 REQUIRED)
get_filename_component(file "${LIBXML2_LIBRARY}" REALPATH)
quxml_depends_on(libxml2 "${LIBXML2_VERSION_STRING}" MIT "${file}")

# The standard library's headers know which libraries a program will need when it runs.
file(WRITE ${PROJECT_BINARY_DIR}/runtime.cpp [[
#include <string>
#ifdef _LIBCPP_VERSION
runtime|libc++|_LIBCPP_VERSION|Apache-2.0 WITH LLVM-exception|libc++.so.1
#elif defined(_GLIBCXX_RELEASE)
runtime|libstdc++|_GLIBCXX_RELEASE|GPL-3.0-or-later WITH GCC-exception-3.1|libstdc++.so.6
runtime|libgcc|_GLIBCXX_RELEASE|GPL-3.0-or-later WITH GCC-exception-3.1|libgcc_s.so.1
#endif
#ifdef __GLIBC__
runtime|glibc|__GLIBC__.__GLIBC_MINOR__|LGPL-2.1-or-later|libc.so.6
#endif
]])
execute_process(COMMAND ${CMAKE_CXX_COMPILER} ${compiler_options} -E -P ${PROJECT_BINARY_DIR}/runtime.cpp
  OUTPUT_VARIABLE preprocessed)
string(REGEX MATCHALL "runtime[|][^\n]+" runtimes "${preprocessed}")
foreach(runtime IN LISTS runtimes)
  string(REPLACE "|" ";" runtime "${runtime}")
  list(GET runtime 1 name)
  list(GET runtime 2 version)
  list(GET runtime 3 licence)
  list(GET runtime 4 file)
  execute_process(COMMAND ${CMAKE_CXX_COMPILER} ${compiler_options} -print-file-name=${file}
    OUTPUT_VARIABLE file OUTPUT_STRIP_TRAILING_WHITESPACE)
  quxml_depends_on(${name} "${version}" "${licence}" "${file}")
endforeach()
if(TARGET quxml-tool)
  find_package(CLI11 CONFIG REQUIRED)
  quxml_depends_on(CLI11 "${CLI11_VERSION}" BSD-3-Clause "")
endif()

file(STRINGS LICENSE copyright REGEX "^Copyright")
configure_file(cmake/write_sbom.cmake.in write_sbom.cmake @ONLY)
