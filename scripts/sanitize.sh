# Runs the tests under each sanitizer, with the standard library's own checks, and under valgrind; with names, only these.
# SPDX-License-Identifier: MIT
. scripts/support/googletest.sh
need_to_build_with libboost-dev libgtest-dev googletest libcli11-dev clang libclang-rt-dev valgrind libc6-dbg

is_asked_for() {
    [ -z "$asked" ] || [[ " $asked " == *" $1 "* ]]
}

# The allocators of a thread's stack are "possibly lost" to valgrind, so only definite losses count. The second option
# leaves a program its own `operator new`.
memcheck() {
    quietly valgrind --quiet --error-exitcode=99 --leak-check=full --errors-for-leak-kinds=definite,indirect \
        --soname-synonyms=somalloc=nouserintercepts --suppressions=scripts/support/valgrind.supp "$@"
}

asked=$*
for name in $asked; do
    [[ " asan asan-clang integer debug-library tsan valgrind " == *" $name "* ]] || fail "sanitize: no such check: $name"
done
for preset in asan asan-clang integer debug-library; do
    is_asked_for "$preset" || continue
    [ "$preset" != debug-library ] || build_googletest debug-library -D_GLIBCXX_DEBUG -D_GLIBCXX_DEBUG_PEDANTIC
    build "$preset"
    run_tests "$preset"
done

if is_asked_for tsan; then
    build tsan quxml_tests quxml_extras_tests
    run_tests tsan --tests-regex '^(Extras)?Threads'
fi

if is_asked_for valgrind; then
    build dev
    memcheck build/dev/tests/quxml_tests --gtest_brief=1
    memcheck build/dev/tests/quxml_robustness_tests --gtest_brief=1
    memcheck build/dev/tools/quxml format --sorted examples/catalog.xml
    memcheck build/dev/tools/quxml query /catalog//title examples/catalog.xml
    memcheck build/dev/tools/quxml query --path '//*' examples/catalog.xml
    memcheck build/dev/tools/quxml set /fontconfig x=1 examples/fonts.conf
    memcheck build/dev/tools/quxml diff examples/catalog.xml examples/catalog.xml
    memcheck build/dev/tools/quxml explain "//book[@id='1']/title[position()>2]"
fi
