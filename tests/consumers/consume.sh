# SPDX-License-Identifier: MIT

# bash consume.sh SETTINGS KIND NAME: the test NAME, one of the functions below, for KIND, static or shared.
# shellcheck shell=bash disable=SC2154
set -euo pipefail
shopt -s extglob
export LC_ALL=C
# shellcheck source=/dev/null
. "$1"
kind=$2

here=$sources/tests/consumers
work=$builds/$kind
prefix=$work/moved
shared=OFF
libraries=lib
if [ "$kind" = shared ]; then
    shared=ON
    libraries=lib${architecture:+/$architecture} # as distributions have it
fi

# Configures and builds the project in folder $1, from nothing, in folder $2.
build() {
    rm -rf "$2"
    "$cmake" -S "$1" -B "$2" -G "$generator" ${toolchain:+"-DCMAKE_TOOLCHAIN_FILE=$toolchain"} \
        -DCMAKE_CXX_COMPILER="$compiler" -DCMAKE_CXX_FLAGS="$compiler_flags" -DBUILD_SHARED_LIBS=$shared \
        -DCMAKE_UNITY_BUILD=ON "${@:3}" # files are compiled together because it takes a third of the time
    "$cmake" --build "$2" --parallel 1  # CTest runs several tests at once
}

# The same for the project in consumer/, which gets the library by the route $1.
build_consumer() {
    build "$here/consumer" "$work/$1" -Droute="$1" "${@:2}"
}

build_consumer_of_sources() {
    build_consumer "$1" -Dsources="$sources"
}

# Nobody needs libxml2's headers to link the shared library.
build_consumer_of_installed() {
    build_consumer "$1" -DCMAKE_PREFIX_PATH="$prefix" ${toolchain:+"-DCMAKE_FIND_ROOT_PATH=$prefix"} \
        -DCMAKE_DISABLE_FIND_PACKAGE_LibXml2=$shared
}

# Runs a program of consumer/, whose expected output is in a file beside its source.
check() {
    run "$@" | diff "$here/consumer/$(basename "$1").out" -
}

# Everything is used in another place than where it was installed.
install() {
    build "$sources" "$work/build" -DCMAKE_BUILD_TYPE=Release -DCMAKE_CXX_FLAGS_RELEASE="-O1 -DNDEBUG" \
        -DQUXML_BUILD_TESTS=OFF -DQUXML_BUILD_EXAMPLES=OFF \
        -DCMAKE_INSTALL_PREFIX="$work/installed" -DCMAKE_INSTALL_LIBDIR="$libraries"
    rm -rf "$work/installed" "$prefix"
    "$cmake" --install "$work/build"
    mv "$work/installed" "$prefix"
}

add_subdirectory() {
    build_consumer_of_sources add_subdirectory
    check "$work/add_subdirectory/main"
    check "$work/add_subdirectory/extras"
}

fetch_content() {
    build_consumer_of_sources fetch_content
    check "$work/fetch_content/main"
    check "$work/fetch_content/extras"
}

find_package() {
    build_consumer_of_installed find_package
    check "$work/find_package/main"
    check "$work/find_package/extras"
}

pkg_config() {
    local static=()
    [ "$kind" = shared ] || static=(--static)
    export PKG_CONFIG_PATH=$prefix/$libraries/pkgconfig
    [ -z "$sysroot" ] || export PKG_CONFIG_LIBDIR=$sysroot/usr/lib/$architecture/pkgconfig:$sysroot/usr/lib/pkgconfig
    eval "local own_flags=(${sysroot:+--sysroot='$sysroot'} $compiler_flags)"
    local program flags
    for program in main extras; do
        eval "flags=($("$pkg_config" "${static[@]}" --cflags --libs "$([ "$program" = main ] && echo quxml || echo quxml-extras)"))"
        "$compiler" "${own_flags[@]}" -std=c++11 "$here/consumer/$program.cpp" -o "$work/$program" "${flags[@]}" \
            -Wl,-rpath,"$prefix/$libraries"
        check "$work/$program"
    done
}

program() {
    run "$prefix/bin/quxml" format --canonical "$sources/tests/data/catalog.xml" | diff "$sources/tests/data/catalog.formatted" -
}

installed_files() {
    find "$prefix" ! -type d -printf '%P\n' |
        sed -e "s|$work/installed|/PREFIX|; s|^$libraries/|LIB/|; s|/PREFIX/$libraries/|/PREFIX/LIB/|" \
            -e "s|$version\(-gdb.py\)\?\$|VERSION\1|; s|\.so\.$soversion\$|.so.SOVERSION|" |
        sort | diff "$here/installed_files.$kind.txt" -
}

