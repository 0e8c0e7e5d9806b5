# Counts the lines, functions and branches of the library that the tests reach; at least 100, 100 and 98 % are required.
# SPDX-License-Identifier: MIT
need_to_build_with libcli11-dev libboost-dev libgtest-dev gcovr
build coverage
find build/coverage -name '*.gcda' -delete
run_tests coverage "$@"

gcovr_arguments=(--root . --object-directory build/coverage --filter src/ --filter include/ --exclude-throw-branches
    --exclude-unreachable-branches)
quietly gcovr "${gcovr_arguments[@]}" --json-summary build/coverage/summary.json --html-details build/coverage/index.html
show gcovr "${gcovr_arguments[@]}" --branches --sort-percentage
show gcovr "${gcovr_arguments[@]}" --fail-under-line 100 --fail-under-branch 98
# Unreached functions have unreached lines, so the first bound holds for functions as well.
