# Builds for ARCH (i386, armhf, armhf-device, armel, mipsel, powerpc, libcxx; or all); runs the tests with arguments to CTest.
# SPDX-License-Identifier: MIT
. scripts/support/googletest.sh
. scripts/support/sysroot.sh
need_to_build_with libcli11-dev libboost-dev libgtest-dev pkgconf liblzma-dev zlib1g-dev

# The test suite must be the same everywhere, down to the names; but sizes are compared for one compiler alone.
check_that_all_tests_are_there() {
    build dev
    diff <(list_tests dev "$1") <(list_tests "$1" "$1") || fail "the tests for $1 are not those of this machine"
}

# Names the tests of a preset that a row has.
list_tests() {
    local left_out='^$'
    [ "$2" != libcxx ] || left_out='^size\.'
    ctest --preset "$1" --show-only | sed -n 's/^ *Test *#[0-9]*: //p' | grep --invert-match "$left_out" | sort
}

# No other machine, but another standard library than everywhere else.
need_libcxx() {
    need clang libc++-14-dev libc++abi-14-dev googletest
    build_googletest libcxx -stdlib=libc++
}

cross() {
    local status=0
    if [ "$1" = libcxx ]; then
        need_libcxx
    else
        need_to_cross_build "${1%-device}"
    fi
    build "$1"
    run_tests "$@" || status=$?
    [ $# -gt 1 ] || check_that_all_tests_are_there "$1"
    return "$status"
}

if [ "${1-}" = all ]; then
    for arch in "${architectures[@]}" armhf-device libcxx; do
        cross "$arch" "${@:2}"
    done
else
    cross "${1-}" "${@:2}"
fi
