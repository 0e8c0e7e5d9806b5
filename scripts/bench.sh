# Times the library against others: all, or named WORKs; --quick; --arch i386 or armhf. --check counts instructions and compares them with the table. --write renews docs, or that table.
# SPDX-License-Identifier: MIT
. scripts/support/instructions.sh
. scripts/support/sysroot.sh
need_to_build_with libboost-dev libgtest-dev libcli11-dev libpugixml-dev libtinyxml2-dev valgrind python3-matplotlib
need shared-mime-info xkb-data unicode-cldr-core libgirepository1.0-dev ssg-debian osinfo-db
table=bench/instructions.txt

# The programs for amd64, or those for another machine with what runs them; those for i386 have the same processor.
choose_programs() {
    preset=bench run=()
    if [ "$1" = armhf ]; then
        need_to_cross_build armhf
        build bench emulator_counter
        preset=bench-armhf run=(qemu-arm -L "$sysroots/armhf" -d plugin -plugin "$PWD/build/bench/bench/libemulator_counter.so")
    elif [ "$1" = i386 ]; then
        local libraries=$sysroots/i386/lib/i386-linux-gnu:$sysroots/i386/usr/lib/i386-linux-gnu
        need_to_cross_build i386
        preset=bench-i386 run=("$sysroots/i386/lib/ld-linux.so.2" --library-path "$libraries")
    elif [ "$1" != amd64 ]; then
        fail "bench: only for amd64, i386 and armhf"
    fi
    place=build/$preset programs=build/$preset/bench
}

count_work() {
    count_instructions "${run[@]}" "$programs/quxml_side_by_side" --once "$1" "$2" "$3"
}

# Prints a line of the table of fixed works with today's count; fails if that is more than 3 % higher.
check_work() {
    awk -v work="$1" -v input="$2" -v library="$3" -v committed="$4" -v now="$(count_work "$1" "$2" "$3")" 'BEGIN {
        ratio = committed + 0 == 0 ? 0 : now / committed
        holds = ratio != 0 && ratio <= 1.03
        printf "%-22s %-36s %-8s %11.0f %11.0f %6.3f  %s\n", work, input, library, committed, now, ratio,
            holds ? "ok" : "FAILED"
        exit !holds
    }'
}

check_works() {
    local line exceeded=0
    while read -ra line; do
        check_work "${line[@]}" || exceeded=1
    done <"$table"
    [ "$exceeded" -eq 0 ] || fail "a work takes more instructions than $table says"
}

# Counts the fixed works again.
write_works() {
    local work input library
    while read -r work input library _; do
        echo "$work $input $library $(count_work "$work" "$input" "$library")"
    done <"$table" >"$place/instructions.txt"
    show cp "$place/instructions.txt" "$table"
}

# Counts reading, over all inputs.
count_reading() {
    local input library
    for input in $("${run[@]}" "$programs/quxml_side_by_side" --list | sed -n 's/^read //p'); do
        for library in quxml libxml2; do
            echo "read $input $library $(count_work read "$input" "$library")"
        done
    done
}

# Counts the fixed works in the emulator, by quxml and by each of the others that can do them.
count_in_emulator() {
    local work input library rival
    while read -r work input library _; do
        for rival in "$library" libxml2 pugixml tinyxml2; do
            { "${run[@]}" "$programs/quxml_side_by_side" --once "$work" "$input" "$rival" 2>&1 || true; } |
                sed -n "s|^\([1-9][0-9]*\) instructions$|$work $input $rival \1|p"
        done
    done <"$table"
}

check='' write='' arch=amd64 turns=() works=()
while [ $# -gt 0 ]; do
    case $1 in
        --check) check=yes ;;
        --write) write=yes ;;
        --quick) turns=(--repetitions 3 --milliseconds 5) ;;
        --arch) [ $# -gt 1 ] || fail "bench: --arch needs an architecture" && arch=$2 && shift ;;
        -*) fail "bench: no such option: $1" ;;
        *) works+=("$1") ;;
    esac
    shift
done
if [ "$check$write" ] || [ "$arch" = armhf ]; then
    [ -z "${works[*]}${turns[*]}" ] || fail "bench: for --check, --write and armhf, only a whole run will do"
fi
[ -z "$check" ] || [ "$arch" = amd64 ] || fail "bench: $table has the instructions of programs for amd64 only"
choose_programs "$arch"
build "$preset" quxml_side_by_side quxml_memory
# When glibc empties its fast bins, and what that costs, depends on chance; fixed works are counted without them.
if [ "$check" ] || [ "$arch" = armhf ]; then
    export GLIBC_TUNABLES=glibc.malloc.mxfast=0
fi
measured=$place/measured
rm -rf "$measured"
mkdir -p "$measured"

if [ "$arch" = armhf ]; then
    count_in_emulator >"$measured/instructions.txt"
    /usr/bin/python3 bench/report.py "$arch" "$measured" "$place" ${write:+docs}
elif [ "$check" ] && [ "$write" ]; then
    write_works
elif [ "$check" ]; then
    check_works
else
    if [ ${#works[@]} -eq 0 ]; then
        "${run[@]}" "$programs/quxml_memory" >"$measured/memory.json"
        "${run[@]}" "$programs/quxml_side_by_side" --peaks >"$measured/peaks.json"
    fi
    if [ ${#works[@]} -eq 0 ] && [ ${#turns[@]} -eq 0 ]; then
        count_reading >"$measured/instructions.txt"
    fi
    "${run[@]}" "$programs/quxml_side_by_side" "${turns[@]}" "${works[@]}" >"$measured/side_by_side.json"
    /usr/bin/python3 bench/report.py "$arch" "$measured" "$place" ${write:+docs}
fi
