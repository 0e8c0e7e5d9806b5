# Fuzzes every target for SECONDS (60) with sanitizers; `SECONDS 32`: those that read no text, as 32-bit x86.
# SPDX-License-Identifier: MIT
seconds=${1-60} bits=${2-64}
[[ $seconds =~ ^[1-9][0-9]*$ ]] || fail "fuzz: not a number of seconds: $seconds"
[[ $bits == 32 || $bits == 64 ]] || fail "fuzz: neither 32 nor 64: $bits"
need_to_build_with libboost-dev libgtest-dev clang libclang-rt-dev
preset=fuzz targets=(reader round_trip query tree subpath)
if [ "$bits" = 32 ]; then
    need lib32gcc-12-dev lib32stdc++-12-dev libc6-dev-i386
    preset=fuzz32 targets=(query tree subpath)
fi
build "$preset" "${targets[@]/#/quxml_fuzz_}"

export ASAN_OPTIONS=detect_leaks=1:strict_string_checks=1
export UBSAN_OPTIONS=print_stacktrace=1

# Runs one target; its corpus keeps growing from run to run, and its findings stay below build/ as well.
fuzz() {
    local place=build/$preset/fuzz/$1 limit arguments inputs=("fuzz/seeds/$1")
    limit=$(sed -n 's/^constexpr std::size_t longest_input = \([0-9]*\);$/\1/p' "fuzz/fuzz_$1.cpp")
    mkdir -p "$place/corpus" "$place/findings"
    arguments=(-max_total_time="$seconds" -max_len="$limit" -timeout=20 -print_final_stats=1)
    [ ! -e "fuzz/dictionaries/$1.dict" ] || arguments+=(-dict="fuzz/dictionaries/$1.dict")
    [ ! -e "fuzz/crashes/$1" ] || inputs+=("fuzz/crashes/$1")
    nice "build/$preset/fuzz/quxml_fuzz_$1" "${arguments[@]}" -artifact_prefix="$place/findings/" "$place/corpus" \
        "${inputs[@]}" >"$place/log" 2>&1 || touch "$place/failed"
}

# Prints what one target did in one line, and the end of its log if it failed.
report() {
    local place=build/$preset/fuzz/$1 executions coverage
    executions=$(sed -n 's/^stat::number_of_executed_units: //p' "$place/log")
    coverage=$(sed -n 's/^#[0-9]*\t.* cov: \([0-9]*\) .*/\1/p' "$place/log" | tail --lines=1)
    echo "$1: ${executions:-0} executions, coverage ${coverage:-0}, corpus $(count_files "$place/corpus")," \
        "findings $(count_files "$place/findings")"
    [ ! -e "$place/failed" ] || tail --lines=40 "$place/log"
}

count_files() {
    find "$1" -type f | wc --lines
}

rm -f "build/$preset"/fuzz/*/failed
echo "Fuzzing ${targets[*]}, $seconds s each, $(nproc) at a time"
for target in "${targets[@]}"; do
    [ "$(jobs -pr | wc --lines)" -lt "$(nproc)" ] || wait -n
    fuzz "$target" &
done
wait
for target in "${targets[@]}"; do
    report "$target"
done
[ -z "$(find "build/$preset/fuzz" -name failed)" ] || fail "there are findings, in build/$preset/fuzz/TARGET/findings"
