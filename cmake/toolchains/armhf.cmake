# SPDX-License-Identifier: MIT

# 32-bit ARM with floating-point registers; programs run in qemu.
set(CMAKE_SYSTEM_PROCESSOR armv7l)
set(triplet arm-linux-gnueabihf)
get_filename_component(sysroot ${CMAKE_CURRENT_LIST_DIR}/../../build/sysroot/armhf ABSOLUTE)
set(CMAKE_CROSSCOMPILING_EMULATOR qemu-arm -L ${sysroot})
include(${CMAKE_CURRENT_LIST_DIR}/debian.cmake)
