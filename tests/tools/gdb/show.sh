# SPDX-License-Identifier: MIT

# bash show.sh GDB STRIP PROGRAM MODE WORK [EMULATOR...]: compares what gdb shows of PROGRAM with show.out. MODE is `live`,
# `core` for a core file that gdb makes, `stripped` for one of a program without symbols, `paths` for running the program
# with the paths that were shown, or `manual` for the sessions in docs/debugging.md. EMULATOR is what starts the program
# where the machine cannot. Ends with 77 where gdb cannot look at programs.
# shellcheck shell=bash
set -euo pipefail
export LC_ALL=C.UTF-8
gdb=$1 strip=$2 program=$3 mode=$4 work=$5
emulator=("${@:6}")
here=$(cd "$(dirname "$0")" && pwd)

skip() {
    echo "skipped: $*"
    exit 77
}

# Runs gdb without anybody's settings.
run_gdb() {
    "$gdb" -nx -batch -iex "set auto-load no" -iex "set debuginfod enabled off" "$@"
}

# Brings the program to where it aborts, then goes on with the arguments.
run_gdb_on_program() {
    local stop=(-ex "handle SIGABRT stop nopass")
    case ${emulator[0]-} in
        '') run_gdb "$program" "${stop[@]}" -ex run "$@" ;;
        *qemu*)
            serve
            run_gdb "$program" "${stop[@]}" -ex "target remote $work/socket" -ex continue "$@"
            ;;
        *) # env, a variable, and a loader, beside which gdb has to be told of the program
            run_gdb "${emulator[2]}" "${stop[@]}" -ex "add-symbol-file $program" \
                -ex "set environment ${emulator[1]/=/ }" -ex "set args ${emulator[*]:3} $program" -ex run "$@"
            ;;
    esac
}

# Starts the program in qemu, which waits for gdb.
serve() {
    rm -f "$work/socket"
    "${emulator[@]}" -g "$work/socket" "$program" &
    local count=0
    until [ -S "$work/socket" ]; do
        [ $((count += 1)) -le 100 ] || exit 1
        sleep 0.1
    done
}

source_script=(-ex "source $here/../../../tools/gdb/quxml_gdb.py" -ex "echo <shown>\n")
show=("${source_script[@]}" -ex "source $here/show.gdb")

only_what_was_shown() {
    sed '1,/^<shown>$/d; s/0x[0-9a-f]\{5,\}/0xADDRESS/g'
}

live() {
    run_gdb_on_program "${show[@]}" | only_what_was_shown | diff "$here/show.out" -
}

core() {
    make_core
    run_gdb "$program" "$work/program.core" "${show[@]}" | only_what_was_shown | diff "$here/show.out" -
    rm "$work/program.core"
}

# gdb knows no names then, and nodes are found by their addresses.
stripped() {
    make_core
    local address
    address=$(run_gdb "$program" "$work/program.core" -ex 'printf "<shown>\n%lu\n", seen_by_gdb::seen.library' |
        only_what_was_shown)
    "$strip" --strip-all -o "$work/program" "$program"
    run_gdb "$work/program" "$work/program.core" "${source_script[@]}" -ex "quxml-tree $address 1" |
        only_what_was_shown | diff <(sed -n '/^trees$/,/^  <chain>/ { /^trees$/d; p }' "$here/show.out") -
    rm "$work/program.core"
}

make_core() {
    case ${emulator[0]-} in
        *qemu*) let_qemu_make_core ;;
        *) run_gdb_on_program -ex "generate-core-file $work/program.core" ;;
    esac
}

# qemu writes a core of the program that it runs, in the program's own format, and may be followed by one of itself.
let_qemu_make_core() {
    rm -rf "$work/qemu"
    mkdir "$work/qemu"
    (
        cd "$work/qemu"
        ulimit -c unlimited
        "${emulator[@]}" "$program" || true
    )
    mv "$work"/qemu/qemu_*.core "$work/program.core"
    rm -rf "$work/qemu"
}

# The blocks of the manual that are sessions with gdb, addresses left out.
sessions() {
    # shellcheck disable=SC2016
    sed -n '/^```gdb$/,/^```$/ { /^```/d; s/0x[0-9a-f]\{5,\}/0xADDRESS/g; p }' "$here/../../../docs/debugging.md"
}

manual() {
    [[ ${emulator[0]-} != *qemu* ]] || skip "the manual's frames are not to be found through the emulator"
    sessions | sed -n "s/^(gdb) \(.*\)/echo (gdb) \1\\\\n\n\1/p" >"$work/session.gdb"
    run_gdb_on_program -ex "frame function abort_with_variables" "${source_script[@]}" -ex "source $work/session.gdb" |
        only_what_was_shown | diff <(sessions) -
}

paths() {
    local paths
    mapfile -t paths < <(grep '^/' "$here/show.out" | grep -v @)
    "${emulator[@]}" "$program" "${paths[@]}" | diff --text "$here/paths.out" -
}

mkdir -p "$work"
[ -n "$gdb" ] || [ "$mode" = paths ] || skip "gdb was not found (Debian: gdb, or gdb-multiarch for another architecture)"
if [ "$mode" != paths ]; then
    run_gdb -ex "python print('python')" | grep -q python || skip "this gdb was built without Python"
    run_gdb -ex run --args true 2>&1 | grep -q "exited normally" || skip "gdb may not look at programs here"
fi
"$mode"
