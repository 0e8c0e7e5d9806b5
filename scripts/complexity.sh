# Counts the instructions of each operation at n, 2n and 4n; fails if one grows faster than stated. With names, only these.
# SPDX-License-Identifier: MIT
. scripts/support/instructions.sh
need_to_build_with libboost-dev libgtest-dev valgrind
build release complexity_probe
probe=build/release/tests/complexity_probe

# Prints a line of the table; fails if 4n takes more than the limit times what n takes.
check_growth() {
    local quarter half whole
    quarter=$(count_instructions "$probe" "$1" $(($2 / 4)))
    half=$(count_instructions "$probe" "$1" $(($2 / 2)))
    whole=$(count_instructions "$probe" "$1" "$2")
    awk -v name="$1" -v size="$2" -v limit="$3" -v quarter="$quarter" -v half="$half" -v whole="$whole" 'BEGIN {
        grows = quarter > 0 && half > 0 && whole <= limit * quarter
        printf "%-28s %7d %9.1f %6.2f %6.2f %6d  %s\n", name, size, whole / size, half / quarter, whole / quarter, limit,
            grows ? "ok" : "FAILED"
        exit !grows
    }'
}

exceeded=0 count=0
operations=$("$probe")
printf '%-28s %7s %9s %6s %6s %6s\n' operation 4n per-unit 2n/n 4n/n limit
while read -r operation size limit; do
    [ $# -eq 0 ] || [[ " $* " == *" $operation "* ]] || continue
    count=$((count + 1))
    check_growth "$operation" "$size" "$limit" || exceeded=1
done <<<"$operations"
[ "$count" -gt 0 ] || fail "complexity: no such operation: $*"
[ "$exceeded" -eq 0 ] || fail "an operation grows faster than stated"
