# SPDX-License-Identifier: MIT

# What the toolchains of this folder share: Debian's cross compiler, whose names begin with `triplet`, and the sysroot that
# `./dev cross ARCH` makes.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_C_COMPILER ${triplet}-gcc-12)
set(CMAKE_CXX_COMPILER ${triplet}-g++-12)
set(CMAKE_SYSROOT ${sysroot})

set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
