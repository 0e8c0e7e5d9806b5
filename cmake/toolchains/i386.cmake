# SPDX-License-Identifier: MIT

# 32-bit x86; the processor runs its programs, which the sysroot's own loader starts with the sysroot's libraries, those
# that convert encodings among them.
set(CMAKE_SYSTEM_PROCESSOR i686)
set(triplet i686-linux-gnu)
get_filename_component(sysroot ${CMAKE_CURRENT_LIST_DIR}/../../build/sysroot/i386 ABSOLUTE)
set(CMAKE_CROSSCOMPILING_EMULATOR
  /usr/bin/env GCONV_PATH=${sysroot}/usr/lib/i386-linux-gnu/gconv
  ${sysroot}/lib/ld-linux.so.2 --library-path ${sysroot}/lib/i386-linux-gnu:${sysroot}/usr/lib/i386-linux-gnu)
include(${CMAKE_CURRENT_LIST_DIR}/debian.cmake)
