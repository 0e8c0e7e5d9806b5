# Builds for ARCH (i386, armhf, armel, mipsel, powerpc; or all) and runs the tests, in qemu; arguments go to CTest.
. scripts/support/sysroot.sh
need_to_build_with libcli11-dev libboost-dev libgtest-dev pkgconf liblzma-dev zlib1g-dev

# The test suite must be the same everywhere, down to the names.
check_that_all_tests_are_there() {
    build dev
    diff <(list_tests dev) <(list_tests "$1") || fail "the tests for $1 are not those of this machine"
}

list_tests() {
    ctest --preset "$1" --show-only | sed -n 's/^ *Test *#[0-9]*: //p' | sort
}

cross() {
    local status=0
    need_to_cross_build "$1"
    build "$1"
    run_tests "$@" || status=$?
    [ $# -gt 1 ] || check_that_all_tests_are_there "$1"
    return "$status"
}

if [ "${1-}" = all ]; then
    for arch in "${architectures[@]}"; do
        cross "$arch" "${@:2}"
    done
else
    cross "${1-}" "${@:2}"
fi
