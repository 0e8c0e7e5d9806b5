# Builds for ARCHs (default: all) and fails if a size exceeds docs/sizes.md by 2 %; --write renews it.
# SPDX-License-Identifier: MIT
. scripts/support/sysroot.sh
need_to_build_with libxml2-dev

command="check"
[ "${1-}" != --write ] || { command="write" && shift; }

# Fails if a library or program has grown, but only after checking the others.
size() {
    local arch=$1 flags failures=0 toolchain
    choose_toolchain "$arch"
    for flags in -Os '-Os -flto' -O2; do
        bash tests/size/size.sh "$command" "$arch" "$flags" "build/size/$arch${flags// /}" -G Ninja "${toolchain[@]}" ||
            failures=1
    done
    return "$failures"
}

# Puts the sizes of two other libraries, in Debian's packages of an architecture, into their line of the table.
write_neighbours() {
    local place=$PWD/build/size/neighbours/$1 package sizes
    rm -rf "$place"
    mkdir -p "$place"
    update_indexes "$1"
    quietly in_folder "$place" apt_get_for "$1" download libtinyxml2-9 libpugixml1v5
    for package in "$place"/*.deb; do
        dpkg -x "$package" "$place"
    done
    sizes=$(find "$place" -type f '(' -name 'libtinyxml2.so*' -printf '1 %s\n' -o -name 'libpugixml.so*' -printf '2 %s\n' ')' |
        sort | sed 's/^. \(.*\)/ \1 |/' | tr --delete '\n')
    sed -i -E "s/^(\| \`$1\` \|)( [0-9]+ \|){2}\$/\1$sizes/" docs/sizes.md
}

print_neighbours() {
    sed -n "s/^| \`$1\` | \([0-9]*\) | \([0-9]*\) |\$/$1: Debian's libtinyxml2 has \1 bytes, its libpugixml \2/p" docs/sizes.md
}

[ $# -gt 0 ] || set -- amd64 "${architectures[@]}"
results=0
for arch in "$@"; do
    size "$arch" || results=1
    # There are no packages for powerpc.
    [ "$command" = check ] || [ "$arch" = powerpc ] || write_neighbours "$arch"
    print_neighbours "$arch"
done
[ "$results" -eq 0 ] || fail "something has grown by more than 2 %"
