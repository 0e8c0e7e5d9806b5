# SPDX-License-Identifier: MIT

# WebAssembly, 32 bits, by Debian's emscripten, with musl as its C library and libc++ as its C++ library. Programs run in node.
get_filename_component(sysroot ${CMAKE_CURRENT_LIST_DIR}/../../build/sysroot/wasm32 ABSOLUTE)
list(APPEND CMAKE_FIND_ROOT_PATH ${sysroot})
list(APPEND CMAKE_SYSTEM_PREFIX_PATH /usr)
# Exceptions are WebAssembly's own.
set(CMAKE_CXX_FLAGS_INIT -fwasm-exceptions)
include(/usr/share/emscripten/cmake/Modules/Platform/Emscripten.cmake)
