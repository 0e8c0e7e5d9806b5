# SPDX-License-Identifier: MIT

# bash size.sh COMMAND ARCH FLAGS FOLDER [CMAKE_ARGUMENT...]: builds the library below FOLDER, from nothing, with the
# compiler's FLAGS, and measures, all of it stripped: libquxml.so and the programs in programs/, which are linked with the
# static library. COMMAND is one of
#   check  fails if one of them is more than 2 % larger than the line of docs/sizes.md for ARCH and FLAGS says
#   write  changes that line
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
    rm -rf "$place"
    mkdir -p "$place"
    {
        cmake -S "$here/programs" -B "$place" "${@:3}" -DBUILD_SHARED_LIBS="$2" -DCMAKE_BUILD_TYPE=Release \
            -DCMAKE_CXX_FLAGS_RELEASE="$flags -DNDEBUG" -DCMAKE_SHARED_LINKER_FLAGS=-s \
            -DCMAKE_EXE_LINKER_FLAGS='-s -Wl,--gc-sections -Wl,--as-needed' && cmake --build "$place"
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

measure() {
    (cd "$folder" && stat --dereference --format=%s shared/quxml/src/libquxml.so static/{build_and_write,query,read})
}

build shared ON "${@:5}"
build static OFF "${@:5}"
check_that_only_reading_takes_libxml2
mapfile -t sizes < <(measure)

check() {
    local committed i
    committed=$(grep --fixed-strings "$line" "$table") || {
        echo "there is no line in the table for $arch $flags"
        return 1
    }
    mapfile -t committed < <(grep --only-matching '[0-9]*' <<<"${committed#"$line"}")
    echo "$arch $flags: libquxml.so ${sizes[0]} bytes, builds and writes ${sizes[1]}, also queries ${sizes[2]}," \
        "also reads ${sizes[3]}; in the table: ${committed[*]}"
    for i in "${!sizes[@]}"; do
        if ((sizes[i] * 100 > committed[i] * 102)); then
            echo "${sizes[i]} bytes are more than 2 % above ${committed[i]}"
            return 1
        fi
    done
}

write() {
    sed -i "s/^$line.*/$line$(printf ' %s |' "${sizes[@]}")/" "$table"
    grep --fixed-strings "$line" "$table"
}

"$1"
