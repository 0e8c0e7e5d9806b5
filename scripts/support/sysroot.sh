# SPDX-License-Identifier: MIT

# Functions for verbs that build for 32-bit machines. A sysroot, build/sysroot/ARCH, has Debian's packages of that
# architecture unpacked, not installed, so the package manager of this machine never knows of another architecture.
# For wasm32, which is not an architecture of Debian's, the compiler is Debian's emscripten and the machine is node.
architectures=(i386 armhf armel mipsel powerpc)
sysroots=$PWD/build/sysroot

# Prints the beginning of the names of an architecture's compiler.
triplet_of() {
    case $1 in
        i386) echo i686-linux-gnu ;;
        armhf) echo arm-linux-gnueabihf ;;
        armel) echo arm-linux-gnueabi ;;
        mipsel | powerpc) echo "$1-linux-gnu" ;;
        *) fail "no such architecture: ${1:-none given} (known: ${architectures[*]})" ;;
    esac
}

# Provides what a build for an architecture needs: the compiler, and a sysroot, which is made again for other packages.
need_to_cross_build() {
    local make=unpack_sysroot packages=(libxml2-dev libboost-dev libgtest-dev libcli11-dev liblzma-dev zlib1g-dev)
    need_compiler_for "$1"
    case $1 in
        i386 | armhf) packages+=(libpugixml-dev libtinyxml2-dev) ;; # for the benchmarks
        powerpc | wasm32) make=build_sysroot packages=(dpkg-dev googletest libboost-dev libcli11-dev) ;;
    esac
    [ "$(cat "$sysroots/$1/packages" 2>/dev/null)" != "${packages[*]}" ] || return 0
    rm -rf "${sysroots:?}/$1"
    mkdir -p "$sysroots/$1"
    "$make" "$1" "${packages[@]}"
    echo "${packages[*]}" >"$sysroots/$1/packages"
}

need_compiler_for() {
    local triplet
    if [ "$1" = wasm32 ]; then
        need_to_build_with emscripten nodejs
        export NODE_PATH=/usr/share/nodejs # Debian's modules, for a node that is not Debian's
    else
        triplet=$(triplet_of "$1")
        need_to_build_with "g++-12-$triplet" gdb-multiarch qemu-user
    fi
}

# Sets `toolchain` to the arguments with which CMake builds for an architecture: none for amd64.
choose_toolchain() {
    toolchain=()
    [ "$1" != amd64 ] || return 0
    need_to_cross_build "$1"
    # shellcheck disable=SC2034  # The callers use it.
    toolchain=(--toolchain "$PWD/cmake/toolchains/$1.cmake")
}

# Runs apt-get for an architecture with all its state in a folder of ours, as if nothing were installed; it uses this
# machine's sources of packages.
apt_get_for() {
    local state=$sysroots/apt/$1
    mkdir -p "$state/lists/partial" "$state/cache/archives/partial"
    touch "$state/status"
    apt-get -o APT::Architecture="$1" -o APT::Architectures="$1" -o APT::Sandbox::User="$(id -un)" \
        -o Dir::State="$state" -o Dir::State::status="$state/status" -o Dir::Cache="$state/cache" "${@:2}"
}

# If an index cannot be fetched, some packages have older versions, or none, and then their download fails.
update_indexes() {
    quietly apt_get_for "$@" update || echo "Some indexes of $1 cannot be fetched; going on with the others."
}

unpack_sysroot() {
    local package archives=$sysroots/apt/$1/cache/archives
    update_indexes "$1"
    rm -f "$archives"/*.deb
    quietly apt_get_for "$1" install --download-only --yes --no-install-recommends "${@:2}"
    echo "Unpacking $(find "$archives" -name '*.deb' | wc --lines) packages into build/sysroot/$1"
    for package in "$archives"/*.deb; do
        dpkg -x "$package" "$sysroots/$1"
    done
}

# For an architecture that Debian has compilers for and no packages: libxml2 and GoogleTest are built from their sources,
# and what consists of headers only comes from the packages of this machine.
build_sysroot() {
    local sysroot=$sysroots/$1
    need "${@:2}"
    mkdir -p "$sysroot/usr/include" "$sysroot/usr/share/cmake"
    ln -s /usr/include/boost "$sysroot/usr/include"
    if [ "$1" != wasm32 ]; then # where nobody starts the program
        ln -s "/usr/$(triplet_of "$1")/lib" "$sysroot/lib"
        ln -s /usr/include/CLI "$sysroot/usr/include"
        ln -s /usr/share/cmake/CLI11 "$sysroot/usr/share/cmake"
    fi
    fetch_source "$1" libxml2
    build_for_sysroot "$1" /usr/src/googletest -DBUILD_GMOCK=OFF
    choose_parts_of_libxml2 "$1"
    build_for_sysroot "$1" "$sysroots"/source/libxml2-* "${parts[@]}"
}

# Sets `parts` to the arguments with which CMake builds libxml2. For wasm32 it has what reading text takes and no more, since
# a browser has to load all of it; the header of threads is there, but they are not.
choose_parts_of_libxml2() {
    local part
    parts=(-DLIBXML2_WITH_ICU=OFF -DLIBXML2_WITH_LZMA=OFF -DLIBXML2_WITH_ZLIB=OFF -DLIBXML2_WITH_PYTHON=OFF
        -DLIBXML2_WITH_PROGRAMS=OFF -DLIBXML2_WITH_TESTS=OFF)
    [ "$1" = wasm32 ] || return 0
    parts+=(-DCMAKE_BUILD_TYPE=MinSizeRel -DBUILD_SHARED_LIBS=OFF -DHAVE_PTHREAD_H=OFF)
    for part in C14N CATALOG DEBUG DOCB FTP HTML HTTP LEGACY MODULES OUTPUT PATTERN PUSH READER REGEXPS SAX1 SCHEMAS \
        SCHEMATRON THREADS VALID WRITER XINCLUDE XPATH XPTR; do
        parts+=("-DLIBXML2_WITH_$part=OFF")
    done
}

# Unpacks the source of a Debian package, with Debian's patches, below build/sysroot/source.
fetch_source() {
    local place=$sysroots/source
    local sources=(-o Dir::Etc::sourcelist=/dev/null -o Dir::Etc::sourceparts="$place/apt")
    rm -rf "$place"
    mkdir -p "$place/apt"
    name_sources "$place/apt"
    update_indexes "$1" "${sources[@]}"
    quietly in_folder "$place" apt_get_for "$1" "${sources[@]}" source "$2"
}

# Copies this machine's lists of package sources, changed so that they name the sources of the packages.
name_sources() {
    local list
    for list in /etc/apt/sources.list /etc/apt/sources.list.d/*.{list,sources}; do
        [ ! -e "$list" ] || sed -e 's/^Types:.*/Types: deb-src/' -e 's/^deb /deb-src /' "$list" >"$1/${list##*/}"
    done
}

in_folder() (
    cd "$1" || exit
    "${@:2}"
)

# Builds what has a CMakeLists.txt and installs it in the sysroot.
build_for_sysroot() {
    local build
    build=$sysroots/source/build/$(basename "$2")
    quietly cmake -S "$2" -B "$build" -G Ninja --toolchain "$PWD/cmake/toolchains/$1.cmake" -DCMAKE_BUILD_TYPE=Release \
        -DCMAKE_INSTALL_PREFIX="$sysroots/$1/usr" "${@:3}"
    quietly cmake --build "$build" --target install
}
