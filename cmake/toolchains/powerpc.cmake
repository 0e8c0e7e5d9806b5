# SPDX-License-Identifier: MIT

# 32-bit PowerPC, big-endian; programs run in qemu.
set(CMAKE_SYSTEM_PROCESSOR ppc)
set(triplet powerpc-linux-gnu)
get_filename_component(sysroot ${CMAKE_CURRENT_LIST_DIR}/../../build/sysroot/powerpc ABSOLUTE)
set(CMAKE_CROSSCOMPILING_EMULATOR qemu-ppc -L ${sysroot})
include(${CMAKE_CURRENT_LIST_DIR}/debian.cmake)
