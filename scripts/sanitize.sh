# Runs the tests under the address and undefined behaviour sanitizers (g++, clang), then under valgrind.
need_to_build_with libcli11-dev libgtest-dev clang libclang-rt-dev valgrind libc6-dbg
for preset in asan asan-clang; do
    build "$preset"
    run_tests "$preset"
done
build dev
for program in quxml_tests quxml_tool_tests; do
    quietly valgrind --quiet --error-exitcode=99 --leak-check=full --errors-for-leak-kinds=definite,indirect,possible \
        --trace-children=yes --trace-children-skip='/bin/*,/usr/bin/*' "build/dev/tests/$program"
done
