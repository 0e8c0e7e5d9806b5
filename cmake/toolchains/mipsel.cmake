# SPDX-License-Identifier: MIT

# 32-bit MIPS, little-endian; programs run in qemu.
set(CMAKE_SYSTEM_PROCESSOR mips)
set(triplet mipsel-linux-gnu)
get_filename_component(sysroot ${CMAKE_CURRENT_LIST_DIR}/../../build/sysroot/mipsel ABSOLUTE)
set(CMAKE_CROSSCOMPILING_EMULATOR qemu-mipsel -L ${sysroot})
include(${CMAKE_CURRENT_LIST_DIR}/debian.cmake)
