# Runs the tests under the address and undefined behaviour sanitizers (g++, clang), then under valgrind.
need_to_build_with libgtest-dev libcli11-dev clang libclang-rt-dev valgrind libc6-dbg
for preset in asan asan-clang; do
    build "$preset"
    run_tests "$preset"
done

# The allocators of a thread's stack are "possibly lost" to valgrind, so only sure losses count.
memcheck() {
    quietly valgrind --quiet --error-exitcode=99 --leak-check=full --errors-for-leak-kinds=definite,indirect "$@"
}

build dev
memcheck build/dev/tests/quxml_tests --gtest_brief=1
memcheck build/dev/tools/quxml format --sorted examples/catalog.xml
memcheck build/dev/tools/quxml query /catalog//title examples/catalog.xml
