# Tries every case where that is possible, in minutes; i386 has words of 32 bits, all of which are tried then.
# SPDX-License-Identifier: MIT
. scripts/support/sysroot.sh
[ $# -eq 0 ] || [ "$*" = i386 ] || fail "prove takes i386 or nothing: $*"
need_to_build_with libboost-dev libgtest-dev
preset=${1-release}
[ "$preset" = release ] || need_to_cross_build "$preset"
build "$preset" quxml_prove
show "build/$preset/tests/quxml_prove"
