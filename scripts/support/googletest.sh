# SPDX-License-Identifier: MIT

# For verbs whose tests have another standard library than Debian's GoogleTest: its interface has containers of that library
# in it, so it is built once more, with the flags given, for the preset named.
build_googletest() {
    local prefix=$PWD/build/googletest-$1
    [ ! -e "$prefix/include" ] || return 0
    quietly cmake -S /usr/src/googletest -B "build/googletest/$1" -G Ninja -DBUILD_GMOCK=OFF -DCMAKE_CXX_FLAGS="${*:2}" \
        -DCMAKE_CXX_COMPILER="$(compiler_of_preset "$1")" -DCMAKE_INSTALL_PREFIX="$prefix"
    quietly cmake --build "build/googletest/$1" --target install
}

compiler_of_preset() {
    case $1 in
        libcxx) echo clang++ ;;
        *) echo g++ ;;
    esac
}