# gdb loads the library's script automatically, from a folder that was not moved.
gdb_auto_load() {
    local unmoved=$work/unmoved
    [ -n "$gdb" ] || exit 77
    rm -rf "$unmoved"
    "$cmake" --install "$work/build" --prefix "$unmoved"
    "$gdb" -nx -batch -iex "set auto-load scripts-directory $unmoved/share/gdb/auto-load" \
        -iex "set auto-load safe-path $unmoved/share/gdb/auto-load" "$unmoved/$libraries/libquxml.so" \
        -ex "help quxml-tree" | grep -F "quxml-tree NODE [DEPTH]"
}

# Runs a grep that must find nothing; an error of grep is a failure as well.
finds_nothing() {
    local status=0
    "$@" || status=$?
    [ "$status" -eq 1 ]
}

# The installed files name no folder of the machine that they were built on. Deliberate: the path of one file
# contains the folder in which the library was installed, since gdb looks for it there.
paths() {
    finds_nothing grep -rF -e "$sources" -e "$builds" ${sysroot:+-e "$sysroot"} "$prefix"
    find "$prefix" ! -path "$prefix/share/gdb/auto-load/*" -printf '%P\n' |
        finds_nothing grep -F -e "${sources#/}" -e "${builds#/}"
}

# Nothing of the library runs before a program or after it, so static objects of the program can use it.
static_objects() {
    "$nm" "$prefix/$libraries/libquxml.a" | finds_nothing grep _GLOBAL__sub_I
}

# Prints what of a program or library is protected: return addresses, tables of addresses, the place in memory, jumps. Where
# jumps may lead is read from the archives, since what the system adds to each program and shared library may lack it.
protections_of() {
    local facts
    facts=$("$readelf" --wide --program-headers --dynamic --symbols --notes "$1")
    [[ $facts != *" __stack_chk_fail"* ]] || printf ' stack'
    [[ $facts != *" GNU_RELRO "*BIND_NOW* ]] || printf ' tables'
    [[ $facts != *"(FLAGS_1)"*" PIE"* ]] || printf ' place'
    [[ $facts != *" IBT"* || $1 != *.a ]] || printf ' jumps'
}

hardening() {
    local file jumps=""
    [[ $("$compiler" -dumpmachine) != @(x86_64|i?86)-* ]] || jumps=" jumps"
    for file in "$prefix"/bin/quxml "$prefix/$libraries"/libquxml*.{a,so}; do
        [ ! -e "$file" ] || echo "${file##*/}:$(protections_of "$file")"
    done | tee "$work/protections"
    {
        echo "quxml: stack tables place"
        echo "libquxml-extras.a: stack$jumps"
        if [ "$kind" = shared ]; then echo "libquxml.so: stack tables"; else echo "libquxml.a: stack$jumps"; fi
    } | diff - "$work/protections"
}

# The list of what is installed has the form of SPDX 2.3, leaves no reference open, and its checksums are those of the files.
sbom() {
    local list=$prefix/share/doc/quxml/quxml.spdx.json
    jq --exit-status --from-file "$here/sbom.jq" "$list"
    [ "$(jq --raw-output '.packages[].name' "$list" | grep -cxE 'libxml2|libstdc\+\+|libc\+\+|glibc|CLI11')" -eq 4 ]
    find "$prefix/bin" "$prefix/$libraries" -maxdepth 1 -type f '(' -name 'libquxml*' -o -name quxml ')' \
        -exec sha256sum {} + | cut -d ' ' -f 1 | sort |
        diff <(jq --raw-output '.packages[] | select(.SPDXID | contains("-file-")).checksums[].checksumValue' "$list" | sort) -
}

soname() {
    "$readelf" --dynamic "$prefix/$libraries/libquxml.so" | grep -F "Library soname: [libquxml.so.1]"
}

# The shared library exports the interface and nothing else. Compilers differ in how many constructors and destructors they
# make of one, which all have the same name. Local symbols are not exported: the linker for MIPS also puts those into the
# table whose addresses are filled in when the library is loaded.
symbols() {
    "$nm" --dynamic --defined-only --extern-only --demangle "$prefix/$libraries/libquxml.so" |
        sed 's/^[0-9a-f]* . //' | sort --unique | diff "$here/symbols.txt" -
}

# What is thrown in a program is caught by type in an object that it has loaded, and the other way round.
exceptions() {
    build_consumer_of_installed plugin
    check "$work/plugin/host" "$work/plugin/plugin.so"
}

"$3"
