# Compares the binary interface with the dumps in abi/; fails unless programs built before still run. --write: renews the dumps.
# SPDX-License-Identifier: MIT
. scripts/support/sysroot.sh
need_to_build_with abigail-tools

command="check"
[ "${1-}" != --write ] || { command="write" && shift; }
refuse_arguments "$@"

major=$(sed -n 's/^#define QUXML_VERSION_MAJOR *//p' include/quxml/version.h)

# Builds the shared library with debug information below build/abi/NAME; flags may follow. Files compiled together repeat
# fewer of the standard library's types.
build_for_abi() {
    local place=build/abi/$1 toolchain
    choose_toolchain "$2"
    quietly cmake -S . -B "$place" -G Ninja "${toolchain[@]}" -DCMAKE_BUILD_TYPE=Release -DBUILD_SHARED_LIBS=ON \
        -DCMAKE_UNITY_BUILD=ON -DCMAKE_CXX_FLAGS="-ffile-prefix-map=$PWD/= ${*:3}" \
        -DCMAKE_CXX_FLAGS_RELEASE="-O2 -g -DNDEBUG" \
        -DQUXML_BUILD_TESTS=OFF -DQUXML_BUILD_TOOLS=OFF -DQUXML_BUILD_EXAMPLES=OFF
    quietly cmake --build "$place"
    # The rest of the dump is what the exported functions reach.
    abidw --no-corpus-path --no-comp-dir-path --no-show-locs --no-parameter-names --no-elf-needed --type-id-style hash \
        --exported-interfaces-only --drop-private-types --headers-dir include/quxml "$place/src/libquxml.so" >"$place.abi"
}

dump_of() {
    echo "abi/libquxml.so.$major.$1.abi"
}

# New functions do no harm; anything else that abidiff reports does.
check() {
    show abidiff --no-added-syms "$(dump_of "$1")" "build/abi/$1.abi"
}

write() {
    show cp "build/abi/$1.abi" "$(dump_of "$1")"
}

for arch in amd64 i386 armhf; do
    build_for_abi "$arch" "$arch"
    "$command" "$arch"
done

# The interface holds no time and no offset in a file, so programs may choose their sizes.
build_for_abi armhf-64-bit-time armhf -D_FILE_OFFSET_BITS=64 -D_TIME_BITS=64
show abidiff build/abi/armhf.abi build/abi/armhf-64-bit-time.abi
