# SPDX-License-Identifier: MIT

# 32-bit ARM without floating-point hardware; programs run in qemu.
set(CMAKE_SYSTEM_PROCESSOR armv5tel)
set(triplet arm-linux-gnueabi)
get_filename_component(sysroot ${CMAKE_CURRENT_LIST_DIR}/../../build/sysroot/armel ABSOLUTE)
set(CMAKE_CROSSCOMPILING_EMULATOR qemu-arm -L ${sysroot})
include(${CMAKE_CURRENT_LIST_DIR}/debian.cmake)
