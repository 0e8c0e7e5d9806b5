# SPDX-License-Identifier: MIT

# bash size.sh COMMAND ARCH FLAGS FOLDER [CMAKE_ARGUMENT...]: builds the library below FOLDER, from nothing, with the
# compiler's FLAGS, and measures, all of it stripped: libquxml.so and the programs in programs/, which are linked with the
# static library. COMMAND is one of
#   check  fails if the payload of one of them is more than 2 % larger than the line of docs/sizes.md for ARCH and FLAGS says
#   write  changes that line and, for -Os, those that say what the shared library consists of
# The payload is what a file holds without the padding to pages, by which files grow and shrink.
# shellcheck shell=bash
set -euo pipefail
here=$(dirname "$(readlink -f "$0")")
table=$here/../../docs/sizes.md
arch=$2
flags=$3
folder=$4
line="| \`$arch\` | \`$flags\` |"

build() {
    local place=$folder/$1 log=$folder/$1.log
    local optimisation=() link=-s
    if [[ $flags = *-flto* ]]; then
        optimisation=(-DCMAKE_INTERPROCEDURAL_OPTIMIZATION=ON) link='-s -Wl,-z,noseparate-code'
    fi
    rm -rf "$place"
    mkdir -p "$place"
    {
        cmake -S "$here/programs" -B "$place" "${@:3}" "${optimisation[@]}" -DBUILD_SHARED_LIBS="$2" \
            -DCMAKE_BUILD_TYPE=Release \
            -DCMAKE_CXX_FLAGS_RELEASE="$flags -DNDEBUG" -DCMAKE_SHARED_LINKER_FLAGS="$link" \
            -DCMAKE_EXE_LINKER_FLAGS="$link -Wl,--gc-sections -Wl,--as-needed" && cmake --build "$place"
    } >"$log" || {
        cat "$log"
        return 1
    }
}

# A program that does not read needs neither libxml2 nor the reader.
check_that_only_reading_takes_libxml2() {
    local program
    for program in build_and_write query; do
        if needs_libxml2 "$program" || holds_the_reader "$program"; then
            echo "$program needs libxml2, or contains the reader"
            return 1
        fi
    done
    needs_libxml2 read && holds_the_reader read
}

needs_libxml2() {
    readelf --dynamic --wide "$folder/static/$1" | grep --quiet --fixed-strings 'Shared library: [libxml2.so'
}

# The reader is recognised by one of its texts.
holds_the_reader() {
    grep --quiet --text --fixed-strings ' (error code: ' "$folder/static/$1"
}

library=$folder/shared/quxml/src/libquxml.so
files=("$library" "$folder"/static/{build_and_write,query,read})

# Prints the name, the type and the size, in hexadecimal, of each section of a file.
list_sections() {
    readelf --sections --wide "$1" |
        sed -n -E 's/^ *\[ *[0-9]+\] (\.[^ ]+) +([^ ]+) +[0-9a-f]+ [0-9a-f]+ ([0-9a-f]+) .*/\1 \2 \3/p'
}

# Prints the bytes of all sections of a file whose names match an expression.
sum_sections() {
    local name type size sum=0
    while read -r name type size; do
        [[ $type = NOBITS || ! $name =~ $2 ]] || sum=$((sum + 16#$size))
    done < <(list_sections "$1")
    echo "$sum"
}

# Prints the bytes of the headers of a file.
sum_headers() {
    readelf --file-header "$1" | sed -n -E 's/^ *(Size|Number) of .*header.*: +([0-9]+).*/\2/p' | {
        mapfile -t numbers
        echo $((numbers[0] + numbers[1] * numbers[2] + numbers[3] * numbers[4]))
    }
}

payload_of() {
    echo $(($(sum_sections "$1" .) + $(sum_headers "$1")))
}

build shared ON "${@:5}"
build static OFF "${@:5}"
check_that_only_reading_takes_libxml2
sizes=() payloads=()
for file in "${files[@]}"; do
    sizes+=("$(stat --dereference --format=%s "$file")")
    payloads+=("$(payload_of "$file")")
done

check() {
    local committed i
    committed=$(grep --fixed-strings "$line" "$table") || {
        echo "there is no line in the table for $arch $flags"
        return 1
    }
    echo "$arch $flags: libquxml.so ${sizes[0]} bytes, builds and writes ${sizes[1]}, also queries ${sizes[2]}," \
        "also reads ${sizes[3]}; payload: ${payloads[*]}; in the table:${committed#"$line"}"
    mapfile -t committed < <(grep --only-matching '([0-9]*)' <<<"$committed" | tr --delete '()')
    for i in "${!payloads[@]}"; do
        if ((payloads[i] * 100 > committed[i] * 102)); then
            echo "${payloads[i]} bytes are more than 2 % above ${committed[i]}"
            return 1
        fi
    done
}

write() {
    local i cells=''
    for i in "${!sizes[@]}"; do
        cells+=" ${sizes[i]} (${payloads[i]}) |"
    done
    sed -i "s/^$line.*/$line$cells/" "$table"
    grep --fixed-strings "$line" "$table"
    [ "$flags" != -Os ] || write_parts
    [ "$arch $flags" != 'armhf -Os' ] || write_functions
}

write_parts() {
    local parts="| \`libquxml.so\`, \`$arch\` |" expression cells=''
    for expression in '^\.(text|plt|init|fini|MIPS.stubs)' '^\.(eh_frame|gcc_except_table|ARM\.ex)' \
        '^\.(dynstr|dynsym|gnu\.hash|hash|gnu\.version|MIPS.xhash)' '^\.rel' '^\.(rodata|data|got|sdata|init_array|fini_array)'; do
        cells+=" $(sum_sections "$library" "$expression") |"
    done
    sed -i "s/^$parts.*/$parts$cells/" "$table"
}

# Takes the functions from the static library, which keeps their names.
write_functions() {
    local begin='| Function | Bytes |' nm rows
    nm=$(sed -n 's/^CMAKE_NM:FILEPATH=//p' "$folder/static/CMakeCache.txt")
    # shellcheck disable=SC2016  # The table wants backquotes.
    rows=$("$nm" --print-size --size-sort --reverse-sort --radix=d --demangle "$folder/static/quxml/src/libquxml.a" 2>/dev/null |
        sed -n -E 's/^[0-9]+ 0*([0-9]+) [A-Za-z] (.*)/\1 \2/p' | sort --numeric-sort --reverse | uniq | head --lines=10 |
        sed -E 's/\(anonymous namespace\):://g; s/\(.*//; s/^([0-9]+) (.*)/| `\2` | \1 |/')
    awk -v begin="$begin" -v rows="$rows" '
        index($0, begin) == 1 { print; getline; print; print rows; skip = 1; next }
        skip && /^\|/ { next }
        { skip = 0; print }' "$table" >"$table.new"
    mv "$table.new" "$table"
}

"$1"
