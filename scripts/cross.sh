# Builds for ARCH (i386, armhf, armhf-device, armel, mipsel, powerpc, wasm32, libcxx; or all); runs the tests with arguments to CTest.
# SPDX-License-Identifier: MIT
. scripts/support/googletest.sh
. scripts/support/sysroot.sh
need_to_build_with libcli11-dev libboost-dev libgtest-dev pkgconf liblzma-dev zlib1g-dev
left_out=scripts/support/left_out.txt
whole_programs='^quxml_[a-z_]*$'

# The test suite must be the same everywhere, down to the names, but for what is left out.
check_that_all_tests_are_there() {
    local name
    build dev
    diff <(list_tests dev "${exclusions[@]}") <(list_tests "$1" "${exclusions[@]}") ||
        fail "the tests for $1 are not those of this machine"
    for name in $(name_left_out "$1"); do
        [ -n "$(list_tests dev --tests-regex "$name" || list_tests dev --label-regex "^$name\$")" ] ||
            fail "$left_out names tests that there are not: $name"
    done
}

# Names the tests of a preset, with arguments to CTest.
list_tests() {
    ctest --preset "$1" --no-tests=ignore --show-only "${@:2}" | sed -n 's/^ *Test *#[0-9]*: //p' |
        grep --text --invert-match "$whole_programs" | sort
}

name_left_out() {
    sed -n "s/^$1  *//p" "$left_out"
}

# Sets `exclusions` to arguments of CTest that leave out what the row does. Expressions begin with ^, names of programs do not.
leave_out() {
    local tests programs
    tests=$(name_left_out "$1" | sed '/^^/!d' | paste --serial --delimiters '|')
    programs=$(name_left_out "$1" | sed '/^^/d' | paste --serial --delimiters '|')
    exclusions=(${tests:+--exclude-regex "$tests"} ${programs:+--label-exclude "^($programs)\$"})
}

# No other machine, but another standard library than everywhere else.
need_libcxx() {
    need clang libc++-14-dev libc++abi-14-dev googletest
    build_googletest libcxx -stdlib=libc++
}

# Runs the tests of a row with arguments to CTest. Without any, and for real machines, GoogleTest's programs are run as a whole,
# and the numbers of tests that they print are shown.
run_row() {
    local status=0
    if [ $# -gt 1 ] || [ "$1" = libcxx ] || [ "$1" = wasm32 ]; then
        run_tests "$1" "${exclusions[@]}" "${@:2}"
        return
    fi
    run_tests "$1" --label-exclude '^quxml_' || status=$?
    grep --text --only-matching '] [0-9]* tests from .* ran' "build/$1/results.xml" | sed 's/^. /in one of these: /'
    return "$status"
}

cross() {
    local status=0
    if [ "$1" = libcxx ]; then
        need_libcxx
    else
        need_to_cross_build "${1%-device}"
    fi
    build "$1"
    leave_out "$1"
    run_row "$@" || status=$?
    [ $# -gt 1 ] || check_that_all_tests_are_there "$1"
    return "$status"
}

if [ "${1-}" = all ]; then
    for arch in "${architectures[@]}" armhf-device wasm32 libcxx; do
        cross "$arch" "${@:2}"
    done
else
    cross "${1-}" "${@:2}"
fi
